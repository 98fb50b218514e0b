// SPDX-License-Identifier: MIT
// The simulated TagPlus reader: configurations, card types, versions, references.
#include "tests/sim/simulated_reader.h"

using namespace zel::sim;
using zel::test::SpokenReader;

namespace {

using Block = TagReader::Block;

class SimulatedTagPlus : public ::testing::Test {
protected:
    SpokenReader reader_{TagReader::Options{.tagPlusConfigurations = 3}};
};

} // namespace

TEST(SimulatedPlainReader, AnswersEveryTagPlusCommandWithZeros) {
    SpokenReader reader({.cardTypes = {0x1204}});
    for (const int command : {0x01, 0x03, 0x04, 0x10, 0x81, 0x82, 0x90})
        EXPECT_EQ(reader.query({0x89, static_cast<std::uint8_t>(command), 0, 0, 1}), Block{})
            << command;
    reader.query({0x89, 0x81, 1});
    EXPECT_EQ(reader.activeConfiguration(), 0U);
    EXPECT_TRUE(reader.references().empty());
}

TEST_F(SimulatedTagPlus, TellsItsActiveConfigurationAndTheirNumber) {
    EXPECT_EQ(reader_.query({0x89, 1}), (Block{0x89, 0, 0, 3}));
    reader_.query({0x89, 0x81, 2});
    EXPECT_EQ(reader_.query({0x89, 1}), (Block{0x89, 0, 2, 3}));
}

TEST_F(SimulatedTagPlus, SelectsAConfiguration) {
    EXPECT_EQ(reader_.query({0x89, 0x81, 2}), (Block{0x89, 0x81}));
    EXPECT_EQ(reader_.activeConfiguration(), 2U);
}

TEST_F(SimulatedTagPlus, AnswersZerosToASelectBeyondItsConfigurationsAndStaysWhereItIs) {
    reader_.query({0x89, 0x81, 1});
    EXPECT_EQ(reader_.query({0x89, 0x81, 3}), Block{});
    EXPECT_EQ(reader_.query({0x89, 0x81, 0xFF}), Block{});
    EXPECT_EQ(reader_.activeConfiguration(), 1U);
}

TEST_F(SimulatedTagPlus, ThatClaimsMoreConfigurationsThanItHasRefusesToSelectThem) {
    SpokenReader reader({.tagPlusConfigurations = 200});
    EXPECT_EQ(reader.query({0x89, 1}), (Block{0x89, 0, 0, 200}));
    EXPECT_EQ(reader.query({0x89, 0x81, 10}), (Block{0x89, 0x81}));
    EXPECT_EQ(reader.query({0x89, 0x81, 11}), Block{});
}

TEST_F(SimulatedTagPlus, HoldsBlocksFieldsKeysAndCardTypeInEachConfiguration) {
    reader_.query({0x89, 0x81, 1});
    reader_.write({0x83}, {1});
    reader_.write({0x85, 2, 0, 0x10}, {2});
    reader_.write({0x85, 0, 0x11, 0}, {3});
    reader_.write({0x84}, {0, 0x04, 0x12, 0x03});
    const TagConfiguration& second = reader_.configuration(1);
    EXPECT_EQ(second.block[3], (Block{1}));
    EXPECT_EQ(second.page[2], (Block{2}));
    EXPECT_EQ(second.key[1][0], (Block{3}));
    EXPECT_EQ(second.cardType, 0x1204);
    EXPECT_TRUE(second.cardPriority);
    reader_.query({0x89, 0x81, 0});
    EXPECT_EQ(reader_.query({0x83}), Block{});
    EXPECT_EQ(reader_.query({0x84}), Block{});
}

TEST_F(SimulatedTagPlus, TakesThePriorityFromBit0Alone) {
    reader_.write({0x84}, {0, 0x04, 0x12, 0xFE});
    EXPECT_EQ(reader_.query({0x84}), (Block{0, 0x04, 0x12, 0}));
}

TEST_F(SimulatedTagPlus, SharesOneLuidAmongItsConfigurations) {
    reader_.write({0x8A}, {0, 0x34, 0x12});
    reader_.query({0x89, 0x81, 2});
    EXPECT_EQ(reader_.query({0x8A}), (Block{0x34, 0x12, 0x42, 0x01}));
}

