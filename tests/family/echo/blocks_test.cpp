// SPDX-License-Identifier: MIT
// The sensor's settings as bytes, by hand-made examples of each block.
#include "family/echo/blocks.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

using namespace zel::echo;

namespace {

class EchoBlocks : public ::testing::Test {
protected:
    EchoBlocks() { forgetRaw(); }
    ~EchoBlocks() override { forgetRaw(); }

    template <class Record> static std::vector<std::int16_t> wordsOf(const Record& record) {
        std::vector<std::int16_t> words(sizeof record / sizeof(std::int16_t));
        std::memcpy(words.data(), &record, sizeof record);
        return words;
    }
    template <class Record> static void set(Record& record, std::vector<std::int16_t> words) {
        ASSERT_EQ(words.size() * sizeof(std::int16_t), sizeof record);
        std::memcpy(&record, words.data(), sizeof record);
    }

    tsEcho echo_ = {};

private:
    static void forgetRaw() {
        gsWalkUpParms2 = {};
        gsIdleParms2 = {};
    }
};

using Words = std::vector<std::int16_t>;

// Halves of millionths in whole numbers: no rounding of a fraction can get in.
int floorOf(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t quotient = dividend / divisor;
    return static_cast<int>(dividend % divisor < 0 ? quotient - 1 : quotient);
}
int exactInches(int units) { return floorOf(2'000'000LL * units + 3'472'222, 2 * 3'472'222); }
int exactUnits(int inches) { return floorOf(2 * 3'472'222LL * inches + 1'000'000, 2'000'000); }

} // namespace

TEST_F(EchoBlocks, ZeroIsRead) {
    decodeBlock(echo_, 0, {0x05, 62, 16, 49, 208, 2, 1, 255});
    EXPECT_EQ(wordsOf(echo_.sSonarParms), (Words{5, 248, 16, 14, 60, 2, 1, 255}));
}

TEST_F(EchoBlocks, ZeroIsWritten) {
    set(echo_.sSonarParms, {5, 248, 16, 14, 60, 2, 1, 255});
    EXPECT_EQ(encodeBlock(echo_, 0), (Payload{5, 62, 16, 49, 208, 2, 1, 255}));
}

TEST_F(EchoBlocks, ZeroHasSevenBitsOfLedFlagsInBothDirections) {
    decodeBlock(echo_, 0, {0xFF});
    EXPECT_EQ(echo_.sSonarParms.LEDFlagsS, 0x7F);
    echo_.sSonarParms.LEDFlagsS = -1;
    EXPECT_EQ(encodeBlock(echo_, 0)[0], 0x7F);
}

