// SPDX-License-Identifier: MIT
// What the reader of a template file takes: lines, keys, values, hexadecimal rows.
#include "family/tag/words.h"
#include "tests/cfgfile/template_test.h"
#include "tests/family/tag/tag_record.h"

#include <vector>

using namespace zel::test;
using zel::cfgfile::parseBody;

namespace {

struct Parsed {
    tsTagCfg config = {};
    long end = 0; // where the parse stopped
    bool any = false;
};

Parsed parsed(const std::string& text, const tsTagCfg& config = {}) {
    return reading(text, [&](std::FILE* file) {
        Parsed result{config};
        result.any = parseBody(file, result.config);
        result.end = std::ftell(file);
        return result;
    });
}

// The word that most tests set: of a record at the end of the search order.
int trailOf(const std::string& text) { return parsed(text).config.sIDDispParms3.iTrailChr2; }

// The field data after a block of these lines.
std::vector<int> bytesOf(const std::string& lines, std::size_t count) {
    const tsTagCfg config = parsed("BEGIN sFldSepData\n" + lines).config;
    return {config.uSFD.bytes, config.uSFD.bytes + count};
}

using Bytes = std::vector<int>;

class TemplateKeys : public TagRecordTest {};

} // namespace

TEST(TemplateLine, TakesAnyMixOfSeparators) {
    for (const char* line :
         {"iTrailChr2 = 5     /       LeadChrs have priority\n", "iTrailChr2=5\n", "iTrailChr2 5",
          "iTrailChr2,5", "\tiTrailChr2\t,= ,\t5\t/ x\n", "=,iTrailChr2==5", "iTrailChr2 5,6,7\n",
          "iTrailChr2 = 5/no blank\n", "iTrailChr2 = 5\r\n", "iTrailChr2 = +5", "iTrailChr2 = 05x",
          "iTrailChr2 = \v5", "  iTrailChr2 = 5 without a slash\n"})
        EXPECT_EQ(trailOf(line), 5) << line;
}

TEST(TemplateLine, IsIgnoredWithoutANumberBehindItsKey) {
    for (const char* line :
         {"iTrailChr2\n", "iTrailChr2 = \n", "iTrailChr2 = /5\n", "iTrailChr2 / = 5\n",
          "iTrailChr2 = x5\n", "iTrailChr2.5\n", "iTrailChr2\n= 5\n", "iTrailChr2: 5\n",
          "x iTrailChr2 5\n", ", \n", "iTrailChr = 5\n", "iTrailChr22 = 5\n"})
        EXPECT_EQ(trailOf(line), 0) << line;
}

TEST(TemplateLine, ScansItsNumberIntoSixteenBits) {
    const std::pair<const char*, int> values[] = {{"65535", -1}, {"32768", -32768}, {"65541", 5},
                                                  {"-1", -1},    {"0x10", 0},       {"010", 10}};
    for (const auto& [text, value] : values)
        EXPECT_EQ(trailOf(std::string("iTrailChr2 = ") + text), value) << text;
}

TEST(TemplateLine, IsACommentBehindASlashOrAColon) {
    for (const char* line :
         {"/iTrailChr2 = 5\n", "  / iTrailChr2 = 5\n", ":iTrailChr2 = 5\n", "\t: iTrailChr2 = 5\n"})
        EXPECT_EQ(trailOf(line), 0) << line;
}

// Bytes are signed characters here.
TEST(TemplateLine, HasControlCharactersAndHighBytesInFrontOfItPassedOver) {
    EXPECT_EQ(trailOf("\x01\x1F \t\r\v\x80\xA0\xFFiTrailChr2 = 5\n"), 5);
    EXPECT_EQ(trailOf("\xEF\xBB\xBFiTrailChr2 = 5\n"), 5) << "a byte-order mark";
    EXPECT_EQ(trailOf("iTrailChr2\xA0= 5\n"), 0) << "but not inside it";
    EXPECT_EQ(trailOf("\x7FiTrailChr2 = 5\n"), 0) << "nor a delete character";
}

TEST(TemplateLine, EndsAtAZeroByte) {
    EXPECT_EQ(trailOf(std::string("iTrailChr2 = 5\0\n", 16)), 5);
    EXPECT_EQ(trailOf(std::string("\0iTrailChr2 = 5\n", 16)), 0);
    EXPECT_EQ(trailOf(std::string("\0\niTrailChr2 = 5\n", 17)), 5);
}

