// SPDX-License-Identifier: MIT
// The trailer of an INI file.
#include "tests/firmware/trailer_test.h"

#include <regex>

using namespace zel::test;

namespace {

constexpr int kKind = 2;

class IniTrailer : public TrailerTest {
protected:
    static std::string find(const std::string& text) {
        const std::string found = TrailerTest::find(kKind, text);
        EXPECT_EQ(CRC().pullIniCRC(kFile), found.starts_with("holds"));
        return found;
    }
};

std::string trailer(const std::string& digits) {
    return "[EOF]\r\niEndOfIniFile=" + digits + "\r\n";
}

// Chosen for its checksum, which is zero.
constexpr char kZeroText[] = "; vH2k4BIAfi\r\n";

} // namespace

// Bit by bit by hand: the checksum of "a\n" is DDEAA107.
TEST_F(IniTrailer, TellsTheLineOfItsValue) {
    EXPECT_EQ(find("a\n[EOF]\r\niEndOfIniFile=DDEAA107\r\n"), "holds at 3: DDEAA107/DDEAA107");
    EXPECT_EQ(find("b\n" + trailer("DDEAA107")), "checksum at 3: DDEAA107/" + crcDigits("b\n"));
}

TEST_F(IniTrailer, CoversTheLineEndsAsStored) {
    const std::string text = "[Blob1]\r\nhdr=\n\r\r\n";
    EXPECT_TRUE(find(text + trailer(crcDigits(text))).starts_with("holds at 5"));
}

TEST_F(IniTrailer, OfAnEmptyTextIsOneZero) {
    EXPECT_EQ(find(trailer("0")), "holds at 2: 0/0");
    EXPECT_EQ(find(trailer("00000000")), "checksum at 2: 00000000/0");
}

TEST_F(IniTrailer, OfAChecksumOfZeroIsOneZero) {
    ASSERT_EQ(crcDigits(kZeroText), "00000000");
    EXPECT_EQ(find(kZeroText + trailer("0")), "holds at 3: 0/0");
    EXPECT_EQ(find(kZeroText + trailer("00000000")), "checksum at 3: 00000000/0");
}

TEST_F(IniTrailer, KeepsTheLeadingZerosOfAnyOtherChecksum) {
    std::string text;
    for (int number = 0; crc32(text) >> 28 != 0 || text.empty(); ++number)
        text = std::to_string(number) + "\n";
    EXPECT_TRUE(find(text + trailer(crcDigits(text))).starts_with("holds"));
    EXPECT_TRUE(find(text + trailer(crcDigits(text).substr(1))).starts_with("trailer at 3"));
}

TEST_F(IniTrailer, DoesntHoldInLowerCaseDigits) {
    EXPECT_EQ(find("a\n" + trailer("ddeaa107")), "trailer at 3: ddeaa107/DDEAA107");
}

TEST_F(IniTrailer, NeedsCrLfInBothLines) {
    EXPECT_EQ(find("a\n[EOF]\niEndOfIniFile=DDEAA107\n"), "trailer at 2");
    EXPECT_EQ(find("a\n[EOF]\niEndOfIniFile=DDEAA107\r\n"), "trailer at 2");
    EXPECT_EQ(find("a\n[EOF]\r\niEndOfIniFile=DDEAA107\n"), "trailer at 3");
    EXPECT_EQ(find("a\n[EOF]\r\niEndOfIniFile=DDEAA107"), "trailer at 3");
    EXPECT_EQ(find("a\n[EOF]\r\niEndOfIniFile=DDEAA107\r"), "trailer at 3");
}

TEST_F(IniTrailer, NeedsItsMarkerAndItsNameExactly) {
    EXPECT_EQ(find("a\n[eof]\r\niEndOfIniFile=DDEAA107\r\n"), "no trailer");
    EXPECT_EQ(find("a\n [EOF]\r\niEndOfIniFile=DDEAA107\r\n"), "no trailer");
    for (const char* const name : {"iendofinifile", "iEndOfIniFile ", " iEndOfIniFile", ""})
        EXPECT_EQ(find("a\n[EOF]\r\n" + std::string(name) + "=DDEAA107\r\n"), "trailer at 3")
            << name;
    EXPECT_EQ(find("a\n[EOF]\r\niEndOfIniFile DDEAA107\r\n"), "trailer at 3");
}

TEST_F(IniTrailer, HasNoBlankBehindTheEqualsSign) {
    EXPECT_EQ(find("a\n" + trailer(" DDEAA107")), "trailer at 3:  DDEAA10/DDEAA107");
    EXPECT_EQ(find("a\n" + trailer("=DDEAA107")), "trailer at 3: =DDEAA10/DDEAA107");
    EXPECT_EQ(find("a\n" + trailer("")), "trailer at 3: /DDEAA107");
}

