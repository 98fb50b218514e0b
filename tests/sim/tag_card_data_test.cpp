// SPDX-License-Identifier: MIT
// What the simulated reader delivers beside the identifier in its field.
#include "sim/demo/bench.h"
#include "tests/sim/simulated_reader.h"

using namespace zel::sim;
using zel::test::SpokenReader;

namespace {

using Block = TagReader::Block;

Card numberedCard() {
    Card card = card26(26, 3512);
    for (unsigned i = 0; i < card.data.size(); ++i)
        card.data[i] = static_cast<std::uint8_t>(i + 1);
    return card;
}

QueuedId numberedEntry() {
    QueuedId entry = {.age = 0x0201, .byte2 = 3, .word3 = 0x0504, .byte7 = 8};
    for (unsigned i = 0; i < entry.id.size(); ++i)
        entry.id[i] = static_cast<std::uint8_t>(i + 1);
    return entry;
}

} // namespace

TEST(SimulatedCardData, ComesInFiveBlocks) {
    SpokenReader reader;
    reader.present(numberedCard());
    EXPECT_EQ(reader.query({0x88, 1, 0}), (Block{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(reader.query({0x88, 1, 4}), (Block{33, 34, 35, 36, 37, 38, 39, 40}));
    EXPECT_EQ(reader.query({0x88, 1, 5}), Block{}) << "there is no sixth block";
}

TEST(SimulatedCardData, IsAskedForByKind1) {
    SpokenReader reader;
    reader.present(numberedCard());
    EXPECT_EQ(reader.query({0x88, 0, 0}), Block{});
    EXPECT_EQ(reader.query({0x88, 2, 0}), Block{});
}

TEST(SimulatedCardData, IsThatOfTheCardAtTheFirstBlock) {
    SpokenReader reader;
    reader.present(numberedCard());
    reader.query({0x88, 1, 0});
    reader.removeCard();
    EXPECT_EQ(reader.query({0x88, 1, 1})[0], 9);
    EXPECT_EQ(reader.query({0x88, 1, 0}), Block{});
    EXPECT_EQ(reader.query({0x88, 1, 1}), Block{});
}

TEST(SimulatedQueue, TellsItsEntryInFivePages) {
    SpokenReader reader;
    reader.queue(numberedEntry());
    EXPECT_EQ(reader.query({0x8C, 2, 0}), (Block{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(reader.query({0x8C, 2, 3}), (Block{25, 26, 27, 28, 29, 30, 31, 32}));
    EXPECT_EQ(reader.query({0x8C, 2, 4}), (Block{1, 2, 3, 4, 5, 0, 0, 8}));
    EXPECT_EQ(reader.query({0x8C, 2, 5}), Block{}) << "there is no sixth page";
}

TEST(SimulatedQueue, KeepsItsEntryWhateverTheMask) {
    SpokenReader reader;
    reader.queue(numberedEntry());
    for (std::uint8_t mask = 0; mask < 4; ++mask)
        EXPECT_EQ(reader.query({0x8C, 2, 4, mask})[0], 1) << int{mask};
}

TEST(SimulatedQueue, IsEmptyUntilSomethingIsQueued) {
    SpokenReader reader;
    for (std::uint8_t page = 0; page < 6; ++page)
        EXPECT_EQ(reader.query({0x8C, 2, page}), Block{}) << int{page};
}

TEST(DemonstrationCards, HoldDataOfTheirOwn) {
    const Card first = demoCardAt(0);
    const Card second = demoCardAt(3000);
    EXPECT_EQ(first.data[0], 'C');
    EXPECT_NE(first.data, second.data);
    EXPECT_EQ(demoCardAt(2500).data, Card{}.data) << "an empty field";
}