TEST(TemplateLine, OfUpTo127CharactersIsWhole) {
    const std::string setting = "iTrailChr2 = 5";
    EXPECT_EQ(trailOf(std::string(127 - setting.size(), ' ') + setting + "\n"), 5);
    EXPECT_EQ(trailOf(std::string(128 - setting.size(), ' ') + setting), 0) << "cut before its 5";
    EXPECT_EQ(trailOf("/" + std::string(126, 'x') + "iTrailChr2 = 5\n"), 5) << "of the next line";
    EXPECT_EQ(trailOf("/" + std::string(125, 'x') + "iTrailChr2 = 5\n"), 0);
}

TEST(TemplateLine, OfTwoHundredCharactersIsReadAsTwo) {
    std::string line = "\tiTrailChr2 = 5 / " + std::string(182, ' ');
    ASSERT_EQ(line.size(), 200U);
    EXPECT_EQ(trailOf(line), 5);
    line.replace(130, 14, "iTrailChr2 = 6");
    EXPECT_EQ(trailOf(line), 6) << "the tail is a line of its own";
    line.replace(120, 24, "/iTrailChr2 = 7         ");
    EXPECT_EQ(trailOf(line), 5) << "cut through the key";
}

TEST(TemplateKey, IsFoundInAnyCaseOrderAndSection) {
    const tsTagCfg config =
        parsed("ITRAILCHR2 = 5\n/ tsIDBitCnts\nBSNDFAC = 7\nazertyshiftLOCK = 3\n").config;
    EXPECT_EQ(config.sIDDispParms3.iTrailChr2, 5);
    EXPECT_EQ(config.sCfgFlags.bSndFac, 7) << "a flag's number is kept";
    EXPECT_EQ(config.AZERTYShiftLock, 3U);
}

TEST(TemplateKey, CountsWithItsLastValue) {
    EXPECT_EQ(trailOf("iTrailChr2 = 5\niTrailChr2 = 6\niTrailChr2 = x\n"), 6);
}

TEST(TemplateKey, ThatNoTableHasIsPassedOver) {
    EXPECT_EQ(trailOf("iUnknown = 1\n\n\nsFldSepData = 2\nEND sFldSepData\niTrailChr2 = 5\n"), 5);
}

TEST_F(TemplateKeys, ReachTheWordOfTheirRow) {
    for (const auto& word : zel::tag::kWords) {
        if (word.kind == zel::tag::Kind::pad || std::string(word.label) == "iPad5")
            continue;
        tsTagCfg expected = {};
        zel::tag::set(expected, word, -3);
        tsTagCfg found = {};
        EXPECT_EQ(ProcessFCfgTokenVal(word.label, -3, &found), 1) << word.label;
        EXPECT_TRUE(isSame(found, expected)) << word.label;
    }
}

TEST_F(TemplateKeys, OfPadsReachTheFirstRecordThatHasThem) {
    const std::pair<const char*, zel::tag::Record> pads[] = {
        {"iPad0", zel::tag::Record::BprRlyCtrl}, {"iPad3", zel::tag::Record::LEDCtrl},
        {"iPad4", zel::tag::Record::IDBitCnts},  {"iPad5", zel::tag::Record::IDBitCnts},
        {"iPad6", zel::tag::Record::IDBitCnts},  {"ipad7", zel::tag::Record::IDBitCnts}};
    for (const auto& [name, record] : pads) {
        const auto row = static_cast<std::size_t>(name[4] - '0');
        tsTagCfg expected = {};
        zel::tag::set(expected, zel::tag::wordsOf(record)[row], 9);
        tsTagCfg found = {};
        EXPECT_EQ(ProcessFCfgTokenVal(name, 9, &found), 1) << name;
        EXPECT_TRUE(isSame(found, expected)) << name;
    }
}

TEST_F(TemplateKeys, OfTheOptionsSetTheLowHalfOfTheirWord) {
    config().AZERTYShiftLock = config().ExtendedPrecisionMath = 0xABCD1234;
    EXPECT_EQ(ProcessFCfgTokenVal("AZERTYShiftlock", -1, &config()), 1);
    EXPECT_EQ(ProcessFCfgTokenVal("ExtendedPrecisionMath", 5, &config()), 1);
    EXPECT_EQ(config().AZERTYShiftLock, 0xABCDFFFFU);
    EXPECT_EQ(config().ExtendedPrecisionMath, 0xABCD0005U);
}

TEST_F(TemplateKeys, ThatAreUnknownOrNullChangeNothing) {
    const tsTagCfg before = config();
    for (const char* name : {"", "none", "iPad1", "iPad2", "iPad8", "bVolatile", "ExFeatures01",
                             "ucDataOfst", "iTrailChr2 "})
        EXPECT_EQ(ProcessFCfgTokenVal(name, 1, &config()), 0) << name;
    EXPECT_EQ(ProcessFCfgTokenVal(nullptr, 1, &config()), 0);
    EXPECT_EQ(ProcessFCfgTokenVal("iTrailChr2", 1, nullptr), 0);
    EXPECT_TRUE(isSame(config(), before));
}

