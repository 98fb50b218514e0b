// SPDX-License-Identifier: MIT
// The trailer of a firmware file, written and read.
#include "tests/firmware/trailer_test.h"

#include <regex>

using namespace zel::test;
using zel::firmware::isFirmwareText;

namespace {

constexpr int kKind = 1;

class FirmwareTrailer : public TrailerTest {
protected:
    static std::string find(const std::string& text) {
        const std::string found = TrailerTest::find(kKind, text);
        EXPECT_EQ(CRC().pullBootloaderCRC(kFile), found.starts_with("holds"));
        return found;
    }
    static std::string findSealed(const std::string& text) { return find(text + crcDigits(text)); }
};

// The four patterns by which a piece is told from the digits.
bool matchesAPattern(const char* piece) {
    static const std::regex patterns[] = {std::regex("\\n"), std::regex("(^#)(.*)"),
                                          std::regex("(^:)(.*)"), std::regex("(^M|m)(.*)")};
    for (const std::regex& pattern : patterns)
        if (std::regex_search(piece, pattern))
            return true;
    return false;
}

// The whole check by the patterns and fgets().
bool modelHolds(const char* name) {
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(name, "rb"), close);
    std::string text;
    char piece[128] = {};
    while (std::fgets(piece, sizeof piece, file.get())) {
        if (!matchesAPattern(piece))
            return crcDigits(text) == piece;
        text += piece;
    }
    return false;
}

// Of a text of lines alone.
bool endsInDigits(const std::string& text) {
    return std::regex_search(text, std::regex("(^|\n)[0-9A-Fa-f]{8}[\r\n]*$"));
}

} // namespace

TEST_F(FirmwareTrailer, IsEightDigitsAndNothingElse) {
    write("123456789");
    EXPECT_TRUE(CRC().calculateBootloaderCRC(kFile));
    EXPECT_EQ(read(), "123456789CBF43926");
}

TEST_F(FirmwareTrailer, IsAppendedWithTheChecksumGiven) {
    unsigned long checksum = 0xFFFFFFFF0000BEEF;
    EXPECT_TRUE(CRC().appendBootloaderCRC(kFile, checksum));
    EXPECT_EQ(read(), "0000BEEF");
    EXPECT_FALSE(CRC().appendBootloaderCRC(".", checksum));
    EXPECT_FALSE(CRC().appendBootloaderCRC(nullptr, checksum));
    EXPECT_FALSE(CRC().calculateBootloaderCRC("missing/file.txt"));
}

TEST_F(FirmwareTrailer, HoldsOnceWritten) {
    write("#comment\r\n:00\nMessage\n");
    CRC().calculateBootloaderCRC(kFile);
    EXPECT_TRUE(CRC().pullBootloaderCRC(kFile));
}

// Bit by bit by hand: the checksum of ":1\n" is F03557F8.
TEST_F(FirmwareTrailer, TellsItsLine) {
    EXPECT_EQ(find(":1\nF03557F8"), "holds at 2: F03557F8/F03557F8");
    EXPECT_EQ(find(":2\nF03557F8"), "checksum at 2: F03557F8/" + crcDigits(":2\n"));
    EXPECT_EQ(find("00000000"), "holds at 1: 00000000/00000000");
}

TEST_F(FirmwareTrailer, CoversTheLineEndsAsStored) {
    EXPECT_TRUE(findSealed(":1\r\n:2\n\r\n\n").starts_with("holds at 5"));
}

TEST_F(FirmwareTrailer, DoesntHoldInLowerCaseDigits) {
    EXPECT_EQ(find(":1\nf03557f8"), "trailer at 2: f03557f8/F03557F8");
}

TEST_F(FirmwareTrailer, DoesntHoldWithMoreOrFewerDigits) {
    EXPECT_EQ(find(":1\nF03557F80"), "trailer at 2: F03557F8/F03557F8");
    EXPECT_EQ(find(":1\nF03557F"), "trailer at 2: F03557F/F03557F8");
}

TEST_F(FirmwareTrailer, WithALineEndIsALineLikeOthers) {
    EXPECT_EQ(find(":1\nF03557F8\n"), "trailer at 2");
    EXPECT_EQ(find(":1\nF03557F8\r\n"), "trailer at 2");
    EXPECT_EQ(find("F03557F8\n"), "trailer at 1");
}

TEST_F(FirmwareTrailer, IsMissingInAFileOfLinesAlone) {
    EXPECT_EQ(find(""), "no trailer");
    EXPECT_EQ(find(":1\n:2\n"), "no trailer");
    EXPECT_EQ(find("F03557F8\n:2\n"), "no trailer");
    EXPECT_EQ(find(":1\n:2"), "no trailer");
    EXPECT_EQ(find(":1\nF03557F8m"), "no trailer");
}

TEST_F(FirmwareTrailer, IsWhatLooksLikeNoLineOfAFirmwareFile) {
    for (const char* const line : {"#", ":", "M", "m", "#x", ":x", "Mx", "xm", "xmx", "x\n", "\n"})
        EXPECT_TRUE(isFirmwareText(line)) << line;
    for (const char* const line : {"", "x", "x#", "x:", "xM", " #", "\r#", "\r:", "\rM"})
        EXPECT_FALSE(isFirmwareText(line)) << line;
}