TEST_F(SimulatedTagPlus, StandsOnItsFirstConfigurationAfterALossOfPower) {
    reader_.query({0x89, 0x81, 2});
    reader_.powerUp();
    EXPECT_EQ(reader_.query({0x89, 1}), (Block{0x89, 0, 0, 3}));
}

TEST_F(SimulatedTagPlus, ListsItsCardTypesFourAPageLowByteFirst) {
    reader_.options().cardTypes = {0x1204, 0x0003, 0xEF08, 0x0102, 0xAB05};
    EXPECT_EQ(reader_.query({0x89, 4, 0}), (Block{0x04, 0x12, 0x03, 0x00, 0x08, 0xEF, 0x02, 0x01}));
    EXPECT_EQ(reader_.query({0x89, 4, 1}), (Block{0x05, 0xAB}));
    EXPECT_EQ(reader_.query({0x89, 4, 2}), Block{});
}

TEST_F(SimulatedTagPlus, TellsAVersionMostSignificantByteFirstBehindAnEcho) {
    reader_.options().versions[2][4] = 0x01020304;
    EXPECT_EQ(reader_.query({0x89, 3, 2, 4}), (Block{0x89, 3, 2, 4, 1, 2, 3, 4}));
    EXPECT_EQ(reader_.query({0x89, 3, 0, 0}), (Block{0x89, 3, 0, 0}));
    EXPECT_EQ(reader_.query({0x89, 3, 3, 0}), (Block{0x89, 3, 3, 0}));
    EXPECT_EQ(reader_.query({0x89, 3, 0, 6}), (Block{0x89, 3, 0, 6}));
}

TEST_F(SimulatedTagPlus, RecordsAKeyReferenceInPagesOfFourBytes) {
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 0, 1, 9, 5}), (Block{0x89, 0x90}));
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 1, 10, 11, 12, 13}), (Block{0x89, 0x90, 0, 1}));
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 2, 14}), (Block{0x89, 0x90, 0, 2}));
    EXPECT_EQ(reader_.references(),
              (std::vector<TagReference>{{1, 9, 5, {10, 11, 12, 13, 14, 0, 0, 0}, false}}));
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 0xFF}), (Block{0x89, 0x90, 0, 0xFF}));
    EXPECT_TRUE(reader_.references()[0].isClosed);
}

TEST_F(SimulatedTagPlus, RecordsAFileReferenceBehindAKeyReference) {
    reader_.query({0x89, 0x90, 0, 0, 1, 9, 0});
    reader_.query({0x89, 0x90, 0, 0, 2, 1, 4});
    reader_.query({0x89, 0x90, 0, 1, 1, 2, 3, 4});
    EXPECT_EQ(reader_.references(),
              (std::vector<TagReference>{{1, 9, 0, {}, false}, {2, 1, 4, {1, 2, 3, 4}, false}}));
}

TEST_F(SimulatedTagPlus, TakesNoReferenceOfAnotherKindAndNoPagesOfNone) {
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 1, 1, 2, 3, 4}), Block{});
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 0xFF}), Block{});
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 0, 3, 1, 4}), (Block{0x89, 0x90}));
    EXPECT_TRUE(reader_.references().empty());
}

TEST_F(SimulatedTagPlus, TakesNoPageOfAReferenceThatIsClosedOrWasCutOffByALossOfPower) {
    reader_.query({0x89, 0x90, 0, 0, 1, 9, 4});
    reader_.query({0x89, 0x90, 0, 0xFF});
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 1, 1, 2, 3, 4}), Block{});
    reader_.query({0x89, 0x90, 0, 0, 1, 9, 4});
    reader_.powerUp();
    EXPECT_EQ(reader_.query({0x89, 0x90, 0, 1, 1, 2, 3, 4}), Block{});
}

TEST_F(SimulatedTagPlus, AnswersZerosToAnUnknownCommand) {
    EXPECT_EQ(reader_.query({0x89, 0x7E, 1, 2}), Block{});
}
