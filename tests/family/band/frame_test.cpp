// SPDX-License-Identifier: MIT
// Frames out and in: padding, what counts as a reply, pauses, pairs of digits.
#include "family/band/frame.h"
#include "tests/family/band/band_device.h"

#include <array>

using namespace zel::test;
using zel::sim::BandFault;

namespace {

using Reply = std::array<char, 24>;

std::string textOf(const Reply& reply) { return {reply.begin(), reply.end()}; }

std::string framed(std::string text) {
    text.resize(23, '0');
    return text + '\r';
}

class BandFrameOnLine : public BandLineTest {
protected:
    Reply reply = {};
};
class BandFrameOnUsb : public BandUsbTest {
protected:
    Reply reply = {};
};

using Decoded = std::array<unsigned char, 12>;

Decoded decoded(const char* text) {
    Decoded bytes;
    bytes.fill(0xEE);
    HexToBytes(bytes.data(), text);
    return bytes;
}

// What stands untouched behind the bytes decoded.
Decoded untouchedBehind(std::initializer_list<unsigned char> bytes) {
    Decoded wanted;
    wanted.fill(0xEE);
    std::copy(bytes.begin(), bytes.end(), wanted.begin());
    return wanted;
}

} // namespace

TEST(BandFrame, IsFilledUpWithZerosAndEndsInACarriageReturn) {
    const auto frame = zel::band::frameOf("QRZ");
    EXPECT_EQ(std::string(frame.begin(), frame.end()), "QRZ00000000000000000000\r");
}

TEST(BandFrame, OfAnEmptyTextIsAllZeros) {
    const auto frame = zel::band::frameOf("");
    EXPECT_EQ(std::string(frame.begin(), frame.end()), framed(""));
}

TEST(BandFrame, HoldsTwentyThreeCharacters) {
    const auto whole = zel::band::frameOf("ABCDEFGHIJKLMNOPQRSTUVW");
    EXPECT_EQ(std::string(whole.begin(), whole.end()), "ABCDEFGHIJKLMNOPQRSTUVW\r");
    EXPECT_EQ(zel::band::frameOf("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), whole);
}

TEST(BandCommand, LeavesOutWhatPassesAFrame) {
    zel::band::Command command("Sa0");
    for (int byte = 0; byte < 12; ++byte)
        command.hex(0x1A0 + byte);
    EXPECT_STREQ(command.text(), "Sa0A0A1A2A3A4A5A6A7A8A9");
    EXPECT_STREQ(zel::band::Command("SS0").hex(-1).hex(7).text(), "SS0FF07");
}

TEST_F(BandFrameOnLine, GoesOutWithNoOtherByteAndNoPauseOfItsOwn) {
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 1);
    EXPECT_EQ(textOf(reply), framed("RSV0B010123"));
    EXPECT_EQ(told(), traced("QSV", "RSV0B010123"));
}

TEST_F(BandFrameOnLine, FailsByItsFirstByteWhateverTheOthersAre) {
    reader->replyWith("QSV", "ESV0B010123");
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(textOf(reply), std::string(24, '\0'));
    EXPECT_EQ(told(), traced("QSV", "ESV0B010123") + "~ 2 ms\n");
}

TEST_F(BandFrameOnLine, SucceedsByItsFirstByteWhateverTheOthersAre) {
    reader->replyWith("QSV", "Rxy");
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 1);
    EXPECT_EQ(textOf(reply), framed("Rxy"));
    EXPECT_EQ(told(), traced("QSV", "Rxy"));
}

TEST_F(BandFrameOnLine, LeavesZerosForAReplyThatIsTooShort) {
    reply.fill('x');
    failAt(0, BandFault::ShortReply);
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(textOf(reply), std::string(24, '\0'));
    EXPECT_EQ(told(),
              "> " + quotedFrame("QSV") + "~ 5 ms\n< \"RSV0B0101230\"\n~ 5 ms x 99\n~ 2 ms\n");
}

TEST_F(BandFrameOnLine, LeavesZerosForSilence) {
    failAt(0, BandFault::Silence);
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(textOf(reply), std::string(24, '\0'));
    EXPECT_EQ(told(), "> " + quotedFrame("QSV") + "~ 5 ms x 100\n~ 2 ms\n");
}

