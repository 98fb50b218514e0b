// SPDX-License-Identifier: MIT
// The exchanges of frames that write or only command, on a line.
#include "family/tag/stream.h"
#include "tests/family/tag/stream_test.h"

#include <array>

using namespace zel::test;
using namespace zel::tag;
using stream::Frame;
using stream::Instruction;

namespace {

const std::string kWrite = "81 00 00 03";

class StreamWrite : public StreamTest {
protected:
    StreamWrite() { frame_.setOutgoing(std::array<std::uint8_t, 3>{0xA1, 0xA2, 0xA3}); }

    std::shared_ptr<Script> script_ = connectScript();
    Frame frame_{Instruction::SetBlock, 0, 0, 3};
};

class StreamCommand : public StreamTest {
protected:
    std::shared_ptr<Script> script_ = connectScript();
    Frame frame_{Instruction::Commit, 0x27};
};

} // namespace

TEST_F(StreamWrite, SendsItsDataBehindTheProcedureByte) {
    script_->answer("81");
    script_->answer("90 00");
    EXPECT_TRUE(stream::write(frame_));
    EXPECT_EQ(told(), "> FA\n"
                      "~ 50 ms\n"
                      "> 81 00 00 03\n"
                      "~ 5 ms\n"
                      "< 81\n"
                      "> A1 A2 A3\n"
                      "~ 5 ms\n"
                      "< 90 00\n");
    EXPECT_EQ(lLastICSWErr, 0x9000U);
}

TEST_F(StreamWrite, SendsNoDataWhenRefused) {
    script_->answer("6D 00");
    EXPECT_FALSE(stream::write(frame_));
    EXPECT_EQ(told(), reading(kWrite, "6D 00"));
    EXPECT_EQ(lLastICSWErr, 0x6D00U);
}

TEST_F(StreamWrite, FailsOnAnotherStatusWord) {
    script_->answer("81");
    script_->answer("6F 01");
    EXPECT_FALSE(stream::write(frame_));
    EXPECT_EQ(lLastICSWErr, 0x6F01U);
}

TEST_F(StreamWrite, FailsWithoutAStatusWord) {
    script_->answer("81");
    EXPECT_FALSE(stream::write(frame_));
    EXPECT_EQ(told(), reading(kWrite, "81") + "> A1 A2 A3\n~ 5 ms x 100\n");
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamWrite, OnALineLeavesWhatTheReaderSentBefore) {
    lines().say(kPath, std::array<std::uint8_t, 2>{0x6F, 0x01});
    lines().pump();
    EXPECT_FALSE(stream::write(frame_));
    EXPECT_EQ(told(), "< 6F 01\n> FA\n~ 50 ms\n");
    EXPECT_EQ(lLastICSWErr, 0x6F01U);
}

TEST_F(StreamWrite, CarriesAtMost128Bytes) {
    std::array<std::uint8_t, 200> data;
    data.fill(0xC3);
    Frame frame(Instruction::SetExtended, 0, 0, 200);
    frame.setOutgoing(data);
    script_->answer("8A");
    script_->answer("90 00");
    EXPECT_TRUE(stream::write(frame));
    std::string sent = "C3";
    for (int byte = 1; byte < 128; ++byte)
        sent += " C3";
    EXPECT_EQ(told(), writing("8A 00 00 C8", sent));
}

TEST_F(StreamCommand, GoesOutInOneAndIsAnsweredByAStatusWordAlone) {
    script_->answer("90 00");
    EXPECT_TRUE(stream::command(frame_));
    EXPECT_EQ(told(), "> FA 02 27 00 00\n"
                      "~ 5 ms\n"
                      "< 90 00\n");
    EXPECT_EQ(lLastICSWErr, 0x9000U);
}

TEST_F(StreamCommand, FailsOnAnotherStatusWord) {
    script_->answer("02 90");
    EXPECT_FALSE(stream::command(frame_)) << "there is no procedure byte";
    EXPECT_EQ(frame_.status(), 0x0290);
    EXPECT_EQ(lLastICSWErr, 0x0290U);
}

TEST_F(StreamCommand, FailsWithoutAnAnswer) {
    EXPECT_FALSE(stream::command(frame_));
    EXPECT_EQ(told(), "> FA 02 27 00 00\n~ 5 ms x 100\n");
    EXPECT_EQ(lLastICSWErr, 0U);
}
