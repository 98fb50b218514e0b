// SPDX-License-Identifier: MIT
// The four configuration blocks: which word each bit means, and back.
#include "family/tag/blocks.h"
#include "tests/family/tag/block_rows.h"
#include "tests/family/tag/tag_record.h"

#include <random>

using namespace zel::test;
using zel::tag::decodeBlock;
using zel::tag::encodeBlock;
using zel::tag::Payload;

namespace {

Payload oneBit(std::size_t byte, unsigned bit) {
    Payload bytes = {};
    bytes[byte] = static_cast<std::uint8_t>(1U << bit);
    return bytes;
}

tsTagCfg decoded(int block, const Payload& bytes, bool isStream = false) {
    tsTagCfg config = {};
    decodeBlock(config, block, bytes, isStream);
    return config;
}

tsTagCfg withFeatures(std::int16_t features) {
    tsTagCfg config = {};
    config.sTimeParms.ExFeatures01 = features;
    return config;
}

// What one bit of blocks 0, 1 and 2 means, by the rows above and the shared bytes.
tsTagCfg meaning(int block, std::size_t byte, unsigned bit) {
    tsTagCfg config = {};
    for (const Flag& flag : kFlags)
        if (flag.block == block && flag.byte == byte && flag.bit == bit)
            flag.word(config) = 1;
    for (const Flag& flag : kMirrors)
        if (flag.block == block && flag.byte == byte && flag.bit == bit)
            flag.word(config) = 1;
    for (const Number& number : kNumbers)
        if (number.block == block && number.byte == byte)
            number.word(config) = static_cast<std::int16_t>(number.unit << bit);
    if (block == 0 && byte == 2)
        (bit < 4 ? config.sIDBitCnts.iLeadParityBitCnt : config.sIDBitCnts.iTrailParityBitCnt) =
            static_cast<std::int16_t>(1 << bit % 4);
    if (block == 2 && byte == 4 && bit < 2)
        config.sIDDispParms2.iLeadChrCnt = static_cast<std::int16_t>(1 << bit);
    if (block == 2 && byte == 4 && (bit == 4 || bit == 5))
        config.sIDDispParms3.iTrailChrCnt = static_cast<std::int16_t>(1 << bit % 4);
    std::int16_t* const trail = &config.sIDDispParms3.iTrailChr0;
    if (block == 2 && byte >= 5)
        trail[byte - 5] = static_cast<std::int16_t>(1 << bit);
    return config;
}

} // namespace

TEST(DecodedBlock, EachBitSetsItsWordAndNoOther) {
    for (int block = 0; block < 3; ++block)
        for (std::size_t byte = 0; byte < 8; ++byte)
            for (unsigned bit = 0; bit < 8; ++bit)
                EXPECT_TRUE(isSame(decoded(block, oneBit(byte, bit)), meaning(block, byte, bit)))
                    << "block " << block << " byte " << byte << " bit " << bit;
}

TEST(DecodedBlock, EachClearBitClearsItsWord) {
    for (int block = 0; block < 3; ++block) {
        tsTagCfg config = {};
        decodeBlock(config, block, {255, 255, 255, 255, 255, 255, 255, 255}, false);
        decodeBlock(config, block, {}, false);
        EXPECT_TRUE(isSame(config, tsTagCfg{})) << block;
    }
}

TEST(DecodedBlock, OfTimesCountsInUnitsOf4And50Milliseconds) {
    const tsTagCfg config = decoded(1, {0xEE, 10, 20, 40, 2, 3, 0, 0});
    EXPECT_TRUE(isSame(config.sTimeParms, sTimeParms{40, 1000, 2000, 8, 12, 0, 0, 0}));
    const tsTagCfg longest = decoded(1, {0, 255, 255, 255, 255, 255, 0, 0});
    EXPECT_TRUE(isSame(longest.sTimeParms, sTimeParms{1020, 12750, 12750, 1020, 1020, 0, 0, 0}));
}