TEST(TemplateBytes, ComeInOrderWhateverTheirRows) {
    EXPECT_EQ(bytesOf("0C.11\n\n/ comment\n00,01 10\t18\n: comment\n..02 , 00.\n", 8),
              (Bytes{0x0C, 0x11, 0, 1, 0x10, 0x18, 2, 0}));
}

TEST(TemplateBytes, AreTheLowByteOfAHexadecimalNumber) {
    EXPECT_EQ(bytesOf("0xAB.0Xcd.a.1FF.-1.0cZZ.ffffffff01\n", 7),
              (Bytes{0xAB, 0xCD, 0x0A, 0xFF, 0xFF, 0x0C, 1}));
}

TEST(TemplateBytes, EndTheirLineAtATokenThatIsNoNumber) {
    EXPECT_EQ(bytesOf("01.x.02\n03 / 04\n05=06\n07\n", 6), (Bytes{1, 3, 5, 7, 0, 0}));
}

TEST(TemplateBytes, TakeEndAndBeginForNumbers) {
    EXPECT_EQ(bytesOf("01\nEND\n02\nBEGIN sFldSepData 05\n03\n", 6),
              (Bytes{1, 0x0E, 2, 0xBE, 3, 0}));
}

TEST(TemplateBytes, PastTheDataAreDropped) {
    std::string rows;
    for (int row = 0; row < 40; ++row)
        rows += "11.22.33.44\n";
    const Parsed result = parsed("BEGIN sFldSepData\n" + rows + "END sFldSepData\n");
    EXPECT_EQ(result.config.uSFD.bytes[127], 0x44);
    tsTagCfg behind = result.config;
    behind.uSFD = {};
    EXPECT_TRUE(isSame(behind, tsTagCfg{}));
}

TEST(TemplateBytes, KeepWhatTheBlockDoesNotReach) {
    tsTagCfg config = {};
    config.uSFD.bytes[1] = 7;
    config = parsed("BEGIN sFldSepData\n24\n", config).config;
    EXPECT_EQ(config.uSFD.bytes[0], 0x24);
    EXPECT_EQ(config.uSFD.bytes[1], 7);
}

TEST(TemplateBlock, IsMarkedByTwoWordsInAnyOrder) {
    for (const char* begin : {"BEGIN sFldSepData", "sFldSepDataBEGIN",
                              " x BEGINNING of sFldSepData!", "sFldSepData BEGIN END"})
        EXPECT_EQ(parsed(std::string(begin) + "\n7\n").config.uSFD.bytes[0], 7) << begin;
    for (const char* begin :
         {"begin sFldSepData", "BEGIN sfldsepdata", "BEGIN", "/BEGIN sFldSepData"})
        EXPECT_EQ(parsed(std::string(begin) + "\n7\n").config.uSFD.bytes[0], 0) << begin;
}

TEST(TemplateBlock, EndsTheParse) {
    for (const char* end :
         {"END sFldSepData\n", "\tsFldSepData THE END\n", "SENDsFldSepData x\n"}) {
        const std::string text = std::string("BEGIN sFldSepData\n1\n") + end;
        const Parsed result = parsed(text + "iTrailChr2 = 5\n");
        EXPECT_EQ(result.config.sIDDispParms3.iTrailChr2, 0) << end;
        EXPECT_EQ(result.end, static_cast<long>(text.size())) << "the rest is left to read";
    }
}

TEST(TemplateBlock, HasNoSettings) { EXPECT_EQ(trailOf("BEGIN sFldSepData\niTrailChr2 = 5\n"), 0); }

TEST(TemplateBlock, WithoutAnEndRunsToTheEndOfTheFile) {
    EXPECT_EQ(parsed("iTrailChr2 = 5\nBEGIN sFldSepData\n24.1").config.uSFD.bytes[1], 1);
}

TEST(TemplateText, HoldsAConfigurationWithAKnownKeyOrABlock) {
    for (const char* text : {"", "\n/ x\n: y\n  \n", "iEndOfHwgFile = 12345678", "iIDBitCnt = x\n",
                             "END sFldSepData\n"})
        EXPECT_FALSE(parsed(text).any) << text;
    for (const char* text : {"x\niIDBitCnt = 0\ny = 1", "BEGIN sFldSepData\n"})
        EXPECT_TRUE(parsed(text).any) << text;
}
