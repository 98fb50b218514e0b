// SPDX-License-Identifier: MIT
// The trailer of a template file, written and read.
#include "tests/firmware/trailer_test.h"

using namespace zel::test;

namespace {

constexpr int kKind = 0;
constexpr char kMarker[] = "/--- iEndOfHwgFile \n";
constexpr char kMarkerCrLf[] = "/--- iEndOfHwgFile \r\n";

class TemplateTrailer : public TrailerTest {
protected:
    static std::string find(const std::string& text) {
        const std::string found = TrailerTest::find(kKind, text);
        EXPECT_EQ(CRC().pullSecureCRC(kFile), found.starts_with("holds"));
        return found;
    }
};

std::string value(const std::string& digits) { return "iEndOfHwgFile = " + digits; }

std::string sealed(const std::string& text, const std::string& marker = kMarker) {
    return text + marker + value(crcDigits(text));
}

} // namespace

TEST_F(TemplateTrailer, IsTwoLinesWithoutALineEndBehindTheDigits) {
    write("123456789");
    EXPECT_EQ(CRC().generateAppendCRC(kFile), 0);
    EXPECT_EQ(read(), "123456789/--- iEndOfHwgFile \niEndOfHwgFile = CBF43926");
}

TEST_F(TemplateTrailer, OfAnEmptyFileIsThatOfAnEmptyText) {
    write("");
    EXPECT_EQ(CRC().generateAppendCRC(kFile), 0);
    EXPECT_EQ(read(), "/--- iEndOfHwgFile \niEndOfHwgFile = 00000000");
    EXPECT_TRUE(CRC().pullSecureCRC(kFile));
}

TEST_F(TemplateTrailer, IsAppendedWithTheChecksumGiven) {
    unsigned long checksum = 0xFFFFFFFF0000BEEF;
    const CRC crc;
    EXPECT_TRUE(crc.appendCrc(kFile, checksum));
    EXPECT_EQ(read(), "/--- iEndOfHwgFile \niEndOfHwgFile = 0000BEEF");
    EXPECT_FALSE(crc.appendCrc(".", checksum));
    EXPECT_FALSE(crc.appendCrc(nullptr, checksum));
}

TEST_F(TemplateTrailer, OfAFileThatCantBeOpenedHasTheStatusOfAnEmptyText) {
    EXPECT_EQ(CRC().generateAppendCRC("missing/file.txt"), 0);
    EXPECT_EQ(CRC().generateAppendCRC(nullptr), 0);
}

TEST_F(TemplateTrailer, OfAMissingFileMakesTheFile) {
    EXPECT_EQ(CRC().generateAppendCRC(kFile), 0);
    EXPECT_EQ(read(), "/--- iEndOfHwgFile \niEndOfHwgFile = 00000000");
}

TEST_F(TemplateTrailer, HoldsOnceWritten) {
    write("/zelTag\na = 1\n\nlast\n");
    CRC().generateAppendCRC(kFile);
    EXPECT_TRUE(CRC().pullSecureCRC(kFile));
}

// Bit by bit by hand: the checksum of "a\n" is DDEAA107.
TEST_F(TemplateTrailer, TellsTheLineOfItsValue) {
    EXPECT_EQ(find("a\n/--- iEndOfHwgFile \niEndOfHwgFile = DDEAA107"),
              "holds at 3: DDEAA107/DDEAA107");
    EXPECT_EQ(find("b\n/--- iEndOfHwgFile \niEndOfHwgFile = DDEAA107"),
              "checksum at 3: DDEAA107/" + crcDigits("b\n"));
}

TEST_F(TemplateTrailer, MayEndInOneLineFeed) {
    EXPECT_EQ(find(sealed("a\n") + "\n"), "holds at 3: DDEAA107/DDEAA107");
    EXPECT_EQ(find(sealed("a\n") + "\nanything\n"), "holds at 3: DDEAA107/DDEAA107");
}

TEST_F(TemplateTrailer, DoesntHoldWithACarriageReturnBehindTheDigits) {
    EXPECT_EQ(find(sealed("a\n") + "\r\n"), "trailer at 3: DDEAA107/DDEAA107");
}