TEST_F(IniTrailer, ValueEndsAtItsFirstCarriageReturn) {
    EXPECT_EQ(find("a\n" + trailer("DDEAA107\rx")), "holds at 3: DDEAA107/DDEAA107");
}

TEST_F(IniTrailer, IsTheEndOfTheFile) {
    EXPECT_EQ(find("a\n" + trailer("DDEAA107") + "\r\n"), "behind at 4: DDEAA107/DDEAA107");
    EXPECT_EQ(find("a\n" + trailer("DDEAA107") + "x"), "behind at 4: DDEAA107/DDEAA107");
    EXPECT_EQ(find("a\n" + trailer("DDEAA107") + std::string(1, '\0')),
              "behind at 4: DDEAA107/DDEAA107");
    EXPECT_EQ(find("a\n" + trailer("DDEAA108") + "x"), "checksum at 3: DDEAA108/DDEAA107");
}

TEST_F(IniTrailer, IsTheFirstOne) {
    EXPECT_EQ(find("a\n[EOF]\r\nx\r\n" + trailer("DDEAA107")), "trailer at 3");
    EXPECT_EQ(find("a\n[EOF]\r\n" + trailer("DDEAA107")), "trailer at 3");
}

TEST_F(IniTrailer, IsMissingWithoutItsMarker) {
    EXPECT_EQ(find(""), "no trailer");
    EXPECT_EQ(find("a\niEndOfIniFile=DDEAA107\r\n"), "no trailer");
    EXPECT_EQ(find("a\n[EOF]"), "trailer at 2");
    EXPECT_EQ(find("a\n[EOF]\r\n"), "trailer at 2");
}

TEST_F(IniTrailer, MayStandBehind4095BytesOfALine) {
    const std::string piece(4095, 'x');
    EXPECT_TRUE(find(piece + trailer(crcDigits(piece))).starts_with("holds at 2"));
    EXPECT_EQ(find("x" + piece.substr(2) + trailer(crcDigits(piece))), "no trailer");
    EXPECT_EQ(find("a\n[EOF]\r\niEndOfIniFile=DDEAA107" + piece + "\r\n"), "trailer at 3");
}

TEST_F(IniTrailer, CoversALineUpToItsZeroByte) {
    using namespace std::string_literals;
    EXPECT_EQ(find("a\n\0x\n"s + trailer("DDEAA107")), "holds at 4: DDEAA107/DDEAA107");
    EXPECT_EQ(find("a\n"s + trailer("DDEAA107\0"s)), "trailer at 3");
}

TEST_F(IniTrailer, OfAFileThatCantBeReadDoesntHold) {
    CRC crc;
    for (const char* const name : {"missing.txt", ".", "", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(crc.pullIniCRC(name));
        EXPECT_EQ(asText(zel::firmware::checkIniTrailer(crc, name)), "open");
    }
}

TEST_F(IniTrailer, ComparesStoredDigitsWithAText) {
    EXPECT_TRUE(CRC().checkIniCRC("CBF43926", nullptr, "123456789"));
    EXPECT_FALSE(CRC().checkIniCRC("cbf43926", nullptr, "123456789"));
    EXPECT_FALSE(CRC().checkIniCRC("CBF43926", "", "123456789")) << "an empty line follows";
    EXPECT_TRUE(CRC().checkIniCRC("0", nullptr, kZeroText));
    EXPECT_FALSE(CRC().checkIniCRC("00000000", nullptr, kZeroText));
}

TEST_F(IniTrailer, IsReadFromWhereAStreamStands) {
    write("a\n" + trailer("DDEAA107"));
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(kFile, "rb"), close);
    char line[16];
    ASSERT_NE(std::fgets(line, sizeof line, file.get()), nullptr);
    ASSERT_NE(std::fgets(line, sizeof line, file.get()), nullptr);
    EXPECT_TRUE(CRC().generateAndCheckIniCRC(file.get(), "a\n"));
    EXPECT_FALSE(CRC().generateAndCheckIniCRC(file.get(), "a\n")) << "nothing is left";
}

TEST_F(IniTrailer, LineEndIsThatOfThePattern) {
    using namespace std::string_literals;
    const std::regex pattern("(\r\n$)");
    std::mt19937 random(6);
    for (int round = 0; round < 20000; ++round) {
        std::string line = randomText(random, "\r\nx=\0\xFF"s, 8);
        line.resize(std::min(line.size(), line.find('\0')));
        ASSERT_EQ(zel::firmware::endsInCrLf(line), std::regex_search(line.c_str(), pattern))
            << line;
    }
}