TEST_F(EchoBlocks, OneIsReadIntoTheFirstHalfOfTheKeys) {
    decodeBlock(echo_, 1, {3, 2, 0x81, 0x82, 0x83, 0x84, 0x85, 0xFF});
    EXPECT_EQ(wordsOf(echo_.sWalkAwayParms), (Words{3, 128, 0x81, 0x82, 0x83, 0x84, 0x85, 0xFF, //
                                                    0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(EchoBlocks, TwoIsReadWholeIntoTheSecondHalf) {
    decodeBlock(echo_, 2, {0xF5, 0xF6, 1, 2, 3, 4, 5, 0xFF});
    EXPECT_EQ(wordsOf(echo_.sWalkAwayParms),
              (Words{0, 0, 0, 0, 0, 0, 0, 0, 0xF5, 0xF6, 1, 2, 3, 4, 5, 0xFF}));
}

TEST_F(EchoBlocks, ThreeAndFourAreReadLikeOneAndTwo) {
    decodeBlock(echo_, 3, {0xF6, 255, 1, 2, 3, 4, 5, 6});
    decodeBlock(echo_, 4, {0xF5, 0xF6, 7, 8, 9, 10, 11, 12});
    EXPECT_EQ(wordsOf(echo_.sWalkUpParms),
              (Words{6, 16320, 1, 2, 3, 4, 5, 6, 0xF5, 0xF6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(wordsOf(echo_.sWalkAwayParms), Words(16, 0));
}

TEST_F(EchoBlocks, FiveIsReadWhole) {
    decodeBlock(echo_, 5, {0xF1, 2, 3, 4, 0xF5, 6, 7, 0xF8});
    EXPECT_EQ(wordsOf(echo_.sIdleParms), (Words{0xF1, 2, 3, 4, 0xF5, 6, 7, 0xF8}));
}

TEST_F(EchoBlocks, OneAndTwoAreWritten) {
    set(echo_.sWalkAwayParms, {3, 128, 0x81, 2, 3, 4, 5, 0xFF, 0x0A, 0xC6, 7, 8, 9, 10, 11, 0xFE});
    EXPECT_EQ(encodeBlock(echo_, 1), (Payload{3, 2, 0x81, 2, 3, 4, 5, 0xFF}));
    EXPECT_EQ(encodeBlock(echo_, 2), (Payload{0x0A, 0xC6, 7, 8, 9, 10, 11, 0xFE}));
}

TEST_F(EchoBlocks, ThreeAndFourAreWritten) {
    set(echo_.sWalkUpParms, {4, 16320, 1, 2, 3, 4, 5, 6, 0x0B, 0x55, 7, 8, 9, 10, 11, 12});
    gsWalkUpParms2.Reserved2WU = 0xAB;
    EXPECT_EQ(encodeBlock(echo_, 3), (Payload{4, 255, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(encodeBlock(echo_, 4), (Payload{0x0B, 0xAB, 7, 8, 9, 10, 11, 12}));
}

TEST_F(EchoBlocks, FiveIsWritten) {
    set(echo_.sIdleParms, {0x55, 2, 3, 4, 0xF5, 6, 7, 0xF8});
    gsIdleParms2.Reserved1I = 0x3C;
    EXPECT_EQ(encodeBlock(echo_, 5), (Payload{0x0C, 2, 3, 4, 0xF5, 6, 7, 0xF8}));
}

TEST_F(EchoBlocks, HaveFourBitsOfKeyCountInBothDirections) {
    for (const int block : {1, 3}) {
        SCOPED_TRACE(block);
        decodeBlock(echo_, block, {0xF6});
        EXPECT_EQ(encodeBlock(echo_, block)[0], 6) << block;
    }
    echo_.sWalkAwayParms.KeyCountWA = echo_.sWalkUpParms.KeyCountWU = -1;
    EXPECT_EQ(encodeBlock(echo_, 1)[0], 0x0F);
    EXPECT_EQ(encodeBlock(echo_, 3)[0], 0x0F);
}

TEST_F(EchoBlocks, HaveEightBitsOfTheKeysFlagsWhenReadAndFourWhenWritten) {
    decodeBlock(echo_, 2, {0xF5});
    decodeBlock(echo_, 4, {0xFA});
    EXPECT_EQ(echo_.sWalkAwayParms.Flags0WA, 0xF5);
    EXPECT_EQ(echo_.sWalkUpParms.Flags0WU, 0xFA);
    EXPECT_EQ(encodeBlock(echo_, 2)[0], 0x05);
    EXPECT_EQ(encodeBlock(echo_, 4)[0], 0x0A);
}

TEST_F(EchoBlocks, GiveTheTwoReservedBytesBackAsLastReadWhateverTheRecordHolds) {
    echo_.sWalkUpParms.Reserved2WU = 0x77;
    echo_.sIdleParms.Reserved1I = 0x77;
    EXPECT_EQ(encodeBlock(echo_, 4)[1], 0);
    EXPECT_EQ(encodeBlock(echo_, 5)[0], 0);
    gsWalkUpParms2.Reserved2WU = 0x1F9;
    gsIdleParms2.Reserved1I = 0xF9;
    EXPECT_EQ(encodeBlock(echo_, 4)[1], 0xF9);
    EXPECT_EQ(encodeBlock(echo_, 5)[0], 0x09);
}

TEST_F(EchoBlocks, TakeTheOtherReservedBytesFromTheRecord) {
    echo_.sSonarParms.Reserved1S = 0x12;
    echo_.sWalkAwayParms.MinFltRepRate = 0x34;
    EXPECT_EQ(encodeBlock(echo_, 0)[2], 0x12);
    EXPECT_EQ(encodeBlock(echo_, 2)[1], 0x34);
}

TEST_F(EchoBlocks, AreTheLowBytesOfTheWords) {
    set(echo_.sIdleParms, {0, 0x1FF, -2, 0x7F00, 256, 257, -256, 0x0180});
    EXPECT_EQ(encodeBlock(echo_, 5), (Payload{0, 0xFF, 0xFE, 0, 0, 1, 0, 0x80}));
}

TEST_F(EchoBlocks, CutThePingRateToStepsOfFour) {
    echo_.sSonarParms.PingRateS = 203;
    EXPECT_EQ(encodeBlock(echo_, 0)[1], 50);
    decodeBlock(echo_, 0, encodeBlock(echo_, 0));
    EXPECT_EQ(echo_.sSonarParms.PingRateS, 200);
    echo_.sSonarParms.PingRateS = -5;
    EXPECT_EQ(encodeBlock(echo_, 0)[1], 0xFF) << "towards zero";
}

TEST_F(EchoBlocks, CutTheKeyDelaysToStepsOfSixtyFour) {
    echo_.sWalkAwayParms.InterKeyDelayWA = echo_.sWalkUpParms.InterKeyDelayWU = 100;
    for (const int block : {1, 3}) {
        EXPECT_EQ(encodeBlock(echo_, block)[1], 1);
        decodeBlock(echo_, block, encodeBlock(echo_, block));
    }
    EXPECT_EQ(echo_.sWalkAwayParms.InterKeyDelayWA, 64);
    EXPECT_EQ(echo_.sWalkUpParms.InterKeyDelayWU, 64);
    echo_.sWalkAwayParms.InterKeyDelayWA = -100;
    EXPECT_EQ(encodeBlock(echo_, 1)[1], 0xFF) << "towards zero";
}

TEST(EchoDistance, OfFourteenInchesIsFortyNineUnitsAndComesBack) {
    EXPECT_EQ(unitsOf(14), 49);
    EXPECT_EQ(inchesOf(49), 14);
}

TEST(EchoDistance, IsRoundedToTheNearestInchForEachByte) {
    for (int units = 0; units <= 255; ++units)
        EXPECT_EQ(inchesOf(units), exactInches(units)) << units;
    EXPECT_EQ(inchesOf(255), 73);
}

TEST(EchoDistance, IsRoundedToTheNearestUnitInDoublePrecisionForEachWord) {
    for (int inches = -32768; inches <= 32767; ++inches)
        ASSERT_EQ(unitsOf(inches), exactUnits(inches)) << inches;
    EXPECT_EQ(unitsOf(72), 250);
    EXPECT_EQ(unitsOf(-1), -3);
}

TEST(EchoDistance, OfEveryAcceptedWordComesBack) {
    for (int inches = 1; inches <= 72; ++inches)
        EXPECT_EQ(inchesOf(unitsOf(inches)), inches);
}

TEST_F(EchoBlocks, WriteADistanceBeyondAByteByItsLowByte) {
    echo_.sSonarParms.MinDistS = 74; // 257 units
    echo_.sSonarParms.MaxDistS = -1;
    EXPECT_EQ(encodeBlock(echo_, 0)[3], 1);
    EXPECT_EQ(encodeBlock(echo_, 0)[4], 0xFD);
}