TEST_F(TemplateTrailer, DoesntHoldInLowerCaseDigits) {
    EXPECT_EQ(find(std::string("a\n") + kMarker + value("ddeaa107")),
              "trailer at 3: ddeaa107/DDEAA107");
}

TEST_F(TemplateTrailer, DoesntHoldWithMoreOrFewerDigits) {
    EXPECT_EQ(find(sealed("a\n") + "0"), "trailer at 3: DDEAA107/DDEAA107");
    EXPECT_EQ(find(std::string("a\n") + kMarker + value("DDEAA10")),
              "trailer at 3: DDEAA10/DDEAA107");
    EXPECT_EQ(find(std::string("a\n") + kMarker + value("")), "trailer at 3: /DDEAA107");
}

TEST_F(TemplateTrailer, MayHaveItsMarkerAndNameInAnyCase) {
    EXPECT_EQ(find("a\n/--- IENDofHWGfile \niendOFhwgFILE = DDEAA107"),
              "holds at 3: DDEAA107/DDEAA107");
}

TEST_F(TemplateTrailer, CoversTheLineEndsAsStored) {
    EXPECT_EQ(find(sealed("a\nb\r\n\rc\n")),
              "holds at 5: " + crcDigits("a\nb\r\n\rc\n") + "/" + crcDigits("a\nb\r\n\rc\n"));
}

TEST_F(TemplateTrailer, NeedsCrLfInItsMarkerWhenTheFirstLineEndsSo) {
    EXPECT_TRUE(find(sealed("a\r\nb\r\n", kMarkerCrLf)).starts_with("holds at 4"));
    EXPECT_EQ(find(sealed("a\r\nb\r\n", kMarker)), "trailer at 3");
    EXPECT_EQ(find(sealed("a\nb\r\n", kMarkerCrLf)), "trailer at 3");
}

TEST_F(TemplateTrailer, WrittenBehindACrLfFirstLineDoesntHold) {
    write("a\r\nb\r\n");
    CRC().generateAppendCRC(kFile);
    EXPECT_FALSE(CRC().pullSecureCRC(kFile));
}

TEST_F(TemplateTrailer, GoesByTheFirst127BytesOfTheFirstLine) {
    const std::string within = std::string(125, 'x') + "\r\n";
    const std::string beyond = std::string(126, 'x') + "\r\n";
    EXPECT_TRUE(find(sealed(within, kMarkerCrLf)).starts_with("holds"));
    EXPECT_EQ(find(sealed(within)), "trailer at 2");
    EXPECT_EQ(find(sealed(beyond, kMarkerCrLf)), "trailer at 2");
    EXPECT_TRUE(find(sealed(beyond)).starts_with("holds"));
}

TEST_F(TemplateTrailer, MayBeTheEndOfAPieceOf127Bytes) {
    const std::string text(127, 'x');
    EXPECT_TRUE(find(sealed(text)).starts_with("holds at 2"));
    EXPECT_TRUE(find(sealed(std::string(254, 'x'))).starts_with("holds at 2"));
    EXPECT_EQ(find(sealed(std::string(126, 'x'))), "no trailer");
}

TEST_F(TemplateTrailer, IsMissingWithoutItsMarker) {
    EXPECT_EQ(find(""), "no trailer");
    EXPECT_EQ(find("a\nb\n"), "no trailer");
    EXPECT_EQ(find("a\n" + value(crcDigits("a\n"))), "no trailer");
    EXPECT_EQ(find("a\n/--- iEndOfHwgFile x\n" + value(crcDigits("a\n"))), "no trailer");
}

TEST_F(TemplateTrailer, NeedsTheBlankBehindItsMarker) {
    EXPECT_EQ(find(sealed("a\n", "/--- iEndOfHwgFile\n")), "trailer at 2");
    EXPECT_EQ(find(sealed("a\n", "/--- iEndOfHwgFile  \n")), "trailer at 2");
}

