// SPDX-License-Identifier: MIT
// The simulated magnetic stripe reader: frames, pauses, what can go wrong.
#include "tests/sim/spoken_band.h"

using namespace zel::sim;

namespace {

class StripeFrame : public zel::test::SpokenBand {};
class StripeReport : public zel::test::SpokenBand {};
class StripeFlash : public zel::test::SpokenBand {};
class StripeTrouble : public zel::test::SpokenBand {};

constexpr const char* kPartNumber = "RRZSIMULATED-STRIPE-001\r";
constexpr const char* kVersion = "RSV0B010123000000000000\r";

} // namespace

TEST_F(StripeFrame, IsTextFilledUpWithZerosAndEndsInACarriageReturn) {
    EXPECT_EQ(write("QSV00000000000000000000\r"), kVersion);
    EXPECT_EQ(write("QRZ00000000000000000000\r"), kPartNumber);
}

TEST_F(StripeFrame, MayComeInPieces) {
    EXPECT_EQ(write("Q"), "");
    EXPECT_EQ(write("SV0000000000000000000"), "");
    EXPECT_EQ(write("0\r"), kVersion);
}

TEST_F(StripeFrame, MayFollowAnotherInOnePiece) {
    EXPECT_EQ(write(frame("QSV") + frame("QRZ")), std::string(kVersion) + kPartNumber);
    EXPECT_EQ(reader_.commands(), 2);
}

TEST_F(StripeFrame, ThatWasBegunIsEndedByCarriageReturns) {
    write("QS");
    EXPECT_EQ(say("QSV"), "") << "its end ends what was begun";
    write("QS");
    EXPECT_EQ(write("\r\r"), "");
    EXPECT_EQ(say("QSV"), kVersion);
}

TEST_F(StripeFrame, ThatWasBegunOutlivesTheOpeningOfTheLine) {
    write("QS");
    static_cast<StreamDevice&>(reader_).restart();
    EXPECT_EQ(say("QSV"), "");
}

TEST_F(StripeFrame, OfAnotherLengthIsNoCommand) {
    EXPECT_EQ(write("QSV0000000000000000000\r"), "");
    EXPECT_EQ(write("QSV000000000000000000000\r"), "");
    EXPECT_EQ(write(frame("QSV").substr(0, 23) + std::string(100, '0') + '\r'), "");
    EXPECT_EQ(reader_.commands(), 0);
    EXPECT_EQ(say("QSV"), kVersion);
}

TEST_F(StripeFrame, IsLostOnAReaderThatSleepsUntilACarriageReturnWakesIt) {
    reader_.fallAsleep();
    EXPECT_EQ(say("QSV"), "");
    EXPECT_EQ(say("QSV"), kVersion);
    reader_.fallAsleep();
    EXPECT_EQ(write("\r\r"), "");
    EXPECT_EQ(say("QSV"), kVersion);
}

TEST_F(StripeFrame, ThatIsNotUnderstoodIsRefused) {
    for (const char* command : {"XYZ", "QXX", "Gl0", "GaX", "G4000", "F0", "CX", "BX1", "SX0"}) {
        const std::string text = frame(command);
        EXPECT_EQ(say(command), frame("E" + text.substr(1, 2))) << command;
    }
}

TEST_F(StripeFrame, OfAPartNumberOfTwentyOneCharactersHasNoEnd) {
    reader_.options().partNumber = "123456789012345678901";
    EXPECT_EQ(say("QRZ"), "RRZ123456789012345678901");
    reader_.options().partNumber = "ZB100";
    EXPECT_EQ(say("QRZ"), "RRZZB100\r00000000000000\r");
}

