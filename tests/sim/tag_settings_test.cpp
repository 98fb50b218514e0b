// SPDX-License-Identifier: MIT
// What the simulated reader keeps: blocks, fields, keys, the stored sets and the commit.
#include "tests/sim/simulated_reader.h"

using namespace zel::sim;
using zel::test::SpokenReader;

namespace {
using Block = TagReader::Block;
constexpr Block kA = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr Block kB = {9, 10, 11, 12, 13, 14, 15, 16};
} // namespace

TEST(SimulatedSettings, TakeFourBlocks) {
    SpokenReader reader;
    for (std::uint8_t n = 0; n < 4; ++n)
        reader.write({static_cast<std::uint8_t>(0x80 + n)}, {n, 0xB0});
    EXPECT_EQ(reader.query({0x80}), (Block{0, 0xB0}));
    EXPECT_EQ(reader.query({0x81}), (Block{1, 0xB0}));
    EXPECT_EQ(reader.query({0x82}), (Block{2, 0xB0}));
    EXPECT_EQ(reader.query({0x83}), (Block{3, 0xB0}));
}

TEST(SimulatedSettings, TakeEighteenPagesOfFields) {
    SpokenReader reader;
    reader.write({0x85, 17, 0, 0x10}, kA);
    reader.write({0x85, 18, 0, 0x10}, kB);
    EXPECT_EQ(reader.query({0x85, 17, 0, 0x10}), kA);
    EXPECT_EQ(reader.query({0x85, 18, 0, 0x10}), Block{});
}

TEST(SimulatedSettings, TakeTwoKeysOfTwoPagesByTheirSelectors) {
    SpokenReader reader;
    reader.write({0x85, 0, 0x01, 0}, kA);
    reader.write({0x85, 1, 0x11, 0}, kB);
    reader.write({0x85, 2, 0x01, 0}, kB);
    const TagConfiguration& configuration = reader.configuration(0);
    EXPECT_EQ(configuration.key[0], (std::array<Block, 2>{kA, Block{}}));
    EXPECT_EQ(configuration.key[1], (std::array<Block, 2>{Block{}, kB}));
    EXPECT_EQ(configuration.page, TagReader::factorySettings().configuration[0].page);
}

TEST(SimulatedSettings, IgnoreAPageOfAnotherSelector) {
    SpokenReader reader;
    reader.write({0x85, 0, 0x02, 0}, kA);
    reader.write({0x85, 0, 0x00, 0}, kA);
    EXPECT_EQ(reader.configuration(0).page[0], (Block{12}));
    EXPECT_EQ(reader.configuration(0).key[0][0], Block{});
    EXPECT_EQ(reader.configuration(0).key[1][0], Block{});
}

TEST(SimulatedSettings, ShowTheFieldsInTheOldFormOrInTheNewOneWithItsPageCount) {
    SpokenReader oldForm;
    SpokenReader newForm({.fieldPages = 16});
    EXPECT_EQ(oldForm.query({0x85, 0, 0, 0x10}), (Block{12}));
    EXPECT_EQ(newForm.query({0x85, 0, 0, 0x10}), (Block{0x24, 0, 0, 16}));
}

TEST(SimulatedSettings, CarryTheFeatureBitsInTheLastByteOfBlock1) {
    SpokenReader reader({.features = 0xC0});
    EXPECT_EQ(reader.query({0x81}), (Block{0, 16, 20, 40, 1, 1, 0, 0xC0}));
}

TEST(SimulatedSettings, SurviveALossOfPowerInEachPartOnceCommitted) {
    SpokenReader reader;
    reader.write({0x83}, kA);
    reader.write({0x85, 3, 0, 0x10}, kA);
    reader.write({0x85, 0, 0x01, 0}, kA);
    reader.write({0x84}, {0, 0x04, 0x12, 1});
    reader.command({0x90, 0x28});
    reader.write({0x83}, kB);
    reader.powerUp();
    EXPECT_EQ(reader.query({0x83}), kA);
    EXPECT_EQ(reader.query({0x85, 3, 0, 0x10}), kA);
    EXPECT_EQ(reader.query({0x85, 0, 0x01, 0}), kA);
    EXPECT_EQ(reader.query({0x84}), (Block{0, 0x04, 0x12, 1}));
}

TEST(SimulatedSettings, ReturnToTheFactorysInEveryConfigurationButKeepTheLuid) {
    SpokenReader reader({.tagPlusConfigurations = 11, .features = 0x40});
    reader.settings().luid = 7;
    reader.configuration(0).block[3] = kA;
    reader.configuration(10).block[3] = kA;
    reader.command({0xA0});
    EXPECT_EQ(reader.configuration(0).block[3], Block{});
    EXPECT_EQ(reader.configuration(10).block[3], Block{});
    EXPECT_EQ(reader.configuration(10).block[1][7], 0x40);
    EXPECT_EQ(reader.settings().luid, 7);
    reader.powerUp();
    EXPECT_EQ(reader.settings().luid, 7);
}

TEST(SimulatedSets, MoveTheCurrentSettingsToTheUsersAndBack) {
    SpokenReader reader({.tagPlusConfigurations = 2});
    reader.configuration(1).block[3] = kA;
    EXPECT_EQ(reader.query({0x89, 0x82, 1, 2, 0, 0xFF}), (Block{0x89, 0x82, 1, 2}));
    EXPECT_EQ(reader.userDefaults().configuration[1].block[3], kA);
    reader.configuration(1).block[3] = kB;
    EXPECT_EQ(reader.query({0x89, 0x82, 2, 1, 0, 0xFF}), (Block{0x89, 0x82, 2, 1}));
    EXPECT_EQ(reader.configuration(1).block[3], kA);
}

TEST(SimulatedSets, KeepWhatBecameCurrentWithoutACommit) {
    SpokenReader reader({.tagPlusConfigurations = 1});
    reader.settings().luid = 7;
    reader.configuration(0).block[3] = kA;
    reader.query({0x89, 0x82, 1, 2});
    reader.configuration(0).block[3] = kB;
    reader.query({0x89, 0x82, 2, 1});
    reader.powerUp();
    EXPECT_EQ(reader.configuration(0).block[3], kA);
    EXPECT_EQ(reader.settings().luid, 7);
}

TEST(SimulatedSets, MoveTheFactorysOverTheUsersAndTheCurrent) {
    SpokenReader reader({.tagPlusConfigurations = 1});
    reader.configuration(0).block[3] = kA;
    reader.query({0x89, 0x82, 1, 2});
    reader.query({0x89, 0x82, 3, 2});
    EXPECT_EQ(reader.userDefaults().configuration[0].block[3], Block{});
    EXPECT_EQ(reader.configuration(0).block[3], kA);
    reader.query({0x89, 0x82, 3, 1});
    EXPECT_EQ(reader.configuration(0).block[3], Block{});
}

TEST(SimulatedSets, RefuseToChangeTheFactorysAndSetsThatDoNotExist) {
    SpokenReader reader({.tagPlusConfigurations = 1});
    reader.configuration(0).block[3] = kA;
    EXPECT_EQ(reader.query({0x89, 0x82, 1, 3}), Block{});
    EXPECT_EQ(reader.query({0x89, 0x82, 0, 1}), Block{});
    EXPECT_EQ(reader.query({0x89, 0x82, 4, 1}), Block{});
    EXPECT_EQ(reader.query({0x89, 0x82, 1, 0}), Block{});
    EXPECT_EQ(reader.query({0x89, 0x82, 1, 4}), Block{});
    reader.query({0x89, 0x82, 3, 1});
    EXPECT_EQ(reader.configuration(0).block[3], Block{});
}
