// SPDX-License-Identifier: MIT
// The block of hexadecimal rows, for headers of all widths and for counts that pass the data.
#include "cfgfile/field_data_file.h"

#include "tests/cfgfile/template_test.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

using namespace zel::test;
using zel::cfgfile::byteFrom;
using zel::cfgfile::writeFieldData;

namespace {

const std::string kHeader = "\n/ FldSepHdr[2] =\n";
const std::string kFields = "\n/ FldDefs[][4] =\n";
const std::string kSeparators = "\n/ SepDefs[][2] =\n";
const std::string kData = "\n/ SepData[] =\n";

// Each byte of the data is its own index but for the first ones; behind it stand the keys (A0 to
// AF, B0 to BF), five options of four bytes, the card type and its priority.
tsTagCfg configOf(const std::vector<std::uint8_t>& first) {
    tsTagCfg config = {};
    std::iota(std::begin(config.uSFD.bytes), std::end(config.uSFD.bytes), std::uint8_t{0});
    std::copy(first.begin(), first.end(), config.uSFD.bytes);
    std::iota(config.sHashKeyData.key[0], config.sHashKeyData.key[0] + 16, std::uint8_t{0xA0});
    std::iota(config.sHashKeyData.key[1], config.sHashKeyData.key[1] + 16, std::uint8_t{0xB0});
    config.AZERTYShiftLock = 0xC3C2C1C0;
    config.ExtendedPrecisionMath = 0xC7C6C5C4;
    config.b64BytesInPackets = 0xCBCAC9C8;
    config.bEasyReadMode = 0xCFCECDCC;
    config.bPrependCSN = 0xD3D2D1D0;
    config.iCardType = 0xD5D4;
    config.iCardPriority = 0xD7D6;
    return config;
}

std::string blockOf(const std::vector<std::uint8_t>& first) {
    const tsTagCfg config = configOf(first);
    return writtenBy([&](std::FILE* file) { writeFieldData(file, config); });
}

std::string dataOf(const std::vector<std::uint8_t>& first) {
    const std::string block = blockOf(first);
    return block.substr(block.find(kData) + kData.size());
}

std::ptrdiff_t rowsOf(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

struct Header {
    std::string row;
    std::string firstRow; // of the free data
    int rows;             // of it, the tail among them
    std::string tail;     // empty: the last row is whole
};

// By the header's low nibble. Both counts are 0.
const Header kHeaders[] = {
    {"00", "00.00.00.03.04.05.06.07", 16, ""},
    {"01", "00.00.03.04.05.06.07.08", 16, "79.7A.7B.7C.7D.7E.7F."},
    {"02.00", "00.03.04.05.06.07.08.09", 16, "7A.7B.7C.7D.7E.7F."},
    {"03.00.00", "03.04.05.06.07.08.09.0A", 16, "7B.7C.7D.7E.7F."},
    {"04.00.00.03", "04.05.06.07.08.09.0A.0B", 16, "7C.7D.7E.7F."},
    {"05.00.00.03.04", "05.06.07.08.09.0A.0B.0C", 16, "7D.7E.7F."},
    {"06.00.00.03.04.05", "06.07.08.09.0A.0B.0C.0D", 16, "7E.7F."},
    {"07.00.00.03.04.05.06", "07.08.09.0A.0B.0C.0D.0E", 16, "7F."},
    {"08.00.00.03.04.05.06.07", "08.09.0A.0B.0C.0D.0E.0F", 15, ""},
    {"09.00.00.03.04.05.06.07.08", "09.0A.0B.0C.0D.0E.0F.10", 15, "79.7A.7B.7C.7D.7E.7F."},
    {"0A.00.00.03.04.05.06.07.08.09", "0A.0B.0C.0D.0E.0F.10.11", 15, "7A.7B.7C.7D.7E.7F."},
    {"0B.00.00.03.04.05.06.07.08.09.0A", "0B.0C.0D.0E.0F.10.11.12", 15, "7B.7C.7D.7E.7F."},
    {"0C.00", "00.03.04.05.06.07.08.09", 16, "7A.7B.7C.7D.7E.7F."},
    {"0D.00.00.03.04.05.06.07.08.09.0A.0B.0C", "0D.0E.0F.10.11.12.13.14", 15, "7D.7E.7F."},
    {"0E.00.00.03.04.05.06.07.08.09.0A.0B.0C.0D", "0E.0F.10.11.12.13.14.15", 15, "7E.7F."},
    {"0F.00.00.03.04.05.06.07.08.09.0A.0B.0C.0D.0E", "0F.10.11.12.13.14.15.16", 15, "7F."},
};

} // namespace

TEST(FieldDataBlock, HasAHeaderOfEachWidth) {
    for (std::uint8_t width = 0; width < 16; ++width) {
        const Header& header = kHeaders[width];
        const std::string head = kHeader + header.row + '\n' + kFields + kSeparators + kData;
        const std::string block = blockOf({width, 0, 0});
        EXPECT_TRUE(block.starts_with(head + header.firstRow + '\n')) << block;
        const std::string last = header.tail.empty() ? "78.79.7A.7B.7C.7D.7E.7F" : header.tail;
        EXPECT_TRUE(block.ends_with('\n' + last + '\n')) << block;
        EXPECT_EQ(rowsOf(block.substr(head.size())), header.rows) << int{width};
    }
}

TEST(FieldDataBlock, OfTheOldFormHasRowsOfFourAndTwo) {
    EXPECT_TRUE(blockOf({0x0C, 0x23, 0x02, 0x03})
                    .starts_with(kHeader + "0C.23\n" + kFields + "02.03.04.05\n06.07.08.09\n" +
                                 kSeparators + "0A.0B\n0C.0D\n0E.0F\n" + kData +
                                 "10.11.12.13.14.15.16.17\n18."));
}

// Only the low nibble decides which form it is.
TEST(FieldDataBlock, OfAHigherNibbleAbove12IsOfTheOldForm) {
    EXPECT_TRUE(
        blockOf({0x5C, 0x10, 0x02, 0x03})
            .starts_with(kHeader + "5C.10\n" + kFields + "02.03.04.05\n" + kSeparators + kData));
}

TEST(FieldDataBlock, OfTheNewFormTellsItsOwnWidths) {
    EXPECT_TRUE(blockOf({0x24, 0x62, 0x83, 0x03})
                    .starts_with(kHeader + "24.62.83.03\n" + kFields + "04.05.06.07.08.09\n" +
                                 "0A.0B.0C.0D.0E.0F\n" + kSeparators +
                                 "10.11.12.13.14.15.16.17\n18.19.1A.1B.1C.1D.1E.1F\n" +
                                 "20.21.22.23.24.25.26.27\n" + kData + "28.29.2A."));
}

// Bit 4 of a header byte belongs to the count and, shifted, to no width: widths are even.
TEST(FieldDataBlock, OfTheNewFormCountsUpTo31RowsOfEvenWidth) {
    const std::string block = blockOf({0x03, 0x3F, 0});
    const std::string rows =
        block.substr(block.find(kFields) + kFields.size(), 31 * std::string("03.04\n").size());
    EXPECT_TRUE(rows.starts_with("03.04\n05.06\n")) << rows;
    EXPECT_TRUE(rows.ends_with("\n3F.40\n")) << rows;
    EXPECT_TRUE(block.find("3F.40\n" + kSeparators + kData + "41.42.") != block.npos) << block;
}

// Such a row shows the byte that the next group begins with.
TEST(FieldDataBlock, ShowsOneByteInARowOfWidth0AndCountsNone) {
    EXPECT_TRUE(blockOf({0x00, 0x02, 0x01})
                    .starts_with(kHeader + "00\n" + kFields + "00\n00\n" + kSeparators + "00\n" +
                                 kData + "00.02.01.03.04.05.06.07\n"));
    EXPECT_TRUE(blockOf({0x04, 0x02, 0x01, 0x03})
                    .starts_with(kHeader + "04.02.01.03\n" + kFields + "04\n04\n" + kSeparators +
                                 "04\n" + kData + "04.05.06."));
}

// 3 + 5 * 14 + u[2] counted bytes; the result of the division goes towards zero.
TEST(FieldDataBlock, HasNoFreeDataWhereTheCountsEndAt128To135) {
    EXPECT_EQ(dataOf({0x02, 0xE9, 0x00}), "") << "128 counted";
    EXPECT_EQ(dataOf({0x03, 0xE9, 0x00}), "") << "129";
    EXPECT_EQ(dataOf({0x09, 0xE9, 0x00}), "") << "135";
    EXPECT_EQ(dataOf({0x01, 0xE9, 0x00}), "7F.\n") << "127";
}

TEST(FieldDataBlock, HasSixteenRowsFromBehindTheDataWhereTheCountsPass135) {
    EXPECT_EQ(rowsOf(dataOf({0x0A, 0xE9, 0x00})), 16) << "136 counted";
    EXPECT_EQ(dataOf({0x04, 0xEA, 0x00, 0x03}), // 144 counted
              "B0.B1.B2.B3.B4.B5.B6.B7\n"
              "B8.B9.BA.BB.BC.BD.BE.BF\n"
              "C0.C1.C2.C3.C4.C5.C6.C7\n"
              "C8.C9.CA.CB.CC.CD.CE.CF\n"
              "D0.D1.D2.D3.D4.D5.D6.D7\n"
              "00.00.00.00.00.00.00.00\n00.00.00.00.00.00.00.00\n00.00.00.00.00.00.00.00\n"
              "00.00.00.00.00.00.00.00\n00.00.00.00.00.00.00.00\n00.00.00.00.00.00.00.00\n"
              "00.00.00.00.00.00.00.00\n00.00.00.00.00.00.00.00\n00.00.00.00.00.00.00.00\n"
              "00.00.00.00.00.00.00.00\n00.00.00.00.00.00.00.00\n");
}

// Rows of fields reach the keys too.
TEST(FieldDataBlock, ShowsTheKeysInARowThatPassesTheData) {
    EXPECT_NE(blockOf({0x04, 0xEA, 0x00, 0x03})
                  .find("\n74.75.76.77.78.79.7A.7B.7C.7D.7E.7F.A0.A1\n"
                        "A2.A3.A4.A5.A6.A7.A8.A9.AA.AB.AC.AD.AE.AF\n" +
                        kSeparators),
              std::string::npos);
}

TEST(FieldDataBlock, EndsInsideTheConfigurationForTheHighestCounts) {
    const std::string block = blockOf({0x0F, 0xFF, 0xFF});
    EXPECT_EQ(rowsOf(block), 8 + 1 + 31 + 31 + 16);
    EXPECT_TRUE(block.ends_with("00.00.00.00.00.00.00.00\n"));
}

TEST(FieldDataByte, IsThatOfTheConfigurationAndZeroPastIt) {
    const tsTagCfg config = configOf({});
    EXPECT_EQ(byteFrom(config, 0), 0);
    EXPECT_EQ(byteFrom(config, 127), 127);
    EXPECT_EQ(byteFrom(config, 128), 0xA0);
    EXPECT_EQ(byteFrom(config, 183), 0xD7);
    EXPECT_EQ(byteFrom(config, 184), 0);
    EXPECT_EQ(byteFrom(config, 1010), 0);
}

TEST(FieldDataFile, ShowsKeysWhereARowHoldsAByteOfThem) {
    // 0xEE occurs in no count below and nowhere in the data but in the key values.
    for (int header = 0; header < 16; ++header)
        for (int fields = 0; fields < 256; fields += 15)
            for (int separators = 0; separators < 256; separators += 5) {
                tsTagCfg config = {};
                config.uSFD.bytes[0] = static_cast<std::uint8_t>(header);
                config.uSFD.bytes[1] = static_cast<std::uint8_t>(fields);
                config.uSFD.bytes[2] = static_cast<std::uint8_t>(separators);
                if (fields == 0xEE || separators == 0xEE)
                    continue;
                std::memset(&config.sHashKeyData, 0xEE, sizeof config.sHashKeyData);
                const std::string rows =
                    writtenBy([&](std::FILE* file) { writeFieldData(file, config); });
                ASSERT_EQ(zel::cfgfile::showsKeys(config), rows.find("EE") != rows.npos)
                    << header << ' ' << fields << ' ' << separators;
            }
}
