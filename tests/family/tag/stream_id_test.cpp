// SPDX-License-Identifier: MIT
// The card's identifier and the presence of a reader by frames.
#include "frame/zelTagAPI.h"
#include "sim/wire/byte_text.h"
#include "tests/family/tag/stream_test.h"

#include <algorithm>
#include <array>
#include <initializer_list>

using namespace zel::test;
using zel::sim::StreamFault;

namespace {

constexpr std::int64_t kFailed = 0x1000000;
const std::string kShort = "00 00 00 0C";
const std::string kLong = "00 00 00 24";
const std::string kShortAnswer = "00 A0 1A A2 A3 70 1B 34 02 05 06 07 08";
const std::string kPause = "~ 50 ms\n";

using Id = std::array<unsigned char, 40>;

class ScriptedId : public StreamTest {
protected:
    ScriptedId() { id_.fill(0xEE); }

    int read(short size) { return GetActiveID(id_.data(), size); }
    int readLong(short size) { return GetActiveID32(id_.data(), size); }

    // The bytes of the caller's buffer that aren't 0xEE any more.
    long touched() const { return std::count_if(id_.begin(), id_.end(), isOther); }
    static bool isOther(unsigned char byte) { return byte != 0xEE; }

    std::shared_ptr<Script> script_ = connectScript();
    Id id_;
};

class StreamShortId : public ScriptedId {};
class StreamLongId : public ScriptedId {};
class StreamPresence : public ScriptedId {};

// Procedure byte, four bytes with the bit count 0x25 among them, 01 to 20 and a status word.
std::string longAnswer(const std::string& status) {
    std::string answer = "00 A0 25 A2 A3";
    for (unsigned byte = 1; byte <= 32; ++byte) {
        const std::uint8_t one[] = {static_cast<std::uint8_t>(byte)};
        answer += ' ' + zel::sim::hexOf(one);
    }
    return answer + ' ' + status;
}

} // namespace

TEST_F(StreamShortId, IsBehindItsBitCountInTwelveBytes) {
    record().lLastErr = 5;
    script_->answer(kShortAnswer + " 90 00");
    EXPECT_EQ(read(8), 0x1A);
    EXPECT_EQ(told(), reading(kShort, kShortAnswer + " 90 00"));
    const unsigned char expected[] = {0x70, 0x1B, 0x34, 0x02, 5, 6, 7, 8, 0xEE};
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), id_.begin()));
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(lLastICSWErr, 0x9000U);
}

TEST_F(StreamShortId, IsEightBytesInALongerBuffer) {
    script_->answer(kShortAnswer + " 90 00");
    EXPECT_EQ(read(40), 0x1A);
    EXPECT_EQ(id_[7], 8);
    EXPECT_EQ(id_[8], 0) << "cleared";
}

TEST_F(StreamShortId, OfASizeBelow8Is0AfterTheExchange) {
    for (const short size : std::initializer_list<short>{4, 7, 0, -1}) {
        id_.fill(0xEE);
        script_->answer(kShortAnswer + " 90 00");
        EXPECT_EQ(read(size), 0) << size;
        EXPECT_EQ(told(), reading(kShort, kShortAnswer + " 90 00"));
        EXPECT_EQ(touched(), std::max<short>(size, 0)) << size;
        EXPECT_EQ(GetLastLibErr(), 0) << size;
    }
}

TEST_F(StreamShortId, IsTriedThreeTimes50MsApart) {
    for (const char* const refusal : {"6D 00", "6D 01", "6D 02"})
        script_->answer(refusal);
    EXPECT_EQ(read(8), 0);
    EXPECT_EQ(told(), reading(kShort, "6D 00") + kPause + reading(kShort, "6D 01") + kPause +
                          reading(kShort, "6D 02"));
    EXPECT_EQ(GetLastLibErr(), kFailed);
    EXPECT_EQ(lLastICSWErr, 0x6D02U);
}

TEST_F(StreamShortId, OfTheSecondTryIsAsGood) {
    script_->answer("6D 00");
    script_->answer(kShortAnswer + " 90 00");
    EXPECT_EQ(read(8), 0x1A);
    EXPECT_EQ(told(), reading(kShort, "6D 00") + kPause + reading(kShort, kShortAnswer + " 90 00"));
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamShortId, FailsAfterThreeWrongStatusWords) {
    for (int attempt = 0; attempt < 3; ++attempt)
        script_->answer(kShortAnswer + " 6A 83");
    EXPECT_EQ(read(8), 0);
    EXPECT_EQ(id_[0], 0);
    EXPECT_EQ(GetLastLibErr(), kFailed);
    EXPECT_EQ(lLastICSWErr, 0x6A83U);
}

TEST_F(StreamShortId, FailsWhenTheReaderIsSilent) {
    EXPECT_EQ(read(8), 0);
    const std::string nothing = brokenReading(kShort, "", 2);
    EXPECT_EQ(told(), nothing + kPause + nothing + kPause + nothing);
    EXPECT_EQ(GetLastLibErr(), kFailed);
    EXPECT_EQ(lLastICSWErr, 0U);
}

TEST_F(StreamShortId, TakesTheStatusWord6A82BehindWholeDataForAnAnswerAndStopsTrying) {
    script_->answer(kShortAnswer + " 6A 82");
    EXPECT_EQ(read(8), 0x1A) << "what came with it is returned";
    EXPECT_EQ(told(), reading(kShort, kShortAnswer + " 6A 82"));
    EXPECT_EQ(id_[0], 0x70);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(lLastICSWErr, 0x6A82U);
}

