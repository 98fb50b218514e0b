// SPDX-License-Identifier: MIT
// The simulated reader by itself, against its wire format.
#include "sim/demo/bench.h"
#include "tests/sim/simulated_reader.h"

using namespace zel::sim;

namespace {

using Block = TagReader::Block;

class SimulatedReader : public ::testing::Test {
protected:
    Block query(const Block& command) { return reader_.query(command); }
    void write(const Block& command, const Block& data) { reader_.write(command, data); }

    zel::test::SpokenReader reader_;
};

} // namespace

TEST(SimulatedCard, OfTwentySixBitsHasParityAroundItsNumbers) {
    // facility 26 = 00011010, number 3512 = 0000110110111000: even parity over the upper twelve
    // bits (0001 1010 0000: three ones, so 1), odd over the lower (1101 1011 1000: seven ones, so
    // 0)
    const Card card = card26(26, 3512);
    EXPECT_EQ(card.bits, 26);
    EXPECT_EQ(card.id[0], 0x70);
    EXPECT_EQ(card.id[1], 0x1B);
    EXPECT_EQ(card.id[2], 0x34);
    EXPECT_EQ(card.id[3], 0x02);
}

TEST_F(SimulatedReader, DeliversItsCard) {
    reader_.present(card26(26, 3512));
    EXPECT_EQ(query({0x8F}), (Block{0x70, 0x1B, 0x34, 0x02}));
    EXPECT_EQ(query({0x8E}), (Block{26}));
}

TEST_F(SimulatedReader, WithoutACardDeliversZeros) {
    EXPECT_EQ(query({0x8F}), Block{});
    EXPECT_EQ(query({0x8E}), Block{});
}

TEST_F(SimulatedReader, DeliversALongIdentifierInFourPages) {
    Card card;
    card.bits = 200;
    for (unsigned i = 0; i < card.id.size(); ++i)
        card.id[i] = static_cast<std::uint8_t>(i);
    reader_.present(card);
    EXPECT_EQ(query({0x8D, 0})[7], 7);
    EXPECT_EQ(query({0x8D, 3})[7], 31);
    EXPECT_EQ(query({0x8D, 4}), Block{}) << "there is no fifth page";
    EXPECT_EQ(query({0x8E})[0], 200);
}

TEST_F(SimulatedReader, LatchesTheCardForTheWholeRead) {
    reader_.present(card26(26, 3512));
    query({0x8F});
    reader_.removeCard();
    EXPECT_EQ(query({0x8E})[0], 26);
    query({0x8F});
    EXPECT_EQ(query({0x8E})[0], 0);
}

TEST_F(SimulatedReader, TellsItsLuidLowByteFirst) {
    reader_.settings().luid = 0x1234;
    EXPECT_EQ(query({0x8A}), (Block{0x34, 0x12, 0x42, 0x01}));
}

TEST_F(SimulatedReader, TakesItsLuidOneByteFurtherAlong) {
    write({0x8A}, {0, 0x78, 0x56});
    EXPECT_EQ(reader_.settings().luid, 0x5678);
}

TEST_F(SimulatedReader, TakesBlocksAndPages) {
    write({0x82}, {0x03, 1, 2, 3, 4, 5, 6, 7});
    write({0x85, 5, 0, 0x10}, {8, 7, 6, 5, 4, 3, 2, 1});
    EXPECT_EQ(query({0x82}), (Block{0x03, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(query({0x85, 5, 0, 0x10}), (Block{8, 7, 6, 5, 4, 3, 2, 1}));
    EXPECT_TRUE(reader_.isRedOn());
    EXPECT_TRUE(reader_.isGreenOn());
}

TEST_F(SimulatedReader, TakesACardType) {
    write({0x84}, {0, 0x04, 0x12, 1});
    EXPECT_EQ(query({0x84}), (Block{0, 0x04, 0x12, 1}));
}

TEST_F(SimulatedReader, AFetchEndsABlockQuery) {
    query({0x80});
    query({0x81});
    EXPECT_EQ(reader_.settings().configuration[0].block[0],
              TagReader::factorySettings().configuration[0].block[0]);
}

TEST_F(SimulatedReader, KeepsOnlyWhatWasCommittedOverALossOfPower) {
    write({0x8A}, {0, 1, 0});
    reader_.take(0, Block{0x90, 0x80});
    write({0x8A}, {0, 2, 0});
    reader_.powerUp();
    EXPECT_EQ(reader_.settings().luid, 1);
}

TEST_F(SimulatedReader, ReturnsToFactoryDefaults) {
    write({0x80}, {9, 9, 9, 9, 9, 9, 9, 9});
    reader_.take(0, Block{0xA0});
    EXPECT_EQ(query({0x80}), TagReader::factorySettings().configuration[0].block[0]);
}

TEST_F(SimulatedReader, CountsItsBeeps) {
    query({0x8C, 3, 1});
    EXPECT_EQ(reader_.beeps(), 1);
}

TEST_F(SimulatedReader, RefusesAnotherReportIdAndAnotherLength) {
    const std::uint8_t tooShort[7] = {};
    EXPECT_FALSE(reader_.take(1, Block{0x8F}));
    EXPECT_FALSE(reader_.take(0, tooShort));
    Block reply = {};
    EXPECT_FALSE(reader_.answer(1, reply));
}

TEST(Demonstration, ShowsThreeCardsInTurnWithAGapBehindEach) {
    EXPECT_EQ(demoCardAt(0).bits, 26);
    EXPECT_EQ(demoCardAt(1999).id, demoCardAt(0).id);
    EXPECT_EQ(demoCardAt(2000).bits, 0);
    EXPECT_NE(demoCardAt(3000).id, demoCardAt(0).id);
    EXPECT_EQ(demoCardAt(6000).bits, 37);
    EXPECT_EQ(demoCardAt(9000).id, demoCardAt(0).id);
}

TEST_F(SimulatedReader, TakesLostDataWhenItIsSentAgain) {
    reader_.take(0, Block{0x83});
    reader_.sendLost(Block{1, 2, 3});
    EXPECT_TRUE(reader_.take(0, Block{1, 2, 3}));
    EXPECT_EQ(query({0x83}), (Block{1, 2, 3}));
}

TEST_F(SimulatedReader, TakesTheNextCommandAsOneWhenTheHostGaveUpOnLostData) {
    reader_.take(0, Block{0x83});
    reader_.sendLost(Block{1, 2, 3});
    write({0x82}, {4, 5, 6});
    EXPECT_EQ(query({0x83}), Block{});
    EXPECT_EQ(query({0x82}), (Block{4, 5, 6}));
}

TEST_F(SimulatedReader, TakesTheNextCommandAsOneWhenTheReplyBeforeWasLost) {
    reader_.take(0, Block{0x83});
    reader_.replyLost();
    EXPECT_EQ(query({0x8A}), (Block{0, 0, 0x42, 0x01}));
    EXPECT_EQ(query({0x83}), Block{});
}

TEST_F(SimulatedReader, LosesACommandWithoutHarm) {
    reader_.sendLost(Block{0x83});
    EXPECT_EQ(query({0x8A}), (Block{0, 0, 0x42, 0x01}));
}