TEST_F(BandFrameOnLine, SaysFailureWithoutALine) {
    DevDat[0].pPort = nullptr;
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(reply[0], 'E');
    EXPECT_EQ(told(), "~ 2 ms\n");
}

TEST_F(BandFrameOnLine, WaitsBehindTheTwoCommandsThatWriteTheFlash) {
    EXPECT_EQ(SendBandCmd("FR", reply.data()), 1);
    EXPECT_EQ(told(), traced("FR", "RR"));
    for (const std::string command : {"FW", "FD"}) {
        EXPECT_EQ(SendBandCmd(command.c_str(), reply.data()), 1);
        EXPECT_EQ(told(), "> " + quotedFrame(command) + "~ 200 ms\n< " +
                              quotedFrame("R" + command.substr(1)));
        wait(1'100'000);
    }
}

TEST_F(BandFrameOnLine, WaitsForNoOtherCommandWithSuchALetter) {
    for (const std::string command : {"QDD", "CD0", "SW0"}) {
        SendBandCmd(command.c_str(), reply.data());
        EXPECT_EQ(told().find("~ 200 ms"), std::string::npos) << command;
    }
}

TEST_F(BandFrameOnUsb, IsAReportWithTwoMillisecondsBeforeItsReply) {
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 1);
    EXPECT_EQ(textOf(reply), framed("RSV0B010123"));
    EXPECT_EQ(bus().takeTrace(),
              "> 51 53 56 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 0D  QSV\n"
              "~ 2 ms\n"
              "< 52 53 56 30 42 30 31 30 31 32 33 30 30 30 30 30 30 30 30 30 30 30 30 0D\n");
}

TEST_F(BandFrameOnUsb, WaitsLongerForTheFlash) {
    for (const char* const command : {"FR", "FW"})
        EXPECT_EQ(SendBandCmd(command, reply.data()), 1) << command;
    EXPECT_EQ(toldBriefly(), "FR ~2 FW ~2 ~200");
}

TEST_F(BandFrameOnUsb, TellsTheReplyOfAFailureToo) {
    failAt(0);
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(textOf(reply), framed("ESV0B010123"));
    EXPECT_EQ(toldBriefly(), "QSV ~2 ~2");
}

TEST_F(BandFrameOnUsb, SaysFailureWithoutAReply) {
    failAt(0, BandFault::Silence);
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(textOf(reply), 'E' + std::string(23, '\0'));
    EXPECT_EQ(toldBriefly(), "QSV ~2 ~2");
}

TEST_F(BandFrameOnUsb, SaysFailureWhenItCannotBeSent) {
    bus().fail(port, zel::sim::Fault::SendRefused, 100);
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(reply[0], 'E');
    bus().fail(port, zel::sim::Fault::None, 0);
}

TEST_F(BandFrameOnUsb, FailsAtOnceWithoutAHandle) {
    void* const handle = std::exchange(DevDat[0].hDev, reinterpret_cast<void*>(UINTPTR_MAX));
    EXPECT_EQ(SendBandCmd("QSV", reply.data()), 0);
    EXPECT_EQ(reply[0], 'E');
    EXPECT_EQ(toldBriefly(), "~2");
    DevDat[0].hDev = handle;
}

TEST(HexPairs, AreTenAtMost) {
    EXPECT_EQ(decoded("0102030405060708090A0B0C"),
              untouchedBehind({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(HexPairs, EndBeforeACharacterBelowTheDigits) {
    for (const char* const text : {"1A2B\r", "1A2B/00", "1A2B", "1A2B 00",
                                   "1A2B\xB0"
                                   "0"})
        EXPECT_EQ(decoded(text), untouchedBehind({0x1A, 0x2B})) << text;
}

TEST(HexPairs, ReadTheFillOfAFrameAsZeros) {
    EXPECT_EQ(decoded("1A0000\r"), untouchedBehind({0x1A, 0, 0}));
}

TEST(HexPairs, TakeDigitsOfBothCases) {
    EXPECT_EQ(decoded("aFFa\r"), untouchedBehind({0xAF, 0xFA}));
}

TEST(HexPairs, EndANumberWhereADigitIsMissing) {
    EXPECT_EQ(decoded("5G7\r"), untouchedBehind({5, 7}));
    EXPECT_EQ(decoded("5"), untouchedBehind({5}));
}
