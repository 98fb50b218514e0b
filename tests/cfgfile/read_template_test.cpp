// SPDX-License-Identifier: MIT
// Template files read for their own sake: no device, no traffic.
#include "tests/cfgfile/template_test.h"
#include "tests/family/tag/tag_record.h"

#include <algorithm>
#include <vector>

using namespace zel::test;

namespace {

class ReadTemplate : public TemplateTest {
protected:
    ReadTemplate() : configs_(ZELTAGAPI_MAX_CONFIGS) {}

    int read(const std::string& text, int count = 1, int forReader = 0) {
        writeText("in", text);
        return zelTagAPI_readTemplate("in", configs_.data(), count, forReader);
    }

    std::vector<tsTagCfg> configs_;
};

const std::string kEnd = "BEGIN sFldSepData\nEND sFldSepData\n";

} // namespace

TEST_F(ReadTemplate, CountsTheConfigurationsOfTheFile) {
    for (const int count : {1, 2, 3, 11})
        EXPECT_EQ(read(goldenFile("tagplus"), count), std::min(count, 3)) << count;
    for (const int count : {1, 3, 11})
        EXPECT_EQ(read(goldenFile("plain"), count), 1) << count;
}

TEST_F(ReadTemplate, CountsNoTrailerAndNoBlankLines) {
    const std::string trailer = "/--- iEndOfHwgFile \niEndOfHwgFile = 12345678";
    EXPECT_EQ(read(goldenFile("tagplus") + trailer, 11), 3);
    EXPECT_EQ(read(goldenFile("tagplus") + "\n\n/ end\n", 11), 3);
    EXPECT_EQ(read(goldenFile("plain") + trailer, 11), 1);
}

TEST_F(ReadTemplate, FindsNoneInAHeadAlone) {
    EXPECT_EQ(read(goldenFile("plain_unread")), 0);
    EXPECT_EQ(read(goldenFile("tagplus_unread"), 3), 0);
}

TEST_F(ReadTemplate, TellsWhatAReaderOfTheFileHolds) {
    const auto reader = connectFilledPlus();
    EXPECT_EQ(read(goldenFile("tagplus"), 3), 3);
    for (int n = 0; n < 3; ++n) {
        tsTagCfg held = config(n);
        const tsTagCfg& told = configs_[static_cast<std::size_t>(n)];
        held.bCfgValid = 0;
        if (n == 2) // a header without a length shifts the field data
            held.uSFD = told.uSFD;
        held.sTimeParms.ExFeatures01 = 0; // no file tells these two
        std::fill(std::begin(held.ExtBlock), std::end(held.ExtBlock), std::uint16_t{0});
        EXPECT_TRUE(isSame(told, held)) << n;
    }
}

TEST_F(ReadTemplate, LeavesTheWordsThatTheFileDoesNotName) {
    configs_[0].sIDBitCnts.iIDBitCnt = 9;
    configs_[0].uSFD.bytes[2] = 8;
    configs_[1].sIDBitCnts.iIDBitCnt = 7;
    EXPECT_EQ(read(kTitleLine + std::string("bSndFac = 1\nBEGIN sFldSepData\n24.11"), 2), 1);
    EXPECT_EQ(configs_[0].sIDBitCnts.iIDBitCnt, 9);
    EXPECT_EQ(configs_[0].uSFD.bytes[1], 0x11);
    EXPECT_EQ(configs_[0].uSFD.bytes[2], 8);
    EXPECT_EQ(configs_[1].sIDBitCnts.iIDBitCnt, 7);
}

TEST_F(ReadTemplate, TakesTheCardLinesOfSeveralConfigurationsAlone) {
    const std::string text = kTitleLine + kEnd + "CardType: 5\nCardPriority: 1\n#\n" + kEnd;
    EXPECT_EQ(read(text, 1), 1);
    EXPECT_EQ(configs_[0].iCardType, 0);
    EXPECT_EQ(read(text, 2), 2);
    EXPECT_EQ(configs_[0].iCardType, 5);
    EXPECT_EQ(configs_[0].iCardPriority, 1);
}

TEST_F(ReadTemplate, TakesAnyFormWithoutAReader) {
    configs_[0].uSFD.bytes[0] = 0x0C;
    EXPECT_EQ(read(kTitleLine + std::string("iExOutputFormat = 1\nBEGIN sFldSepData\n24.11")), 1);
    EXPECT_EQ(configs_[0].uSFD.bytes[0], 0x24);
    EXPECT_EQ(configs_[0].sIDDispParms.iExOutputFormat, 1);
}

TEST_F(ReadTemplate, KeepsAReadersForm) {
    configs_[0].uSFD = {{0x0C, 7}};
    configs_[0].sIDDispParms.iExOutputFormat = 1;
    EXPECT_EQ(read(kTitleLine + std::string("iExOutputFormat = 1\nBEGIN sFldSepData\n24.11"), 1, 1),
              1);
    EXPECT_EQ(configs_[0].uSFD.bytes[0], 0x0C);
    EXPECT_EQ(configs_[0].uSFD.bytes[1], 7);
    EXPECT_EQ(configs_[0].sIDDispParms.iExOutputFormat, 0);
    configs_[0].uSFD = {{0x24, 7}};
    EXPECT_EQ(read(kTitleLine + std::string("iExOutputFormat = 1\nBEGIN sFldSepData\n24.11"), 1, 1),
              1);
    EXPECT_EQ(configs_[0].uSFD.bytes[1], 0x11);
    EXPECT_EQ(configs_[0].sIDDispParms.iExOutputFormat, 1);
}

TEST_F(ReadTemplate, RefusesWhatIsNoTemplateFile) {
    const std::vector<tsTagCfg> before = configs_;
    EXPECT_EQ(read("bSndFac = 1\n"), 0);
    EXPECT_EQ(read(""), 0);
    for (const char* name : {"", "missing", "/", "."})
        EXPECT_EQ(zelTagAPI_readTemplate(name, configs_.data(), 1, 0), 0) << name;
    for (std::size_t n = 0; n < configs_.size(); ++n)
        EXPECT_TRUE(isSame(configs_[n], before[n])) << n;
}

TEST_F(ReadTemplate, RefusesBadArguments) {
    writeText("in", goldenFile("plain"));
    for (const int count : {0, -1, 12, 1'000'000})
        EXPECT_EQ(zelTagAPI_readTemplate("in", configs_.data(), count, 0), 0) << count;
    EXPECT_EQ(zelTagAPI_readTemplate("in", nullptr, 1, 0), 0);
    EXPECT_EQ(zelTagAPI_readTemplate(nullptr, configs_.data(), 1, 0), 0);
}

TEST_F(ReadTemplate, TouchesNeitherDeviceNorRecordNorFile) {
    connectFilledPlus();
    SetActConfig(1);
    record().lLastErr = 0x77;
    const std::string before(reinterpret_cast<const char*>(&record()), sizeof record());
    const auto files = openDescriptors();
    EXPECT_EQ(read(goldenFile("plain"), 3, 1), 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&record()), sizeof record()), before);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(openDescriptors(), files);
    EXPECT_EQ(textOf("in"), goldenFile("plain"));
}
