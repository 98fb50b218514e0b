// SPDX-License-Identifier: MIT
// The exchanges of frames that read, on a line: bytes, pauses, status words and what a failure
// leaves.
#include "tests/family/tag/stream_test.h"
#include "family/tag/stream.h"

#include <array>
#include <cstring>
#include <functional>
#include <new>

using namespace zel::test;
using namespace zel::tag;
using stream::Frame;
using stream::Instruction;

namespace {

const std::string kData = "11 22 33 44 55 66 77 88";
const std::string kBlock = "01 02 00 08";
const std::string kList = "09 04 07 00";

class StreamExchange : public StreamTest {
protected:
    std::shared_ptr<Script> script_ = connectScript();
};
class StreamRead : public StreamExchange {
protected:
    Frame frame_{Instruction::Block, 2, 0, 8};
};
class StreamReadWithoutStatus : public StreamExchange {
protected:
    Frame frame_{Instruction::Service, 1, 2, 3};
};
class StreamReadAtOnce : public StreamExchange {
protected:
    Frame frame_{Instruction::Multi, 4, 7};
};

Payload sampleData() { return {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88}; }

} // namespace

TEST_F(StreamRead, SendsItsClassByteAheadAndEndsWithAStatusWord) {
    script_->answer("01 " + kData + " 90 00");
    EXPECT_TRUE(stream::read(frame_));
    EXPECT_EQ(told(), "> FA\n"
                      "~ 50 ms\n"
                      "> 01 02 00 08\n"
                      "~ 5 ms\n"
                      "< 01 11 22 33 44 55 66 77 88 90 00\n");
    EXPECT_EQ(frame_.payload(), sampleData());
    EXPECT_EQ(frame_.status(), 0x9000);
    EXPECT_EQ(lLastICSWErr, 0x9000U);
}

TEST_F(StreamRead, TakesOneByteLessThanItsReplyLengthWhereThatIsGiven) {
    script_->answer("01 11 22 33 44 55 66 77 90 00");
    EXPECT_TRUE(stream::read(frame_, 4, 8));
    EXPECT_EQ(frame_.data()[6], 0x77);
    EXPECT_EQ(told(), reading(kBlock, "01 11 22 33 44 55 66 77 90 00"));
}

TEST_F(StreamRead, SendsAsManyHeaderBytesAsItsCallerWants) {
    frame_.bytes[6] = 0xFF;
    script_->answer("01 11 22 33 44 55 90 00");
    EXPECT_TRUE(stream::read(frame_, 6, 6));
    EXPECT_EQ(told(), reading("01 02 00 08 00 FF", "01 11 22 33 44 55 90 00"));
}

TEST_F(StreamRead, OfNoDataIsProcedureByteAndStatusWord) {
    Frame frame(Instruction::Speed, 0x81, 3);
    script_->answer("0D 90 00");
    EXPECT_TRUE(stream::read(frame));
    EXPECT_EQ(told(), reading("0D 81 03 00", "0D 90 00"));
}

TEST_F(StreamRead, DiscardsWhatTheReaderSentBefore) {
    lines().say(kPath, std::array<std::uint8_t, 2>{0xAA, 0xBB});
    lines().pump();
    script_->answer("01 " + kData + " 90 00");
    EXPECT_TRUE(stream::read(frame_));
    EXPECT_EQ(told(), "< AA BB\nx AA BB\n" + reading(kBlock, "01 " + kData + " 90 00"));
}

TEST_F(StreamRead, ThatIsRefusedHasTheStatusWordWhereDataWouldStand) {
    script_->answer("6A 82");
    EXPECT_FALSE(stream::read(frame_));
    EXPECT_EQ(told(), reading(kBlock, "6A 82"));
    EXPECT_EQ(frame_.bytes[7], 0x6A);
    EXPECT_EQ(frame_.bytes[8], 0x82);
    EXPECT_EQ(frame_.status(), 0);
    EXPECT_EQ(lLastICSWErr, 0x6A82U);
}

TEST_F(StreamRead, ThatIsRefusedByHalfAStatusWordHasZeroForItsOtherHalf) {
    script_->answer("E0");
    EXPECT_FALSE(stream::read(frame_));
    EXPECT_EQ(told(), brokenReading(kBlock, "E0", 1));
    EXPECT_EQ(lLastICSWErr, 0xE000U);
}

TEST_F(StreamRead, ThatGetsNoAnswerWaitsForBothBytesOfARefusal) {
    EXPECT_FALSE(stream::read(frame_));
    EXPECT_EQ(told(), brokenReading(kBlock, "", 2));
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamRead, FailsOnShortDataWithoutReadingAStatusWord) {
    script_->answer("01 11 22 33 44 55 66 77");
    EXPECT_FALSE(stream::read(frame_));
    EXPECT_EQ(told(), brokenReading(kBlock, "01 11 22 33 44 55 66 77", 1));
    EXPECT_EQ(frame_.data()[6], 0x77) << "what came stays";
    EXPECT_EQ(frame_.status(), 0);
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamRead, FailsOnAnotherStatusWordAndKeepsTheData) {
    script_->answer("01 " + kData + " 6A 82");
    EXPECT_FALSE(stream::read(frame_));
    EXPECT_EQ(frame_.status(), 0x6A82);
    EXPECT_EQ(frame_.payload(), sampleData());
    EXPECT_EQ(lLastICSWErr, 0x6A82U);
}