TEST_F(TemplateTrailer, NeedsItsValueBehindItsMarker) {
    EXPECT_EQ(find(std::string("a\n") + kMarker), "trailer at 2");
    EXPECT_EQ(find("a\n/--- iEndOfHwgFile "), "trailer at 2");
    EXPECT_EQ(find(std::string("a\n") + kMarker + "\n" + value("DDEAA107")), "trailer at 3");
    EXPECT_EQ(find(std::string("a\n") + kMarker + "iEndOfHwgFile\n"), "trailer at 3");
    EXPECT_EQ(find(std::string("a\n") + kMarker + "iEndOfHwgFile= DDEAA107"), "trailer at 3");
    EXPECT_EQ(find(std::string("a\n") + kMarker + "iEndOfHwgFile  = DDEAA107"), "trailer at 3");
    EXPECT_EQ(find(std::string("a\n") + kMarker + "iEndOfHwgFile =\n"), "trailer at 3");
}

TEST_F(TemplateTrailer, SkipsOneCharacterBehindTheEqualsSignWhicheverItIs) {
    EXPECT_TRUE(
        find(std::string("a\n") + kMarker + "iEndOfHwgFile =xDDEAA107").starts_with("holds"));
    EXPECT_TRUE(
        find(std::string("a\n") + kMarker + "iEndOfHwgFile ==DDEAA107").starts_with("holds"));
    EXPECT_EQ(find(std::string("a\n") + kMarker + "iEndOfHwgFile =DDEAA107"),
              "trailer at 3: DEAA107/DDEAA107");
    EXPECT_EQ(find(std::string("a\n") + kMarker + "iEndOfHwgFile =  DDEAA107"),
              "trailer at 3:  DDEAA10/DDEAA107");
}

// A marker and what stands behind it in place of a value are no part of the text; the next marker
// counts.
TEST_F(TemplateTrailer, IsLookedForBehindADamagedOne) {
    const std::string digits = crcDigits("a\nb\n");
    const std::string rest = "b\n" + std::string(kMarker) + value(digits);
    const std::string found = "holds at 6: " + digits + "/" + digits;
    EXPECT_EQ(find(std::string("a\n") + kMarker + "dropped\n" + rest), found);
    EXPECT_EQ(find(std::string("a\n") + kMarker + "iEndOfHwgFile =\n" + rest), found);
    EXPECT_EQ(find(std::string("a\n") + kMarker + kMarker + rest), found)
        << "the second marker is dropped unread";
}

TEST_F(TemplateTrailer, IsNotInALastLineWithoutALineEnd) {
    EXPECT_EQ(find("a\nlast"), "no trailer");
    EXPECT_EQ(find(std::string(127, 'x') + "last"), "no trailer");
}

TEST_F(TemplateTrailer, CoversALineUpToItsZeroByte) {
    using namespace std::string_literals;
    EXPECT_EQ(find("a\0\n"s + kMarker + value(crcDigits("a"))),
              "holds at 3: " + crcDigits("a") + "/" + crcDigits("a"));
    EXPECT_EQ(find("a\n/--- iEndOfHwgFile \0\n"s + value("DDEAA107")), "trailer at 2");
    EXPECT_EQ(find("a\n"s + kMarker + value("DDEAA107\0tail"s)), "holds at 3: DDEAA107/DDEAA107");
}

TEST_F(TemplateTrailer, OfAFileThatCantBeReadDoesntHold) {
    CRC crc;
    for (const char* const name : {"missing.txt", ".", "", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(crc.pullSecureCRC(name));
        EXPECT_EQ(asText(zel::firmware::checkTemplateTrailer(crc, name)), "open");
    }
}

TEST_F(TemplateTrailer, MarkerComparesAsTextsDoWithoutCase) {
    CRC crc;
    EXPECT_EQ(crc.checkEndOfLineValue(0, kMarker), 0);
    EXPECT_EQ(crc.checkEndOfLineValue(1, kMarkerCrLf), 0);
    EXPECT_EQ(crc.checkEndOfLineValue(-1, "/--- IENDOFHWGFILE \r\n"), 0);
    EXPECT_NE(crc.checkEndOfLineValue(1, kMarker), 0);
    EXPECT_NE(crc.checkEndOfLineValue(0, kMarkerCrLf), 0);
    EXPECT_NE(crc.checkEndOfLineValue(0, ""), 0);
}
