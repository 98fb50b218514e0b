// SPDX-License-Identifier: MIT
// The written forms of a card's identifier.
#include "cli/card/identifier.h"

#include <gtest/gtest.h>

namespace zel::cli {

namespace {

Identifier identifierOf(int bits, std::initializer_list<std::uint8_t> bytes) {
    Identifier identifier;
    identifier.bits = bits;
    std::copy(bytes.begin(), bytes.end(), identifier.bytes.begin());
    return identifier;
}

TEST(Identifier, HexStartsWithTheMostSignificantByte) {
    EXPECT_EQ(hexOf(identifierOf(26, {0x70, 0x1B, 0x34, 0x02})), "02341B70");
}

TEST(Identifier, HexHasTheBytesThatTheBitsFill) {
    EXPECT_EQ(hexOf(identifierOf(0, {0xFF})), "");
    EXPECT_EQ(hexOf(identifierOf(1, {0x01, 0xFF})), "01");
    EXPECT_EQ(hexOf(identifierOf(8, {0x00, 0xFF})), "00");
    EXPECT_EQ(hexOf(identifierOf(9, {0x02, 0x01, 0xFF})), "0102");
    EXPECT_EQ(hexOf(identifierOf(255, {})), std::string(64, '0'));
}

TEST(Identifier, WholeOneHasAllBytesWhateverItsBits) {
    Identifier whole = identifierOf(4, {0x0A, 0x01});
    whole.isWhole = true;
    EXPECT_EQ(hexOf(whole), std::string(60, '0') + "010A");
    EXPECT_EQ(decimalOf(whole), "266");
}

TEST(Identifier, BitCountBeyondTheBufferStaysInside) {
    EXPECT_EQ(identifierOf(300, {}).used().size(), 32U);
    EXPECT_EQ(identifierOf(-7, {}).used().size(), 0U);
}

TEST(Identifier, DecimalIsTheWholeNumber) {
    EXPECT_EQ(decimalOf(identifierOf(8, {0})), "0");
    EXPECT_EQ(decimalOf(identifierOf(8, {200})), "200");
    EXPECT_EQ(decimalOf(identifierOf(16, {0x00, 0x01})), "256");
    EXPECT_EQ(decimalOf(identifierOf(65, {0, 0, 0, 0, 0, 0, 0, 0, 1})), "18446744073709551616");
}

TEST(Identifier, DecimalOf255BitsHas77Digits) {
    Identifier largest;
    largest.bits = 255;
    largest.bytes.fill(0xFF);
    largest.bytes[31] = 0x7F;
    EXPECT_EQ(decimalOf(largest), "578960446186580977117854925043439539266"
                                  "34992332820282019728792003956564819967");
}

} // namespace

} // namespace zel::cli