TEST_F(StreamShortId, DoesNotTakeARefusalWith6A82ForAnAnswer) {
    for (int attempt = 0; attempt < 3; ++attempt)
        script_->answer("6A 82");
    EXPECT_EQ(read(8), 0);
    const std::string refused = reading(kShort, "6A 82");
    EXPECT_EQ(told(), refused + kPause + refused + kPause + refused);
    EXPECT_EQ(GetLastLibErr(), kFailed);
}

TEST_F(StreamShortId, FailsOnAClosedStreamAfterItsPauses) {
    closeLine();
    lines().pump();
    told();
    EXPECT_EQ(read(8), 0);
    EXPECT_EQ(told(), "~ 50 ms x 2\n");
    EXPECT_EQ(GetLastLibErr(), kFailed);
    takeLineAway();
    EXPECT_EQ(read(8), 0);
    EXPECT_EQ(told(), "~ 50 ms x 2\n");
}

TEST_F(StreamShortId, NeedsABuffer) {
    EXPECT_EQ(GetActiveID(nullptr, 8), 0);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(GetLastLibErr(), kFailed);
}

TEST_F(StreamLongId, IsBehindItsBitCountIn36Bytes) {
    script_->answer(longAnswer("90 00"));
    EXPECT_EQ(readLong(32), 0x25);
    EXPECT_EQ(told(), reading(kLong, longAnswer("90 00")));
    for (unsigned byte = 0; byte < 32; ++byte)
        EXPECT_EQ(id_[byte], byte + 1);
    EXPECT_EQ(touched(), 32);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamLongId, OfASizeBelow32Is0AfterTheExchange) {
    for (const short size : std::initializer_list<short>{31, 8, 0, -5}) {
        id_.fill(0xEE);
        script_->answer(longAnswer("90 00"));
        EXPECT_EQ(readLong(size), 0) << size;
        EXPECT_EQ(told(), reading(kLong, longAnswer("90 00")));
        EXPECT_EQ(touched(), std::max<short>(size, 0)) << size;
        EXPECT_EQ(GetLastLibErr(), 0);
    }
}

TEST_F(StreamLongId, TakesTheStatusWord6A82ForNoAnswer) {
    script_->answer(longAnswer("6A 82"));
    EXPECT_EQ(readLong(32), 0);
    EXPECT_EQ(told(), reading(kLong, longAnswer("6A 82")));
    EXPECT_EQ(id_[0], 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(lLastICSWErr, 0x6A82U);
}

TEST_F(StreamLongId, GoesOnWithWhatCameAfterAnotherStatusWord) {
    script_->answer(longAnswer("6A 83"));
    EXPECT_EQ(readLong(32), 0x25);
    EXPECT_EQ(id_[31], 32);
    EXPECT_EQ(GetLastLibErr(), kFailed);
    script_->answer(longAnswer("6A 83"));
    EXPECT_EQ(readLong(31), 0);
    EXPECT_EQ(GetLastLibErr(), kFailed);
}

// A refusal's status word stands where the data would.
TEST_F(StreamLongId, IsTriedOnceAndReturnsTheSecondByteOfARefusal) {
    script_->answer("6A 82");
    EXPECT_EQ(readLong(32), 0x82);
    EXPECT_EQ(told(), reading(kLong, "6A 82"));
    EXPECT_EQ(id_[0], 0);
    EXPECT_EQ(GetLastLibErr(), kFailed);
}

TEST_F(StreamLongId, OfShortDataHasWhatCame) {
    script_->answer("00 A0 19 A2 A3 70 1B");
    EXPECT_EQ(readLong(32), 0x19);
    EXPECT_EQ(told(), brokenReading(kLong, "00 A0 19 A2 A3 70 1B", 1));
    EXPECT_EQ(id_[1], 0x1B);
    EXPECT_EQ(id_[2], 0);
    EXPECT_EQ(GetLastLibErr(), kFailed);
}

TEST_F(StreamLongId, IsNothingOnAClosedStream) {
    closeLine();
    EXPECT_EQ(readLong(32), 0);
    EXPECT_EQ(GetLastLibErr(), kFailed);
}

TEST_F(StreamPresence, IsAProbeTriedTwiceWithoutAPause) {
    const std::string probe = "04 ED ED 04";
    script_->answer("04 34 12 42 01 90 00");
    EXPECT_LE(Ping(), 65535);
    EXPECT_EQ(told(), reading(probe, "04 34 12 42 01 90 00"));
    script_->answer("6D 00");
    script_->answer("04 34 12 42 01 90 00");
    EXPECT_LE(Ping(), 65535);
    EXPECT_EQ(told(), reading(probe, "6D 00") + reading(probe, "04 34 12 42 01 90 00"));
    script_->answer("6D 00");
    script_->answer("04 34 12 42 01 6F 00");
    EXPECT_GT(Ping(), 65535);
    EXPECT_EQ(told(), reading(probe, "6D 00") + reading(probe, "04 34 12 42 01 6F 00"));
    EXPECT_EQ(record().iLUID, 0) << "nothing of it is kept";
}

TEST_F(StreamTest, ReadsTheCardOfASimulatedReader) {
    auto stream = connectSimulated();
    Id id = {};
    EXPECT_EQ(GetActiveID(id.data(), 8), 0);
    EXPECT_EQ(lLastICSWErr, 0x6A82U) << "no card";
    stream->reader().present(zel::sim::card26(26, 3512));
    EXPECT_EQ(GetActiveID(id.data(), 8), 26);
    EXPECT_EQ(getActiveID32(32), 26);
    EXPECT_TRUE(std::equal(id.begin(), id.begin() + 32, activeIDBuf));
    EXPECT_EQ(stream->commands(), 3) << "no card is no reason to try again";
}