TEST_F(StripeReport, IsAFrameAndItsReplyAnother) {
    EXPECT_TRUE(report(frame("QSV")));
    usleep(2'000);
    EXPECT_EQ(fetch(), kVersion);
    EXPECT_EQ(reader_.violations(), 0);
    EXPECT_EQ(reader_.takeRemark(), "");
}

TEST_F(StripeReport, OfAnotherLengthOrNumberIsRefused) {
    EXPECT_FALSE(report(frame("QSV") + "0"));
    EXPECT_FALSE(report("QSV"));
    EXPECT_EQ(fetch(), "refused") << "there was no command";
    EXPECT_TRUE(report(frame("QSV")));
    std::vector<std::uint8_t> reply(24);
    EXPECT_FALSE(reader_.answer(1, reply));
    EXPECT_FALSE(reader_.take(1, reply));
}

TEST_F(StripeReport, WithoutACarriageReturnIsNoCommand) {
    EXPECT_TRUE(report("QSV000000000000000000000"));
    EXPECT_EQ(fetch(), "refused");
    EXPECT_EQ(reader_.commands(), 0);
}

TEST_F(StripeReport, IsAnsweredNoEarlierThanTwoMilliseconds) {
    report(frame("QSV"));
    usleep(1'500);
    EXPECT_EQ(fetch(), kVersion);
    EXPECT_EQ(reader_.violations(), 1);
    EXPECT_EQ(reader_.lastViolation(), "reply, 500 us too early");
    EXPECT_EQ(reader_.takeRemark(), "too early");
    EXPECT_EQ(reader_.takeRemark(), "");
}

TEST_F(StripeReport, OnTheFlashIsAnsweredTwoHundredMillisecondsLater) {
    for (const char* command : {"FW", "FD"}) {
        report(frame(command));
        usleep(2'000);
        fetch();
        EXPECT_EQ(reader_.lastViolation(), "reply, 200000 us too early") << command;
        usleep(kFlash);
    }
    EXPECT_EQ(reader_.violations(), 2);
    report(frame("FR"));
    usleep(2'000);
    fetch();
    EXPECT_EQ(reader_.violations(), 2) << "FR is none of these";
}

TEST_F(StripeReport, IsNamedByItsCommand) {
    const auto nameOf = [this](const std::string& command) {
        const std::string text = frame(command);
        return reader_.nameOf(std::vector<std::uint8_t>(text.begin(), text.end()));
    };
    EXPECT_EQ(nameOf("QRZ"), "QRZ");
    EXPECT_EQ(nameOf("GS0"), "GS0");
    EXPECT_EQ(nameOf("FW"), "FW");
    EXPECT_EQ(nameOf("CQ"), "CQ");
    EXPECT_EQ(nameOf("SL02701"), "SL02701");
    EXPECT_EQ(nameOf("G1200"), "G12");
    EXPECT_EQ(nameOf("00000000"), "000");
}

TEST_F(StripeFlash, IsWorkedOnForMoreThanASecond) {
    for (const char* command : {"FW", "FD"}) {
        const int before = reader_.violations();
        say(command);
        usleep(kFlash - 300'000);
        EXPECT_EQ(say("QSV"), kVersion) << "answered all the same";
        EXPECT_EQ(reader_.violations(), before + 1);
        EXPECT_EQ(reader_.lastViolation(), "QSV, 300000 us too early");
        usleep(300'000);
        say("QSV");
        EXPECT_EQ(reader_.violations(), before + 1);
    }
}

TEST_F(StripeFlash, ThatWasLostIsNotWorkedOn) {
    reader_.fail(BandFault::Silence);
    EXPECT_EQ(say("FW"), "");
    say("QSV");
    EXPECT_EQ(reader_.violations(), 0);
}

TEST_F(StripeTrouble, LosesACommand) {
    reader_.fail(BandFault::Silence);
    EXPECT_EQ(say("BS1"), "");
    EXPECT_TRUE(reader_.takeBeeps().empty());
    EXPECT_EQ(say("BS1"), frame("RS1"));
    EXPECT_EQ(reader_.commands(), 2);
    report(frame("QSV"));
    reader_.fail(BandFault::Silence);
    report(frame("QSV"));
    EXPECT_EQ(fetch(), "refused");
}

TEST_F(StripeTrouble, BeginsAReplyAsThatOfAFailure) {
    reader_.fail(BandFault::WrongFirstByte);
    EXPECT_EQ(say("BS1"), frame("ES1"));
    EXPECT_EQ(reader_.takeBeeps().size(), 1U) << "it was carried out";
}

TEST_F(StripeTrouble, EndsAReplyHalfWay) {
    reader_.fail(BandFault::ShortReply, 2);
    EXPECT_EQ(say("QSV"), "RSV0B0101230");
    report(frame("QSV"));
    EXPECT_EQ(fetch(), "RSV0B0101230" + std::string(12, '\0'));
}

TEST_F(StripeTrouble, RepliesWithRandomBytes) {
    reader_.fail(BandFault::Garbage, 2);
    const std::string first = say("QSV");
    const std::string second = say("QSV");
    EXPECT_EQ(first.size(), 24U);
    EXPECT_NE(first, kVersion);
    EXPECT_NE(first, second);
    EXPECT_EQ(say("QSV"), kVersion);
}

TEST_F(StripeTrouble, ComesBehindAsManyGoodCommandsAsTold) {
    reader_.fail(BandFault::Silence, 2, 1);
    reader_.fail(BandFault::WrongFirstByte, 1, 1);
    EXPECT_EQ(say("QSV"), kVersion);
    EXPECT_EQ(say("QSV"), "");
    EXPECT_EQ(say("QSV"), "");
    EXPECT_EQ(say("QSV"), kVersion);
    EXPECT_EQ(say("QSV").front(), 'E');
    reader_.fail(BandFault::Silence, 9);
    reader_.fail(BandFault::None);
    EXPECT_EQ(say("QSV"), kVersion);
}

TEST_F(StripeTrouble, IsAnyReplyThatIsGiven) {
    reader_.replyWith("BS", "RXX");
    reader_.replyWith("BS2", "E12345678901234567890123");
    EXPECT_EQ(say("BS1"), frame("RXX"));
    EXPECT_EQ(say("BS2"), "E12345678901234567890123");
    EXPECT_EQ(say("BL1"), frame("RL1"));
    EXPECT_EQ(reader_.takeBeeps().size(), 3U) << "whatever the command does, it does";
}
