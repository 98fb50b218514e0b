// SPDX-License-Identifier: MIT
// The checksum itself, and the text that it is computed of.
#include "tests/firmware/trailer_test.h"

#include <string_view>

using namespace zel::test;

namespace {

using Crc = TrailerTest;

unsigned long checksumOf(const std::string& text) {
    CRC crc;
    crc.Init();
    unsigned long checksum = 0;
    EXPECT_EQ(crc.FileCrc32Win32(text, checksum), 0);
    return checksum;
}

// A step for each byte, as one would without the whole text.
unsigned long byStep(const std::string& text) {
    CRC crc;
    crc.Init();
    unsigned long value = 0xFFFFFFFF;
    for (const char byte : text)
        crc.CalcCrc32(static_cast<unsigned char>(byte), value);
    return ~value;
}

} // namespace

TEST_F(Crc, IsThatOfIeee8023) {
    EXPECT_EQ(checksumOf("123456789") & 0xFFFFFFFF, 0xCBF43926U);
    EXPECT_EQ(checksumOf("a") & 0xFFFFFFFF, 0xE8B7BE43U);
    EXPECT_EQ(checksumOf("The quick brown fox jumps over the lazy dog") & 0xFFFFFFFF, 0x414FA339U);
    EXPECT_EQ(checksumOf(std::string(32, '\0')) & 0xFFFFFFFF, 0x190A55ADU);
    EXPECT_EQ(checksumOf(std::string(32, '\xFF')) & 0xFFFFFFFF, 0xFF6CAB0BU);
}

TEST_F(Crc, HasAHighHalfOfOnes) {
    EXPECT_EQ(checksumOf(""), 0xFFFFFFFF00000000U);
    EXPECT_EQ(checksumOf("123456789"), 0xFFFFFFFFCBF43926U);
}

TEST_F(Crc, IsThatOfEachByteInTurnForEachLength) {
    std::mt19937 random(1);
    std::string text;
    for (int length = 0; length < 300; ++length, text += static_cast<char>(random())) {
        ASSERT_EQ(checksumOf(text) & 0xFFFFFFFF, crc32(text)) << length;
        ASSERT_EQ(byStep(text), checksumOf(text)) << length;
    }
}

TEST_F(Crc, StepIsOneByteOfTheTable) {
    CRC crc;
    crc.Init();
    unsigned long value = 0xFFFFFFFF;
    crc.CalcCrc32('1', value);
    EXPECT_EQ(value, 0x7C231048U); // that of "1" alone is 83DCEFB7
}

TEST_F(Crc, WithoutATableIsStatus23AndTheStartComplemented) {
    CRC crc;
    unsigned long checksum = 5;
    EXPECT_EQ(crc.FileCrc32Win32("123456789", checksum), 23);
    EXPECT_EQ(checksum, 0xFFFFFFFF00000000U);
    unsigned long value = 5;
    crc.CalcCrc32('1', value);
    EXPECT_EQ(value, 5U);
}

TEST_F(Crc, TableCanBeBuiltAndReleasedAgainAndAgain) {
    CRC crc;
    unsigned long checksum = 0;
    crc.Init();
    crc.Init();
    EXPECT_EQ(crc.FileCrc32Win32("a", checksum), 0);
    crc.Free();
    crc.Free();
    EXPECT_EQ(crc.FileCrc32Win32("a", checksum), 23);
    crc.Init();
    EXPECT_EQ(crc.FileCrc32Win32("a", checksum), 0);
}

TEST_F(Crc, NoOperationLeavesATable) {
    write(":1\nD0435D1F");
    CRC crc;
    unsigned long checksum = 0;
    for (const int kind : {0, 1, 2}) {
        crc.checkCRC(kFile, kind);
        EXPECT_EQ(crc.FileCrc32Win32("a", checksum), 23) << kind;
    }
    crc.validateCRC("00000000", "");
    crc.checkIniCRC("0", nullptr, "");
    crc.generateAppendCRC(kFile);
    crc.calculateBootloaderCRC(kFile);
    EXPECT_EQ(crc.FileCrc32Win32("a", checksum), 23);
}

TEST_F(Crc, TextOfAFileIsTheFile) {
    std::mt19937 random(2);
    CRC crc;
    for (const std::size_t longest : {0U, 10U, 5000U, 200000U}) {
        const std::string text = randomText(random, "ab\r\n\xFF", longest);
        write(text);
        EXPECT_EQ(crc.getDataFromFile(kFile), text) << longest;
    }
}

TEST_F(Crc, TextOfAChunkEndsAtItsZeroByte) {
    using namespace std::string_literals;
    write("ab\0cd\nef\n"s + std::string(4090, 'x') + "y\0yyy"s + "rest\n\0\nend"s);
    CRC crc;
    // The chunk of 4095 bytes holds 4090 x, "y", the zero byte and "yyy".
    EXPECT_EQ(crc.getDataFromFile(kFile), "abef\n" + std::string(4090, 'x') + "yrest\nend");
}

TEST_F(Crc, TextOfAFileThatCantBeOpenedIsEmpty) {
    CRC crc;
    EXPECT_EQ(crc.getDataFromFile("missing.txt"), "");
    EXPECT_EQ(crc.getDataFromFile("."), "");
    EXPECT_EQ(crc.getDataFromFile(nullptr), "");
}

TEST_F(Crc, CheckGoesByKindAndTakesAnyOtherForAnIniFile) {
    const std::string sealed[] = {
        "a\n/--- iEndOfHwgFile \niEndOfHwgFile = " + crcDigits("a\n"),
        "a\n" + crcDigits("a\n"),
        "a\n[EOF]\r\niEndOfIniFile=" + crcDigits("a\n") + "\r\n",
    };
    CRC crc;
    for (const int kind : {0, 1, 2}) {
        write(sealed[kind]);
        EXPECT_EQ(crc.checkCRC(kFile, 0), kind == 0) << kind;
        EXPECT_EQ(crc.checkCRC(kFile, 1), kind == 1) << kind;
        for (const int other : {2, 3, -1, 1000})
            EXPECT_EQ(crc.checkCRC(kFile, other), kind == 2) << kind << " as " << other;
    }
}