TEST(DecodedBlock, OfExtensionsAddsToTheParityCounts) {
    tsTagCfg config = decoded(0, {0, 0, 0x3F, 0, 0, 0, 0, 0});
    EXPECT_EQ(config.sIDBitCnts.iLeadParityBitCnt, 15);
    decodeBlock(config, 3, {2, 0, 0, 0, 0, 0, 0, 0}, false);
    EXPECT_EQ(config.sIDBitCnts.iLeadParityBitCnt, 17);
    EXPECT_EQ(config.sIDBitCnts.iTrailParityBitCnt, 3);
    decodeBlock(config, 3, {0, 255, 0, 0, 0, 0, 0, 0}, false);
    EXPECT_EQ(config.sIDBitCnts.iTrailParityBitCnt, 258);
}

TEST(DecodedBlock, OfExtensionsIsKeptByteByByte) {
    const tsTagCfg config = decoded(3, {1, 2, 3, 4, 5, 0xFD, 0xFF, 8});
    const std::uint16_t expected[7] = {1, 2, 3, 4, 5, 0xFD, 0xFF};
    EXPECT_TRUE(isSame(config.ExtBlock, expected));
    EXPECT_EQ(config.ExtendedPrecisionMath, 0U);
    EXPECT_EQ(config.AZERTYShiftLock, 1U);
}

TEST(DecodedBlock, OfExtensionsHoldsAnOptionInBitOneEach) {
    for (unsigned bit = 0; bit < 8; ++bit) {
        const tsTagCfg five = decoded(3, oneBit(5, bit));
        EXPECT_EQ(five.ExtendedPrecisionMath, bit == 1 ? 1U : 0U) << bit;
        EXPECT_EQ(five.AZERTYShiftLock, 0U) << bit;
        const tsTagCfg six = decoded(3, oneBit(6, bit));
        EXPECT_EQ(six.AZERTYShiftLock, bit == 1 ? 1U : 0U) << bit;
        EXPECT_EQ(six.ExtendedPrecisionMath, 0U) << bit;
    }
}

TEST(DecodedBlock, OfExtensionsTellsTheOutputFormatOnlyWithItsFeature) {
    for (const int features : {0x40, 0xFF, 0xBF, 0}) {
        SCOPED_TRACE(features);
        tsTagCfg config = withFeatures(static_cast<std::int16_t>(features));
        config.sIDDispParms.iExOutputFormat = 77;
        decodeBlock(config, 3, {0, 0, 0, 0, 0, 0, 0, 0xC3}, false);
        EXPECT_EQ(config.sIDDispParms.iExOutputFormat, (features & 0x40) != 0 ? 0xC3 : 77);
    }
}

