// SPDX-License-Identifier: MIT
// The simulated reader's services.
#include "tests/sim/simulated_reader.h"

using namespace zel::sim;
using zel::test::SpokenReader;

namespace {
using Block = TagReader::Block;
} // namespace

TEST(SimulatedServices, TellThePartNumberCharacterByCharacterThenZeros) {
    SpokenReader reader({.partNumber = "ZT7"});
    EXPECT_EQ(reader.query({0x8C, 1, 0}), (Block{'Z'}));
    EXPECT_EQ(reader.query({0x8C, 1, 2}), (Block{'7'}));
    EXPECT_EQ(reader.query({0x8C, 1, 3}), Block{});
}

TEST(SimulatedServices, TellFirmwareVersionAndFileNameByTheirSelector) {
    SpokenReader reader({.firmwareVersion = "3.2", .fileName = "ZT7_0302"});
    EXPECT_EQ(reader.query({0x8C, 4, 4, 2}), (Block{'2'}));
    EXPECT_EQ(reader.query({0x8C, 4, 7, 7}), (Block{'2'}));
    EXPECT_EQ(reader.query({0x8C, 4, 7, 3}), (Block{'_'}));
    EXPECT_EQ(reader.query({0x8C, 4, 5, 0}), Block{});
}

TEST(SimulatedServices, TellTheSerialNumberInFourPages) {
    SpokenReader reader;
    for (std::uint8_t i = 0; i < 32; ++i)
        reader.options().serialNumber[i] = i;
    EXPECT_EQ(reader.query({0x8C, 5, 0}), (Block{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(reader.query({0x8C, 5, 3}), (Block{24, 25, 26, 27, 28, 29, 30, 31}));
    EXPECT_EQ(reader.query({0x8C, 5, 4}), Block{});
}

TEST(SimulatedServices, RememberTheLastBeepAndCountThem) {
    SpokenReader reader;
    reader.query({0x8C, 3, 5});
    reader.query({0x8C, 3, 0x82});
    EXPECT_EQ(reader.beeps(), 2);
    EXPECT_EQ(reader.lastBeep(), 0x82);
}

TEST(SimulatedServices, TellAVolumeOfZeroApartFromNone) {
    SpokenReader withVolume({.volume = std::uint8_t{0}});
    SpokenReader without;
    EXPECT_EQ(withVolume.query({0x8C, 6}), (Block{0x8C, 6, 0}));
    EXPECT_EQ(without.query({0x8C, 6}), Block{});
}

TEST(SimulatedServices, SetTheVolumeWhereThereIsOne) {
    SpokenReader withVolume({.volume = std::uint8_t{0}});
    SpokenReader without;
    EXPECT_EQ(withVolume.query({0x8C, 0x86, 3}), (Block{0x8C, 0x86, 3}));
    EXPECT_EQ(withVolume.query({0x8C, 6}), (Block{0x8C, 6, 3}));
    EXPECT_EQ(without.query({0x8C, 0x86, 3}), Block{});
    EXPECT_EQ(without.query({0x8C, 6}), Block{});
}

TEST(SimulatedServices, ShowTheRadioByBit7AndItsConfigurationBelow) {
    SpokenReader withRadio({.radio = std::uint8_t{2}});
    SpokenReader without;
    EXPECT_EQ(withRadio.query({0x8C, 7}), (Block{0x8C, 7, 0x82}));
    EXPECT_EQ(without.query({0x8C, 7}), Block{});
}

TEST(SimulatedServices, SetTheRadioWhereThereIsOne) {
    SpokenReader withRadio({.radio = std::uint8_t{2}});
    SpokenReader without;
    EXPECT_EQ(withRadio.query({0x8C, 0x87, 1}), (Block{0x8C, 0x87, 1}));
    EXPECT_EQ(withRadio.query({0x8C, 7}), (Block{0x8C, 7, 0x81}));
    EXPECT_EQ(without.query({0x8C, 0x87, 1}), Block{});
    EXPECT_EQ(without.query({0x8C, 7}), Block{});
}

TEST(SimulatedServices, HaveNoQueuedIdentifier) {
    SpokenReader reader;
    EXPECT_EQ(reader.query({0x8C, 2, 0, 0xFF}), Block{});
}

TEST(SimulatedReplies, AreFixedByTheBytesThatACommandBeginsWithAndTheLastOneCounts) {
    SpokenReader reader({.tagPlusConfigurations = 3});
    reader.replyWith({0x89}, {1});
    reader.replyWith({0x89, 1}, {0x89, 0, 5, 3});
    EXPECT_EQ(reader.query({0x89, 1}), (Block{0x89, 0, 5, 3}));
    EXPECT_EQ(reader.query({0x89, 0x81, 2}), (Block{1}));
    EXPECT_EQ(reader.activeConfiguration(), 2U) << "the command is carried out all the same";
    EXPECT_EQ(reader.query({0x84}), Block{});
}
