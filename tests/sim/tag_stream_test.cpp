// SPDX-License-Identifier: MIT
// Frames of the simulated reader: procedure bytes, status words, and what can go wrong.
#include "tests/sim/spoken_stream.h"

#include <climits>

using namespace zel::sim;

namespace {
class StreamFrame : public zel::test::SpokenStream {};

constexpr const char* kBlock0 = "FA 01 00 00 08";
constexpr const char* kBlock0Answer = "01 03 05 11 10 1A 00 28 01 90 00";
constexpr const char* kProbe = "FA 04 ED ED 04";
} // namespace

TEST_F(StreamFrame, BringsProcedureByteDataAndStatusWord) {
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, MayComeInPieces) {
    EXPECT_EQ(say("FA"), "");
    EXPECT_EQ(say("01 00 00"), "");
    EXPECT_EQ(say("08"), kBlock0Answer);
}

TEST_F(StreamFrame, MayFollowAnotherInOnePiece) {
    EXPECT_EQ(say("FA 04 ED ED 04 FA 04 00 00 04"), "04 00 00 42 01 90 00 04 00 00 42 01 90 00");
    EXPECT_EQ(stream_->commands(), 2);
}

TEST_F(StreamFrame, OfAnUnknownInstructionIsRefused) {
    EXPECT_EQ(say("FA 55 00 00 08"), "6D 00");
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, WithDataWaitsForAllOfIt) {
    EXPECT_EQ(say("FA 81 00 00 08"), "81");
    EXPECT_EQ(say("FA 01 02 03 04 05 06"), "") << "0xFA is data here";
    EXPECT_EQ(say("07"), "90 00");
    EXPECT_EQ(say(kBlock0), "01 FA 01 02 03 04 05 06 07 90 00");
}

TEST_F(StreamFrame, WithoutDataToWriteEndsAtOnce) { EXPECT_EQ(say("FA 0A 00 00 00"), "0A 90 00"); }

TEST_F(StreamFrame, IsForgottenWhenTheLineIsOpenedAnew) {
    say("FA 81 00 00 08 01 02");
    stream_->restart();
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
    say("FA 01 00");
    stream_->restart();
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, EndsALineThatWasBegun) {
    stream_->lineProtocol().setEcho(false);
    write("ZTAG:V");
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
    write("AR\r");
    EXPECT_EQ(stream_->lineProtocol().takeHeard(), std::vector<std::string>{"AR"});
}

TEST_F(StreamFrame, OfAReaderOfLinesIsAnsweredToTheProbeAlone) {
    use({}, TagSpeech::Lines);
    EXPECT_EQ(say(kProbe), "04 00 00 42 01 90 00");
    EXPECT_EQ(say("FA 04 00 00 04"), "");
    EXPECT_EQ(say(kBlock0), "");
}

TEST_F(StreamFrame, IsAllThatAReaderOfFramesHears) {
    use({}, TagSpeech::Frames);
    EXPECT_EQ(write("\rZTAG:QID.ID\r"), "");
    EXPECT_EQ(stream_->lineProtocol().takeHeard(), std::vector<std::string>{});
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, OfSixBytesIsAMove) {
    use({.tagPlusConfigurations = 2});
    EXPECT_EQ(say("FA 09 82 03 01"), "");
    EXPECT_EQ(say("00 FF"), "09 82 03 01 00 00 90 00");
    EXPECT_EQ(say("FA 09 01 00 00"), "09 01 00 02 00 00 00 00 90 00") << "all others have four";
}

TEST_F(StreamFrame, LostIsNotCarriedOut) {
    stream_->fail(StreamFault::Silence);
    EXPECT_EQ(say("FA 0C 03 01 00"), "");
    EXPECT_EQ(reader_->beeps(), 0);
    EXPECT_EQ(say("FA 0C 03 01 00"), "90 00");
    EXPECT_EQ(stream_->commands(), 2);
}

TEST_F(StreamFrame, LostTakesNoData) {
    stream_->fail(StreamFault::Silence);
    EXPECT_EQ(say("FA 81 00 00 08"), "");
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, RefusedInPlaceOfTheProcedureByteTakesNoData) {
    stream_->fail(StreamFault::WrongProcedureByte);
    EXPECT_EQ(say("FA 81 00 00 08"), "6F 00");
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, RefusedTellsTheStatusWordItIsToldTo) {
    stream_->refuse(0x6A, 0x82);
    EXPECT_EQ(say("FA 00 00 00 0C"), "6A 82");
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, FailsBehindAllItsData) {
    stream_->fail(StreamFault::WrongStatus, 2);
    EXPECT_EQ(say(kBlock0), "01 03 05 11 10 1A 00 28 01 6F 00");
    EXPECT_EQ(say("FA 81 00 00 08 01 01 01 01 01 01 01 01"), "81 6F 00");
    EXPECT_EQ(say(kBlock0), kBlock0Answer) << "nothing was kept";
}

TEST_F(StreamFrame, TellsAnyStatusWordBehindItsData) {
    stream_->replyStatus(0x6A, 0x82, 2);
    EXPECT_EQ(say(kProbe), "04 00 00 42 01 6A 82");
    EXPECT_EQ(say("FA 02 01 00 00"), "6A 82");
    EXPECT_EQ(say("FA 02 01 00 00"), "90 00");
}

TEST_F(StreamFrame, BreaksOffHalfWay) {
    stream_->fail(StreamFault::ShortData, 3);
    EXPECT_EQ(say(kBlock0), "01 03 05 11 10");
    EXPECT_EQ(say("FA 03 00 00 00"), "90");
    EXPECT_EQ(say("FA 06 00 00 02 07 00"), "06 90");
    EXPECT_EQ(say(kProbe), "04 07 00 42 01 90 00");
}

TEST_F(StreamFrame, IsAnsweredByAsManyRandomBytes) {
    stream_->fail(StreamFault::Garbage, 2);
    const std::string first = say(kBlock0);
    const std::string second = say(kBlock0);
    EXPECT_EQ(first.size(), std::string(kBlock0Answer).size());
    EXPECT_NE(first, kBlock0Answer);
    EXPECT_NE(first, second);
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, GoesWrongBehindAsManyGoodOnesAsTold) {
    stream_->fail(StreamFault::Silence, 2, 1);
    stream_->refuse(0x6A, 0x81);
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
    EXPECT_EQ(say(kBlock0), "");
    EXPECT_EQ(say(kBlock0), "");
    EXPECT_EQ(say(kBlock0), "6A 81");
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, IsWholeAgainWhenItsFaultsAreForgotten) {
    stream_->fail(StreamFault::Silence, INT_MAX);
    EXPECT_EQ(say(kBlock0), "");
    stream_->fail(StreamFault::None);
    EXPECT_EQ(say(kBlock0), kBlock0Answer);
}

TEST_F(StreamFrame, DeliversTheDataThatATestWants) {
    stream_->replyWith({0x01, 0x00}, {1, 2, 3});
    stream_->replyWith({0x55}, {0xAB});
    EXPECT_EQ(say(kBlock0), "01 01 02 03 90 00");
    EXPECT_EQ(say("FA 55 00 00 08"), "55 AB 90 00");
    EXPECT_EQ(say("FA 01 03 00 08"), "01 00 00 00 00 00 00 00 00 90 00");
    stream_->replyWith({0x01}, {9});
    EXPECT_EQ(say(kBlock0), "01 09 90 00") << "the last one counts";
}