TEST_F(FirmwareTrailer, IsTakenFromTheMiddleOfALongLine) {
    const std::string plain(126, 'x');
    EXPECT_TRUE(findSealed(plain + "\n").starts_with("holds")) << "127 bytes with the line feed";
    EXPECT_TRUE(findSealed(":" + plain + "\n").starts_with("holds")) << "the rest is a line feed";
    EXPECT_TRUE(find(plain + "x\n").starts_with("trailer at 1: xxxxxxxx/00000000"));
    EXPECT_TRUE(findSealed(":" + plain + plain + "\n").starts_with("holds")) << "254 bytes in all";
    EXPECT_TRUE(find(":" + plain + plain + "x\n").starts_with("trailer at 1: xxxxxxxx/"));
}

TEST_F(FirmwareTrailer, HoldsBehindALongLineWhoseEachPieceLooksLikeALine) {
    const std::string piece(126, 'x');
    for (const char* const first : {":", "#", "M", "m"})
        EXPECT_TRUE(findSealed(":" + piece + first + piece + "x\n").starts_with("holds")) << first;
    EXPECT_TRUE(findSealed(":" + piece + piece + "m" + "x\n").starts_with("holds"));
}

TEST_F(FirmwareTrailer, EndsTheReading) {
    using namespace std::string_literals;
    EXPECT_EQ(find(":1\nF03557F8\0 and more\n:3\n"s), "holds at 2: F03557F8/F03557F8");
}

TEST_F(FirmwareTrailer, CoversALineUpToItsZeroByte) {
    using namespace std::string_literals;
    EXPECT_EQ(find(":1\0x\n"s + crcDigits(":1")),
              "holds at 2: " + crcDigits(":1") + "/" + crcDigits(":1"));
    EXPECT_EQ(find("\0x\n"s), "trailer at 1: /00000000");
}

TEST_F(FirmwareTrailer, OfAFileThatCantBeReadDoesntHold) {
    CRC crc;
    for (const char* const name : {"missing.txt", ".", "", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(crc.pullBootloaderCRC(name));
        EXPECT_EQ(asText(zel::firmware::checkFirmwareTrailer(crc, name)), "open");
    }
}

TEST_F(FirmwareTrailer, ValidatesDigitsAgainstAText) {
    EXPECT_TRUE(CRC().validateCRC("CBF43926", "123456789"));
    EXPECT_FALSE(CRC().validateCRC("cbf43926", "123456789"));
    EXPECT_FALSE(CRC().validateCRC("CBF43926 ", "123456789"));
    EXPECT_FALSE(CRC().validateCRC("", ""));
}

TEST_F(FirmwareTrailer, NeedsAComputationThatWentWell) {
    unsigned long status = 0;
    unsigned long checksum = 0xFFFFFFFF000000AB;
    EXPECT_TRUE(checkBootloaderCRC(status, checksum, "000000AB"));
    EXPECT_FALSE(checkBootloaderCRC(status, checksum, "AB"));
    status = 23;
    EXPECT_FALSE(checkBootloaderCRC(status, checksum, "000000AB"));
}

TEST_F(FirmwareTrailer, LinesAreThoseOfThePatterns) {
    using namespace std::string_literals;
    std::mt19937 random(4);
    for (int round = 0; round < 20000; ++round) {
        std::string line = randomText(random, "#:Mmx\r\n\0\xFF"s, 12);
        line.resize(std::min(line.size(), line.find('\0')));
        ASSERT_EQ(isFirmwareText(line), matchesAPattern(line.c_str())) << line;
    }
}

TEST_F(FirmwareTrailer, HoldsForTheFilesForWhichThePatternsDo) {
    using namespace std::string_literals;
    std::mt19937 random(5);
    int held = 0;
    for (int round = 0; round < 400; ++round) {
        const std::string& characters = round % 2 != 0 ? ":mx\r\n\n"s : "#:Mmx\r\n\0"s;
        std::string text = randomText(random, characters, 300) + "\n";
        text += random() % 8 != 0 ? crcDigits(text) : "";
        write(text);
        const bool holds = CRC().pullBootloaderCRC(kFile);
        ASSERT_EQ(holds, modelHolds(kFile)) << text;
        held += holds;
    }
    EXPECT_GT(held, 100);
}

TEST_F(FirmwareTrailer, IsToldFromALastLineOfDigitsWhereverBlocksEnd) {
    std::mt19937 random(6);
    int digits = 0;
    for (int round = 0; round < 400; ++round) {
        std::string text;
        for (int line = 0; line < 4; ++line)
            text += randomText(random, ":\r\n", 3) + (random() % 2 != 0 ? "\n" : "") +
                    randomText(random, "0aF", 9) + randomText(random, "\r\n", 4);
        text += "\n";
        const bool isDigits = endsInDigits(text);
        const std::size_t before = round % 8 != 0 ? 0 : 65536 - random() % (text.size() + 140);
        ASSERT_EQ(find(std::string(before, '\n') + text).starts_with("trailer"), isDigits) << text;
        digits += isDigits;
    }
    EXPECT_GT(digits, 20);
}

TEST_F(FirmwareTrailer, DoesntEndALineOfManyPieces) {
    EXPECT_EQ(find(std::string(100000, 'm') + "12345678"), "no trailer");
    EXPECT_EQ(find(std::string(127, 'm') + "12345678\n"), "no trailer");
}