TEST(DecodedBlock, HandsTheCharactersOutLeadsFirst) {
    const struct {
        std::uint8_t counts;
        sIDDispParms2 lead;
        sIDDispParms3 trail;
    } rows[] = {
        {0x21, {1, 'a', 0, 0, 0, 0, 0, 0}, {2, 'b', 'c', 0, 0, 0, 0, 0}},
        {0x11, {1, 'a', 0, 0, 0, 0, 0, 0}, {1, 'b', 'c', 0, 0, 0, 0, 0}},
        {0x33, {3, 'a', 'b', 'c', 0, 0, 0, 0}, {3, 0, 0, 0, 0, 0, 0, 0}},
        {0x00, {0, 0, 0, 0, 0, 0, 0, 0}, {0, 'a', 'b', 'c', 0, 0, 0, 0}},
        {0x32, {2, 'a', 'b', 0, 0, 0, 0, 0}, {3, 'c', 0, 0, 0, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        tsTagCfg config = {};
        config.sIDDispParms2 = {9, 9, 9, 9, 9, 9, 0, 0};
        config.sIDDispParms3 = {9, 9, 9, 9, 0, 0, 0, 0};
        decodeBlock(config, 2, {0, 0, 0, 0, row.counts, 'a', 'b', 'c'}, false);
        EXPECT_TRUE(isSame(config.sIDDispParms2, row.lead)) << int{row.counts};
        EXPECT_TRUE(isSame(config.sIDDispParms3, row.trail)) << int{row.counts};
    }
}

TEST(DecodedBlock, OfAByteStreamSaysNothingOfTheBootDevice) {
    tsTagCfg config = {};
    config.sCfgFlags3.bNotBootDev = 1;
    decodeBlock(config, 2, {0x1F, 0, 0, 0, 0, 0, 0, 0}, true);
    EXPECT_EQ(config.sCfgFlags3.bNotBootDev, 0);
    EXPECT_EQ(config.sBprRlyCtrl.iBeeperState, 1);
}

TEST(DecodedBlock, OfOutputsClearsBothVolatileFlags) {
    tsTagCfg config = {};
    config.sLEDCtrl.bVolatile = config.sBprRlyCtrl.bVolatile = 1;
    decodeBlock(config, 1, {}, false);
    EXPECT_EQ(config.sLEDCtrl.bVolatile + config.sBprRlyCtrl.bVolatile, 2);
    decodeBlock(config, 2, {}, false);
    EXPECT_EQ(config.sLEDCtrl.bVolatile + config.sBprRlyCtrl.bVolatile, 0);
}

TEST(EncodedBlock, HasAFlagAsOneBitWhateverItsValue) {
    for (const Flag& flag : kFlags)
        for (const int value : {1, 2, 256, -32768}) {
            tsTagCfg config = {};
            flag.word(config) = static_cast<std::int16_t>(value);
            for (int block = 0; block < 4; ++block)
                EXPECT_EQ(encodeBlock(config, block),
                          block == flag.block ? oneBit(flag.byte, flag.bit) : Payload{})
                    << flag.block << " " << flag.byte << " " << flag.bit;
        }
}

TEST(EncodedBlock, HasNoPlaceForAMirroredWord) {
    tsTagCfg config = {};
    for (const Flag& mirror : kMirrors)
        mirror.word(config) = 1;
    for (int block = 0; block < 4; ++block)
        EXPECT_EQ(encodeBlock(config, block), Payload{}) << block;
}

TEST(EncodedBlock, HasTheLowByteOfANumberInUnits) {
    for (const Number& number : kNumbers) {
        tsTagCfg config = {};
        number.word(config) = static_cast<std::int16_t>(0x65 * number.unit);
        Payload expected = {};
        expected[number.byte] = 0x65;
        EXPECT_EQ(encodeBlock(config, number.block), expected)
            << number.block << " " << number.byte;
    }
}

TEST(EncodedBlock, CutsLengthsAndIdBitsToSevenBits) {
    tsTagCfg config = {};
    config.sIDDispParms = {0x12D, 0x30D, 0x88, 0x99, 0, 0, 0, 0};
    config.sIDBitCnts.iIDBitCnt = 200;
    config.sIDBitCnts.iTotalBitCnt = 0x1FE;
    EXPECT_EQ(encodeBlock(config, 0), (Payload{0x19, 0x08, 0, 72, 0xFE, 0x2D, 0x0D, 0}));
}

TEST(EncodedBlock, RoundsTimesTowardsZero) {
    tsTagCfg config = {};
    config.sTimeParms = {1019, 12749, 99, 3, -3, 0xC7, 0, 0x1FE};
    const Payload bytes = encodeBlock(config, 1);
    EXPECT_EQ(bytes, (Payload{0, 254, 254, 1, 0, 0, 0xFE, 0xC7}));
    EXPECT_EQ(decoded(1, bytes).sTimeParms.iIDHoldTO, 12700);
    config.sTimeParms = {-5, -51, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(encodeBlock(config, 1), (Payload{0, 0xFF, 0xFF, 0, 0, 0, 0, 0}));
}

TEST(EncodedBlock, MovesTheExcessOfParityIntoBlockThreeAndBack) {
    tsTagCfg config = withFeatures(0x80);
    config.sIDBitCnts.iLeadParityBitCnt = 20;
    EXPECT_EQ(encodeBlock(config, 0)[2], 0x0F);
    EXPECT_EQ(config.bDirtyExt, 1U);
    EXPECT_EQ(encodeBlock(config, 3), (Payload{5, 0, 0, 0, 0, 0, 0, 0}));

    config.bDirtyExt = 0;
    encodeBlock(config, 0);
    EXPECT_EQ(config.bDirtyExt, 0U) << "the same excess again marks nothing";

    config.sIDBitCnts.iLeadParityBitCnt = 15;
    EXPECT_EQ(encodeBlock(config, 0)[2], 0x0F);
    EXPECT_EQ(config.bDirtyExt, 1U);
    EXPECT_EQ(encodeBlock(config, 3), Payload{});
}

TEST(EncodedBlock, HasTheTrailParityInTheHighNibbleAndItsExcessBehind) {
    tsTagCfg config = {};
    config.sIDBitCnts.iLeadParityBitCnt = 3;
    config.sIDBitCnts.iTrailParityBitCnt = 142;
    EXPECT_EQ(encodeBlock(config, 0)[2], 0xF3);
    EXPECT_EQ(config.bDirtyExt, 1U);
    EXPECT_EQ(encodeBlock(config, 3), (Payload{0, 127, 0, 0, 0, 0, 0, 0}));
    config.sIDBitCnts.iTrailParityBitCnt = 16;
    EXPECT_EQ(encodeBlock(config, 0)[2], 0xF3);
    EXPECT_EQ(encodeBlock(config, 3)[1], 1);
}

TEST(EncodedBlock, WithoutExcessMarksNothing) {
    tsTagCfg config = {};
    config.sIDBitCnts.iLeadParityBitCnt = 15;
    config.sIDBitCnts.iTrailParityBitCnt = 15;
    EXPECT_EQ(encodeBlock(config, 0)[2], 0xFF);
    EXPECT_EQ(dirtyFlags(config), "");
}

TEST(EncodedBlock, CutsTrailsBeforeLeads) {
    const struct {
        std::int16_t lead;
        std::int16_t trail;
        Payload bytes;
    } rows[] = {
        {2, 3, {0, 0, 0, 0, 0x12, 'a', 'b', 'x'}},
        {3, 3, {0, 0, 0, 0, 0x03, 'a', 'b', 'c'}},
        {0, 3, {0, 0, 0, 0, 0x30, 'x', 'y', 'z'}},
        {1, 1, {0, 0, 0, 0, 0x11, 'a', 'x', 0}},
        {3, 0, {0, 0, 0, 0, 0x03, 'a', 'b', 'c'}},
        {1, 2, {0, 0, 0, 0, 0x21, 'a', 'x', 'y'}},
        {0, 0, {}},
        {9, 0, {0, 0, 0, 0, 0x03, 'a', 'b', 'c'}},
    };
    for (const auto& row : rows) {
        tsTagCfg config = {};
        config.sIDDispParms2 = {row.lead, 'a', 0x200 | 'b', 'c', 0, 0, 0, 0};
        config.sIDDispParms3 = {row.trail, 'x', 'y', 'z', 0, 0, 0, 0};
        EXPECT_EQ(encodeBlock(config, 2), row.bytes) << row.lead << " " << row.trail;
    }
}

TEST(EncodedBlock, OfWildCharacterCountsStaysInsideTheBlock) {
    tsTagCfg config = {};
    config.sIDDispParms2 = {-32768, 'a', 'b', 'c', 0, 0, 0, 0};
    config.sIDDispParms3 = {32767, 'x', 'y', 'z', 0, 0, 0, 0};
    const Payload bytes = encodeBlock(config, 2);
    EXPECT_EQ(bytes[5], 'x');
    EXPECT_EQ(bytes[7], 'z');
}

TEST(EncodedBlock, OfExtensionsTakesItsOptionsFromTheirOwnWords) {
    tsTagCfg config = {};
    const std::uint16_t carried[7] = {0x101, 2, 3, 4, 5, 0xFF, 0x40};
    std::memcpy(config.ExtBlock, carried, sizeof carried);
    config.AZERTYShiftLock = 0x10000;
    EXPECT_EQ(encodeBlock(config, 3), (Payload{1, 2, 3, 4, 5, 0xFD, 0x42, 0}));
    config.AZERTYShiftLock = 0;
    config.ExtendedPrecisionMath = 4;
    EXPECT_EQ(encodeBlock(config, 3), (Payload{1, 2, 3, 4, 5, 0xFF, 0x40, 0}));
}

TEST(EncodedBlock, OfExtensionsHasTheOutputFormatOnlyWithItsFeature) {
    tsTagCfg config = withFeatures(0xBF);
    config.sIDDispParms.iExOutputFormat = 0x1C3;
    EXPECT_EQ(encodeBlock(config, 3)[7], 0);
    config.sTimeParms.ExFeatures01 = 0x40;
    EXPECT_EQ(encodeBlock(config, 3)[7], 0xC3);
}

TEST(EncodedBlock, OfExtensionsLeavesTheHeldOptionsOut) {
    tsTagCfg config = {};
    config.b64BytesInPackets = config.bEasyReadMode = config.bPrependCSN = 1;
    EXPECT_EQ(encodeBlock(config, 3), Payload{});
}

// Any four blocks without what the library cuts: seven-bit lengths, no bits without a meaning,
// characters that their counts name.
TEST(Blocks, ComeBackAsTheyWereRead) {
    std::mt19937 random(20);
    const auto any = [&](unsigned mask) { return static_cast<std::uint8_t>(random() & mask); };
    for (int round = 0; round < 2000; ++round) {
        Payload blocks[4];
        for (Payload& block : blocks)
            for (std::uint8_t& byte : block)
                byte = any(0xFF);
        for (const std::size_t byte : {0U, 1U, 3U})
            blocks[0][byte] &= 0x7F;
        blocks[0][2] = 0xFF; // only a full nibble has an excess
        blocks[1][0] = 0;
        blocks[2][0] &= 0x1F;
        const int lead = any(3);
        blocks[2][4] = static_cast<std::uint8_t>(lead | (3 - lead) << 4);
        if ((blocks[1][7] & 0x40) == 0)
            blocks[3][7] = 0;
        tsTagCfg config = {};
        for (int block = 0; block < 4; ++block)
            decodeBlock(config, block, blocks[block], false);
        for (int block = 0; block < 4; ++block)
            ASSERT_EQ(encodeBlock(config, block), blocks[block]) << round << " block " << block;
        ASSERT_EQ(dirtyFlags(config), "");
    }
}

// Every word that the blocks hold, at random inside what they can hold.
TEST(Blocks, BringAConfigurationBack) {
    std::mt19937 random(21);
    const auto below = [&](unsigned limit) { return static_cast<std::int16_t>(random() % limit); };
    for (int round = 0; round < 2000; ++round) {
        tsTagCfg config = {};
        for (const Flag& flag : kFlags)
            flag.word(config) = below(2);
        for (const Number& number : kNumbers)
            number.word(config) = static_cast<std::int16_t>(below(128) * number.unit);
        config.sIDBitCnts.iLeadParityBitCnt = below(143);
        config.sIDBitCnts.iTrailParityBitCnt = below(143);
        config.sIDDispParms2.iLeadChrCnt = below(4);
        config.sIDDispParms3.iTrailChrCnt =
            static_cast<std::int16_t>(3 - config.sIDDispParms2.iLeadChrCnt);
        for (int i = 0; i < config.sIDDispParms2.iLeadChrCnt; ++i)
            (&config.sIDDispParms2.iLeadChr0)[i] = below(256);
        for (int i = 0; i < config.sIDDispParms3.iTrailChrCnt; ++i)
            (&config.sIDDispParms3.iTrailChr0)[i] = below(256);
        for (const Flag& mirror : kMirrors)
            mirror.word(config) =
                static_cast<std::int16_t>((mirror.byte == 6 ? config.sTimeParms.iTPCfgFlg3
                                                            : config.sTimeParms.ExFeatures01) >>
                                              mirror.bit &
                                          1);
        config.ExtendedPrecisionMath = random() % 2;
        config.AZERTYShiftLock = random() % 2;
        config.sIDDispParms.iExOutputFormat =
            (config.sTimeParms.ExFeatures01 & 0x40) != 0 ? below(256) : std::int16_t{0};

        tsTagCfg copy = {};
        for (int block = 0; block < 4; ++block)
            decodeBlock(copy, block, encodeBlock(config, block), false);
        config.bDirtyExt = 0;
        config.ExtBlock[5] = config.ExtendedPrecisionMath != 0 ? 2 : 0;
        config.ExtBlock[6] = config.AZERTYShiftLock != 0 ? 2 : 0;
        ASSERT_TRUE(isSame(copy, config)) << round;
    }
}
