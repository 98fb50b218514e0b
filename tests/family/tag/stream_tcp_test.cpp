// SPDX-License-Identifier: MIT
// The six exchanges of frames on a TCP connection, which has pauses and discards of its own.
//
// A send takes 20 ms; so does each poll of a receive, and a discard is five of them.
#include "family/tag/stream.h"
#include "frame/zelTagAPI.h"
#include "tests/family/tag/stream_test.h"

#include <array>

using namespace zel::test;
using namespace zel::tag;
using stream::Frame;
using stream::Instruction;

namespace {

class StreamOverTcp : public StreamTest {
protected:
    StreamOverTcp() { connectTcp(script_); }

    std::shared_ptr<Script> script_ = std::make_shared<Script>();
};

} // namespace

TEST_F(StreamOverTcp, OfAReadDiscardsTwiceAndPausesBehindItsHeader) {
    Frame frame(Instruction::Presence, 0xED, 0xED, 4);
    script_->answer("04 34 12 42 01 90 00");
    EXPECT_TRUE(stream::read(frame));
    EXPECT_EQ(told(), "~ 20 ms x 10\n"
                      "> FA\n"
                      "~ 20 ms\n"
                      "> 04 ED ED 04\n"
                      "~ 20 ms\n"
                      "< 04 34 12 42 01 90 00\n"
                      "~ 50 ms\n"
                      "~ 20 ms x 3\n");
    EXPECT_EQ(frame.data()[0], 0x34);
    EXPECT_EQ(lLastICSWErr, 0x9000U);
}

TEST_F(StreamOverTcp, OfAReadWithoutAStatusWordDiscardsOnceAndDoesNotPause) {
    const std::string trace = "~ 20 ms x 5\n"
                              "> FA\n"
                              "~ 20 ms\n"
                              "> 0C 06 00 00\n"
                              "~ 20 ms\n";
    Frame frame(Instruction::Service, 6);
    frame.bytes[Frame::kCount] = 1;
    script_->answer("0C 02");
    EXPECT_TRUE(stream::readCounted(frame));
    EXPECT_EQ(told(), trace + "< 0C 02\n~ 20 ms x 2\n");
    script_->answer("0C 11 22 33 44 55 66 77 88");
    EXPECT_TRUE(stream::readEight(frame));
    EXPECT_EQ(told(), trace + "< 0C 11 22 33 44 55 66 77 88\n~ 20 ms x 2\n");
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamOverTcp, OfAReadAtOnceHasThePausesOfALineBehindItsHeader) {
    Frame frame(Instruction::Multi, 4);
    script_->answer("09 04 00 11 22 33 44 55 66 77 88 90 00");
    EXPECT_TRUE(stream::readAtOnce(frame));
    EXPECT_EQ(told(), "~ 20 ms x 5\n"
                      "> FA\n"
                      "~ 20 ms\n"
                      "> 09 04 00 00\n"
                      "~ 20 ms\n"
                      "< 09 04 00 11 22 33 44 55 66 77 88 90 00\n"
                      "~ 10 ms\n"
                      "~ 20 ms\n"
                      "~ 2 ms\n");
}

TEST_F(StreamOverTcp, OfAWriteDiscardsOnceAndPausesBehindItsData) {
    Frame frame(Instruction::SetLuid, 0, 0, 2);
    frame.setOutgoing(std::array<std::uint8_t, 2>{0x34, 0x12});
    script_->answer("06");
    script_->answer("90 00");
    EXPECT_TRUE(stream::write(frame));
    EXPECT_EQ(told(), "~ 20 ms x 5\n"
                      "> FA\n"
                      "~ 20 ms\n"
                      "> 06 00 00 02\n"
                      "~ 20 ms\n"
                      "< 06\n"
                      "~ 20 ms\n"
                      "> 34 12\n"
                      "~ 20 ms\n"
                      "< 90 00\n"
                      "~ 500 ms\n"
                      "~ 20 ms\n");
}

TEST_F(StreamOverTcp, OfACommandNeitherDiscardsNorPauses) {
    Frame frame(Instruction::Factory);
    script_->answer("90 00");
    EXPECT_TRUE(stream::command(frame));
    EXPECT_EQ(told(), "> FA\n"
                      "~ 20 ms\n"
                      "> 03 00 00 00\n"
                      "~ 20 ms\n"
                      "< 90 00\n"
                      "~ 20 ms\n");
}

TEST_F(StreamOverTcp, TellsARefusal) {
    Frame frame(Instruction::Block, 0, 0, 8);
    script_->answer("6D 00");
    EXPECT_FALSE(stream::read(frame));
    EXPECT_EQ(lLastICSWErr, 0x6D00U);
    script_->answer("6F 02");
    EXPECT_FALSE(stream::write(frame));
    EXPECT_EQ(lLastICSWErr, 0x6F02U);
}

// The value of a receive is that of its last poll.
TEST_F(StreamOverTcp, FailsWhenItsDataComeInSeveralPieces) {
    Frame frame(Instruction::Block, 0, 0, 8);
    dribbleTcp(2);
    script_->answer("01 A1 A2 A3 A4 A5 A6 A7 A8");
    EXPECT_FALSE(stream::readEight(frame));
    EXPECT_EQ(told(), "~ 20 ms x 5\n"
                      "> FA\n"
                      "~ 20 ms\n"
                      "> 01 00 00 08\n"
                      "~ 20 ms\n"
                      "< 01 A1\n"
                      "~ 20 ms\n"
                      "< A2 A3\n"
                      "~ 20 ms\n"
                      "< A4 A5\n"
                      "~ 20 ms\n"
                      "< A6 A7\n"
                      "~ 20 ms\n"
                      "< A8\n");
    EXPECT_EQ(frame.data()[7], 0xA8) << "all bytes are there";
}

TEST_F(StreamOverTcp, WaitsATenthOfASecondForWhatDoesNotCome) {
    Frame frame(Instruction::Block, 0, 0, 8);
    script_->answer("01");
    EXPECT_FALSE(stream::read(frame));
    EXPECT_EQ(told(), "~ 20 ms x 10\n> FA\n~ 20 ms\n> 01 00 00 08\n~ 20 ms\n< 01\n~ 50 ms\n"
                      "~ 20 ms x 6\n");
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamOverTcp, EndsWithTheConnection) {
    closeLine();
    Frame frame(Instruction::Block, 0, 0, 8);
    EXPECT_FALSE(stream::read(frame));
    EXPECT_EQ(told(), "");
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamOverTcp, CarriesAWholeCardRead) {
    script_->answer("00 00 1A 00 00 70 1B 34 02 00 00 00 00 90 00");
    unsigned char id[32] = {};
    EXPECT_EQ(GetActiveID(id, 8), 26);
    EXPECT_EQ(id[1], 0x1B);
    EXPECT_EQ(told(), "~ 20 ms x 10\n> FA\n~ 20 ms\n> 00 00 00 0C\n~ 20 ms\n"
                      "< 00 00 1A 00 00 70 1B 34 02 00 00 00 00 90 00\n~ 50 ms\n~ 20 ms x 3\n");
}