TEST_F(StreamRead, FailsWithoutAStatusWord) {
    script_->answer("01 " + kData);
    EXPECT_FALSE(stream::read(frame_));
    EXPECT_EQ(told(), brokenReading(kBlock, "01 " + kData, 1));
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamRead, ForgetsTheStatusWordOfTheExchangeBefore) {
    script_->answer("01 " + kData + " 90 00");
    EXPECT_TRUE(stream::read(frame_));
    EXPECT_FALSE(stream::read(frame_));
    EXPECT_EQ(frame_.status(), 0);
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamReadWithoutStatus, TakesEightBytesAndLeavesTheRest) {
    script_->answer("0C " + kData + " 90 00");
    EXPECT_TRUE(stream::readEight(frame_));
    EXPECT_EQ(told(), reading("0C 01 02 03", "0C " + kData + " 90 00"));
    EXPECT_EQ(frame_.payload(), sampleData());
    EXPECT_EQ(frame_.status(), 0);
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamReadWithoutStatus, TakesAsManyBytesAsByte6SaysAndDoesNotSendThatByte) {
    frame_.bytes[Frame::kCount] = 2;
    script_->answer("0C 11 22");
    EXPECT_TRUE(stream::readCounted(frame_));
    EXPECT_EQ(told(), reading("0C 01 02 03", "0C 11 22"));
    EXPECT_EQ(frame_.data()[1], 0x22);
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamReadWithoutStatus, FailsOnShortData) {
    script_->answer("0C 11 22");
    EXPECT_FALSE(stream::readEight(frame_));
    EXPECT_EQ(told(), brokenReading("0C 01 02 03", "0C 11 22", 1));
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamReadWithoutStatus, TellsARefusal) {
    for (const auto read : {stream::readEight, stream::readCounted}) {
        script_->answer("6D 00");
        EXPECT_FALSE(read(frame_));
        EXPECT_EQ(frame_.bytes[7], 0x6D);
        EXPECT_EQ(lLastICSWErr, 0x6D00U);
    }
}

TEST_F(StreamReadWithoutStatus, OnALineTakesWhatTheReaderSentBeforeForItsAnswer) {
    lines().say(kPath, std::array<std::uint8_t, 2>{0xAA, 0xBB});
    lines().pump();
    EXPECT_FALSE(stream::readEight(frame_));
    EXPECT_EQ(told(), "< AA BB\n> FA\n~ 50 ms\n") << "the header is still on its way";
    EXPECT_EQ(lLastICSWErr, 0xAABBU);
}

TEST_F(StreamReadAtOnce, TakesThirteenBytesAndRestsBehindThem) {
    script_->answer("09 04 07 " + kData + " 90 00");
    EXPECT_TRUE(stream::readAtOnce(frame_));
    EXPECT_EQ(told(), "> FA\n"
                      "~ 50 ms\n"
                      "> 09 04 07 00\n"
                      "~ 10 ms\n"
                      "< 09 04 07 11 22 33 44 55 66 77 88 90 00\n"
                      "~ 2 ms\n");
    EXPECT_EQ(frame_.payload(), sampleData());
    EXPECT_EQ(lLastICSWErr, 0U) << "the status word isn't told";
}

TEST_F(StreamReadAtOnce, RestsLongerBehindAnotherStatusWord) {
    script_->answer("09 04 07 " + kData + " 6A 82");
    EXPECT_FALSE(stream::readAtOnce(frame_));
    EXPECT_EQ(told(),
              "> FA\n~ 50 ms\n> " + kList + "\n~ 10 ms\n< 09 04 07 " + kData + " 6A 82\n~ 10 ms\n");
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamReadAtOnce, EndsWithoutARestWhereAnotherInstructionAnswers) {
    script_->answer("08 04 07 " + kData + " 90 00");
    EXPECT_FALSE(stream::readAtOnce(frame_));
    EXPECT_EQ(told(), "> FA\n~ 50 ms\n> " + kList + "\n~ 10 ms\n< 08 04 07 " + kData + " 90 00\n");
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamReadAtOnce, OfFewerBytesHasNoStatusWord) {
    script_->answer("09 04 07 11");
    EXPECT_FALSE(stream::readAtOnce(frame_));
    EXPECT_EQ(told(),
              "> FA\n~ 50 ms\n> " + kList + "\n~ 10 ms\n< 09 04 07 11\n~ 5 ms x 100\n~ 10 ms\n");
}

TEST_F(StreamExchange, NeedsAnOpenStream) {
    const std::function<bool(Frame&)> exchanges[] = {
        [](Frame& frame) { return stream::read(frame); },
        stream::readEight,
        stream::readCounted,
        stream::readAtOnce,
        stream::write,
        stream::command};
    const auto expectNothing = [&](const char* why) {
        for (const auto& run : exchanges) {
            Frame frame(Instruction::Block, 0, 0, 8);
            frame.bytes[263] = 0x90;
            lLastICSWErr = 0x1234;
            EXPECT_FALSE(run(frame)) << why;
            EXPECT_EQ(frame.status(), 0) << why;
            EXPECT_EQ(lLastICSWErr, 0U) << why;
        }
        EXPECT_EQ(told(), "") << why;
    };
    closeLine();
    told();
    lines().pump();
    told();
    expectNothing("closed");
    takeLineAway();
    expectNothing("no port object");
}

// A frame that holds a caller's own header has nothing else in it.
TEST_F(StreamExchange, BeginsWithAClearFrame) {
    alignas(Frame) unsigned char place[sizeof(Frame)];
    std::memset(place, 0xEE, sizeof place);
    const std::array<std::uint8_t, 5> header = {1, 2, 3, 4, 5};
    Frame* const frame = new (place) Frame(header);
    std::array<std::uint8_t, 265> expected = {1, 2, 3, 4, 5};
    EXPECT_EQ(frame->bytes, expected);
    frame->~Frame();
}
