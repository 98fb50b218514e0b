// SPDX-License-Identifier: MIT
// What a reader's settings look like as a file, to the byte.
#include "family/tag/words.h"
#include "tests/cfgfile/template_test.h"
#include "tests/family/tag/tag_record.h"

#include <set>

using namespace zel::test;

namespace {

class TemplateWriter : public TemplateTest {};
class TemplateBody : public TagRecordTest {
protected:
    ~TemplateBody() override {
        CfgFlagsStr[0] = {"bFixLenDsp", "Send as fixed length with leading zeros as needed"};
        AZERTYShiftLock[0] = {"AZERTYShiftlock", "0= off, 1 = on"};
    }
    static std::string body() { return writtenBy(WriteFCfgBody); }

    static bool hasLine(const std::string& line) {
        return body().find('\n' + line + '\n') != std::string::npos;
    }
};

// The number that the first line of a key shows.
std::string shown(const std::string& text, const std::string& key) {
    const std::size_t at = text.find('\n' + key + " = ");
    if (at == std::string::npos)
        return "no line";
    const std::size_t begin = at + key.size() + 4;
    return text.substr(begin, text.find(' ', begin) - begin);
}

// Keys that no section shows, though the reader of a file takes them.
const std::set<std::string> kUnwritten = {"iPad0", "iPad3", "iPad4",         "iPad5",
                                          "iPad6", "iPad7", "iTPCfgFlg3",    "isASCIIpresent",
                                          "",      "none",  "bVolatile_BRC", "bVolatile_LC"};

} // namespace

TEST_F(TemplateWriter, WritesAPlainReaderToTheByte) {
    connectFilledPlain();
    EXPECT_EQ(WriteDevCfgToFile("out"), 1);
    EXPECT_EQ(textOf("out"), goldenFile("plain"));
}

TEST_F(TemplateWriter, WritesAReaderOfThreeConfigurationsToTheByte) {
    connectFilledPlus();
    EXPECT_EQ(WriteDevCfgToFile("out"), 1);
    EXPECT_EQ(textOf("out"), goldenFile("tagplus"));
}

TEST_F(TemplateWriter, ReplacesALongerFile) {
    connectFilledPlain();
    writeText("out", std::string(100'000, 'x'));
    EXPECT_EQ(WriteDevCfgToFile("out"), 1);
    EXPECT_EQ(textOf("out"), goldenFile("plain"));
}

TEST_F(TemplateWriter, LeavesThreeLinesForAPlainReaderThatCannotBeRead) {
    connectRead();
    bus().unplug(0);
    EXPECT_EQ(WriteDevCfgToFile("out"), -1) << "a caller that tests for 0 sees success";
    EXPECT_EQ(textOf("out"), goldenFile("plain_unread"));
}

// Priorities are signed; those of a record that no read replaces may be anything.
TEST_F(TemplateWriter, LeavesTheCardLinesOfConfigurationsThatCannotBeRead) {
    connectFilledPlus();
    config(0).iCardPriority = 0xFFFF;
    SetActConfig(1);
    bus().unplug(0);
    EXPECT_EQ(WriteDevCfgToFile("out"), -1);
    EXPECT_EQ(textOf("out"), goldenFile("tagplus_unread"));
    EXPECT_EQ(record().iActConfig, 1) << "made active again all the same";
}

// The head is written before the reader is read.
TEST_F(TemplateWriter, ShowsTheDeviceIdThatWasReadBefore) {
    connectReader();
    EXPECT_EQ(WriteDevCfgToFile("out"), 1);
    EXPECT_TRUE(textOf("out").starts_with(std::string(kTitleLine) +
                                          ":Library Version: 7.6.4 \n"
                                          ":Device FW Version: 00.00 \n"));
    EXPECT_EQ(record().iDID, 0x0142);
}

TEST_F(TemplateWriter, CreatesNothingWhereNoFileCanBe) {
    connectReader();
    for (const char* name : {"", "/", ".", "no/such/folder"})
        EXPECT_EQ(WriteDevCfgToFile(name), 0) << name;
    EXPECT_EQ(WriteDevCfgToFile(nullptr), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(TemplateWriter, MakesTheActiveConfigurationActiveAgain) {
    connectFilledPlus();
    SetActConfig(1);
    EXPECT_EQ(WriteDevCfgToFile("out"), 1);
    EXPECT_EQ(GetActConfig(), 1);
}

// Each pass reads all configurations, from the highest down and back to its own.
TEST_F(TemplateWriter, ReadsTheReaderOnceAConfiguration) {
    connectFilledPlus();
    EXPECT_EQ(WriteDevCfgToFile("out"), 1);
    EXPECT_EQ(writes(bus().takeTrace()), "210"
                                         "0"
                                         "210"
                                         "1"
                                         "210"
                                         "2");
}

// A nibble above 9 takes two digits.
TEST_F(TemplateWriter, ShowsTheDeviceIdByItsNibbles) {
    connectReader();
    bus().unplug(0);
    const std::pair<std::uint16_t, std::string> lines[] = {
        {0x1234, "12.34"}, {0xABCD, "1011.1213"}, {0x00F0, "00.150"}, {0xFFFF, "1515.1515"}};
    for (const auto& [id, shownId] : lines) {
        record().iDID = id;
        record().iFWVer = 0x5678;
        WriteDevCfgToFile("out");
        EXPECT_TRUE(textOf("out").ends_with("\n:Device FW Version: " + shownId + " \n")) << id;
    }
}

TEST_F(TemplateBody, ShowsEachWordUnderItsOwnName) {
    for (const auto& word : zel::tag::kWords) {
        if (kUnwritten.contains(word.label))
            continue;
        config() = {};
        const bool isFlag = word.kind == zel::tag::Kind::flag;
        EXPECT_EQ(shown(body(), word.label), "0");
        zel::tag::set(config(), word, -2);
        EXPECT_EQ(shown(body(), word.label), isFlag ? "1" : "65534") << word.label;
    }
}

TEST_F(TemplateBody, ShowsNoPadsAndNoVolatileFlags) {
    for (const std::string& key : kUnwritten)
        EXPECT_EQ(shown(body(), key), "no line") << key;
}

TEST_F(TemplateBody, ShowsTheLowHalfOfTheOptions) {
    config().AZERTYShiftLock = 0x10002;
    config().ExtendedPrecisionMath = 0xFFFF0000;
    EXPECT_EQ(shown(body(), "AZERTYShiftlock"), "2");
    EXPECT_EQ(shown(body(), "ExtendedPrecisionMath"), "0");
}

TEST_F(TemplateBody, TakesItsTextsFromTheExportedTables) {
    CfgFlagsStr[0] = {"bRenamed", "100 %s of it"};
    EXPECT_TRUE(hasLine("bRenamed = 0     / 100 %s of it"));
    EXPECT_EQ(shown(body(), "bFixLenDsp"), "no line");
}

TEST_F(TemplateBody, ShowsNothingForANullTextOfATable) {
    CfgFlagsStr[0] = {nullptr, nullptr};
    AZERTYShiftLock[0] = {nullptr, nullptr};
    EXPECT_TRUE(hasLine(" = 0     / "));
    EXPECT_EQ(ProcessFCfgTokenVal("bFrcBitCntEx", 1, &config()), 1);
    EXPECT_EQ(config().sCfgFlags.bFrcBitCntEx, 1);
}

TEST_F(TemplateBody, IsRefusedWithoutAStream) {
    EXPECT_EQ(WriteFCfgBody(nullptr), 0);
    EXPECT_EQ(ReadFCfgBody(nullptr), 0);
}
