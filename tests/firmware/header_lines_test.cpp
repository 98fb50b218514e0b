// SPDX-License-Identifier: MIT
#include "firmware/header_lines.h"

#include <cstddef>
#include <gtest/gtest.h>

using namespace zel::firmware;

namespace {

const HeaderLines kTwoBlocks = {"OVR 1",     "PN AB1",  "FWBL 1", "FN SAME", "CPU1AP1 2",
                                "CPU1BL1 3", "PN AB2",  "FWBL 4", "FN SAME", "CPU1AP1 5",
                                "CPU1BL1 6", "#NEW FW", "PN AB9", "FN OTHER"};

} // namespace

TEST(HeaderValue, IsTheLineFromItsFirstBlankOn) {
    EXPECT_EQ(valueOf("PS 256"), " 256");
    EXPECT_EQ(valueOf("PS  256 K "), "  256 K ");
    EXPECT_EQ(valueOf(" 256"), " 256");
    EXPECT_EQ(valueOf("PS "), " ");
}

TEST(HeaderValue, IsEmptyWithoutABlank) {
    EXPECT_EQ(valueOf(""), "");
    EXPECT_EQ(valueOf("PS\t256"), "");
}

TEST(HeaderValue, KeepsBytesThatAreNoText) {
    const std::string odd("\xFF\0 \0\x80", 5);
    EXPECT_EQ(valueOf(odd), std::string(" \0\x80", 3));
}

TEST(HeaderValue, OfALineThatIsNotThereIsEmpty) {
    const HeaderLines lines = {"A 1", "B 2"};
    EXPECT_EQ(valueAt(lines, 0), " 1");
    EXPECT_EQ(valueAt(lines, 1), " 2");
    for (const std::ptrdiff_t index :
         {std::ptrdiff_t{-1}, std::ptrdiff_t{2}, PTRDIFF_MIN, PTRDIFF_MAX})
        EXPECT_EQ(valueAt(lines, index), "") << index;
    EXPECT_EQ(valueAt({}, 0), "");
}

TEST(ReaderBlock, ToldByPartNumberAndFirmwareTwoLinesOn) {
    const ReaderBlock block(kTwoBlocks, "AB1", "SAME");
    EXPECT_EQ(block.value(-1), " 1");
    EXPECT_EQ(block.value(0), " SAME");
    EXPECT_EQ(block.value(1), " 2");
    EXPECT_EQ(block.value(2), " 3");
}

TEST(ReaderBlock, MayHaveTheFirmwareOfAnEarlierOne) {
    const ReaderBlock block(kTwoBlocks, "AB2", "SAME");
    EXPECT_EQ(block.value(-1), " 4");
    EXPECT_EQ(block.value(2), " 6");
}

TEST(ReaderBlock, IsNotFoundWithoutItsPartNumberOrFirmware) {
    EXPECT_EQ(ReaderBlock(kTwoBlocks, "AB3", "SAME").value(1), "Not Found");
    EXPECT_EQ(ReaderBlock(kTwoBlocks, "AB1", "NONE").value(1), "Not Found");
    EXPECT_EQ(ReaderBlock({}, "AB1", "SAME").value(1), "Not Found");
}

TEST(ReaderBlock, IsNotFoundWithTheFirmwareAtAnotherDistance) {
    EXPECT_EQ(ReaderBlock(kTwoBlocks, "AB9", "OTHER").value(1), "Not Found");
    EXPECT_EQ(ReaderBlock({"PN A", "X", "X", "FN F"}, "A", "F").value(-1), "Not Found");
}

TEST(ReaderBlock, IsNotFoundWithTheFirmwareInFrontOnly) {
    EXPECT_EQ(ReaderBlock({"FN F", "X", "PN A", "FWBL 1"}, "A", "F").value(1), "Not Found");
}

TEST(ReaderBlock, IsNotFoundWhenTheFirmwareIsNamedLikeThePart) {
    EXPECT_EQ(ReaderBlock({"PN A", "FWBL 1", "FN A"}, "A", "A").value(-1), "Not Found");
}

TEST(ReaderBlock, ThatEndsWithTheFileHasEmptyValuesBehindIt) {
    const HeaderLines lines = {"PN A", "FWBL 1", "FN F"};
    const ReaderBlock block(lines, "A", "F");
    EXPECT_EQ(block.value(-1), " 1");
    EXPECT_EQ(block.value(1), "");
    EXPECT_EQ(block.value(2), "");
}
