// SPDX-License-Identifier: MIT
// The card's identifier by the ASCII protocol.
#include "frame/zelTagAPI.h"
#include "tests/family/tag/ascii_script.h"

#include <algorithm>
#include <array>
#include <initializer_list>

using namespace zel::test;

namespace {

constexpr std::int64_t kTooSmall = 256;
constexpr std::int64_t kClosed = 257;
constexpr std::int64_t kNoAnswer = 261;

class AsciiId : public AsciiProtocolTest {
protected:
    AsciiId() {
        config().sTimeParms.iIDHoldTO = 500;
        id_.fill(0xEE);
    }

    // The bit count of an answer.
    int readOf(const std::string& answer) {
        script_->id = answer;
        return GetActiveID(id_.data(), 8);
    }

    std::array<unsigned char, 32> id_;
};

} // namespace

TEST_F(AsciiId, IsAskedForByALineAndReadByteByByte) {
    script_->id = "{1F,0,0,26;2341B70}\rNorvanex>";
    EXPECT_EQ(GetActiveID(id_.data(), 8), 26);
    EXPECT_EQ(told(), "> \"\\rZ\"\n~ 1 ms\n"
                      "> \"TA\"\n~ 1 ms\n"
                      "> \"G:\"\n~ 1 ms\n"
                      "> \"QI\"\n~ 1 ms\n"
                      "> \"D.\"\n~ 1 ms\n"
                      "> \"ID\"\n~ 1 ms\n"
                      "> \"\\r\"\n~ 1 ms\n"
                      "< \"{1F,0,0,26;2341B70}\\rNorvanex>\"\n"
                      "~ 10 ms x 19\n"
                      "~ 20 ms\n"
                      "x \"\\rNorvanex>\"\n");
    const unsigned char expected[] = {0x70, 0x1B, 0x34, 0x02, 0, 0, 0, 0, 0xEE};
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), id_.begin()));
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(AsciiId, HasUpTo64Bits) {
    EXPECT_EQ(readOf("{0,0,0,64;FEDCBA9876543210}"), 64);
    const unsigned char expected[] = {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE};
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), id_.begin()));
    script_->id = "{0,0,0,26;FFFFFFFFFFFFFFFF}";
    EXPECT_EQ(GetActiveID32(id_.data(), 32), 26);
    EXPECT_EQ(id_[7], 0xFF);
    EXPECT_EQ(id_[8], 0) << "cleared before";
}

TEST_F(AsciiId, IsTooOldBeyondTheHoldTime) {
    EXPECT_EQ(readOf("{1F5,0,0,26;2341B70}"), 0);
    EXPECT_EQ(id_[0], 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(readOf("{1F4,0,0,26;2341B70}"), 26);
    EXPECT_EQ(readOf("{FFFFFFFFFFFFFFFF,0,0,26;2341B70}"), 0);
}

TEST_F(AsciiId, HasElevenBitsAtLeast) {
    EXPECT_EQ(readOf("{0,0,0,10;1}"), 0);
    EXPECT_EQ(readOf("{0,0,0,-5;1}"), 0);
    EXPECT_EQ(readOf("{0,0,0,11;1}"), 11);
}

TEST_F(AsciiId, IgnoresTheSecondAndTheThirdNumberAndWhatStandsAround) {
    EXPECT_EQ(readOf("}garbage;{A,-7,FFFF,26;1}"), 26);
    EXPECT_EQ(id_[0], 1);
}

TEST_F(AsciiId, OfAnAnswerThatIsNotOfItsFormIs0AndLeavesTheErrorWordAlone) {
    for (const char* const answer :
         {"{0,0,0,26}", "{0,0,0;26,1}", "{}", "{0,0,0,26;}", "{;}", "{g,0,0,26;1}",
          "{0,0,0,0x1A;1}", "{0.0.0.26;1}", "{{0,0,0,26;1}"}) {
        record().lLastErr = 0x55;
        script_->id = answer;
        EXPECT_EQ(acp_getActiveID(id_.data(), 8), 0) << answer;
        EXPECT_EQ(GetLastLibErr(), 0x55) << answer;
        EXPECT_EQ(id_[0], 0xEE);
    }
}

TEST_F(AsciiId, NeedsBothBraces) {
    for (const char* const answer : {"0,0,0,26;1", "{0,0,0,26;1", "0,0,0,26;1}", "}{0,0,0,26;1"}) {
        EXPECT_EQ(readOf(answer), 0) << answer;
        EXPECT_EQ(GetLastLibErr(), kNoAnswer) << answer;
    }
}

TEST_F(AsciiId, GivesUpAfter300ReadsOfAByte) {
    takePausedMicroseconds();
    EXPECT_EQ(readOf(""), 0);
    EXPECT_EQ(takePausedMicroseconds(), (7 + 300 * (100 * 5 + 10) + 20) * 1000U);
    EXPECT_EQ(GetLastLibErr(), kNoAnswer);
}

TEST_F(AsciiId, GivesUpAfter200Bytes) {
    EXPECT_EQ(readOf(std::string(199, 'x') + "{}"), 0);
    EXPECT_EQ(pauses(), "~ 1 ms x 7\n~ 10 ms x 200\n~ 20 ms\n");
    EXPECT_EQ(GetLastLibErr(), kNoAnswer);
    EXPECT_EQ(readOf(std::string(186, 'x') + "{0,0,0,26;1}"), 26) << "the last byte that counts";
}

TEST_F(AsciiId, TakesBytesThatComeSlowly) {
    lines().dribble(kPath, 3);
    EXPECT_EQ(readOf("{1F,0,0,26;2341B70}"), 26);
    EXPECT_EQ(id_[0], 0x70);
}

TEST_F(AsciiId, OfASizeBelow8IsRefusedBeforeAnythingElse) {
    for (const short size : std::initializer_list<short>{7, 0, -1}) {
        EXPECT_EQ(GetActiveID(id_.data(), size), 0) << size;
        EXPECT_EQ(GetLastLibErr(), kTooSmall) << size;
    }
    EXPECT_EQ(heard(), "");
    closeLine();
    EXPECT_EQ(GetActiveID(id_.data(), 7), 0);
    EXPECT_EQ(GetLastLibErr(), kTooSmall);
}

TEST_F(AsciiId, NeedsAnOpenStream) {
    closeLine();
    EXPECT_EQ(GetActiveID(id_.data(), 8), 0);
    EXPECT_EQ(GetLastLibErr(), kClosed);
    takeLineAway();
    EXPECT_EQ(GetActiveID32(id_.data(), 32), 0);
    EXPECT_EQ(GetLastLibErr(), kClosed);
    EXPECT_EQ(pauses(), "");
}
