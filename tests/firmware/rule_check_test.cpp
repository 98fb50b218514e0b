// SPDX-License-Identifier: MIT
// A firmware file's header, and the way from its trailer to the last rule.
#include "tests/firmware/firmware_file.h"
#include "tests/firmware/rules_test.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>

using namespace zel::test;

namespace {

class HeaderOfAFile : public RulesTest {
protected:
    Lines stored(const std::string& text) {
        writeText("some.hex", text);
        return rules.storeFile("some.hex");
    }

    TemporaryFolder folder;
};

class FirmwareCheck : public RulesTest {
protected:
    // The number of the rule that refuses a file, 0 when it may be flashed.
    int refusalOf(const FirmwareFile& file) {
        writeText("some.hex", file.text());
        return refusal(rules.checkRulesForBootload("some.hex") == 1);
    }
    int refusalOf(const FirmwareHeader& header) {
        return refusalOf(FirmwareFile{.header = header.lines()});
    }
    int refusalOf(const Lines& header) { return refusalOf(FirmwareFile{.header = header}); }

    static Lines without(int index) {
        Lines lines = FirmwareHeader{}.lines();
        lines.erase(lines.begin() + index);
        return lines;
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(HeaderOfAFile, EndsInFrontOfTheMicroLine) {
    EXPECT_EQ(stored("A 1\nB 2\nM0\n:00\n"), (Lines{"A 1", "B 2"}));
    EXPECT_EQ(stored("A 1\nM1\r\nB 2\n"), Lines{"A 1"});
    EXPECT_EQ(stored("M0\nA 1\n"), Lines{});
}

TEST_F(HeaderOfAFile, KeepsAllOtherLinesThatBeginWithM) {
    EXPECT_EQ(stored("M2\nM\nM00\n M0\nm0\nM0 \nM0\n"),
              (Lines{"M2", "M", "M00", " M0", "m0", "M0 "}));
}

TEST_F(HeaderOfAFile, LosesOneCarriageReturnALine) {
    EXPECT_EQ(stored("A 1\r\nB\r\r\n\r\n\nC\rD\n"), (Lines{"A 1", "B\r", "", "", "C\rD"}));
}

TEST_F(HeaderOfAFile, IsTheWholeFileWithoutAMicroLine) {
    EXPECT_EQ(stored("A 1\nB 2"), (Lines{"A 1", "B 2"}));
    EXPECT_EQ(stored(""), Lines{});
}

TEST_F(HeaderOfAFile, ThatCannotBeOpenedIsEmptyWith218) {
    EXPECT_EQ(rules.storeFile("none.hex"), Lines{});
    EXPECT_EQ(errorString, "218:- Error in File Opening");
}

TEST_F(HeaderOfAFile, HasValuesByPosition) {
    const Lines lines = FirmwareHeader{.overrideNumber = "7", .ps = "256"}.lines();
    EXPECT_EQ(rules.getOvrValue(lines), 7);
    EXPECT_EQ(rules.getPSValueForCurrentReader(lines), " 256");
    EXPECT_EQ(rules.getFWBLValueForCurrentReader(lines), " 148");
    EXPECT_EQ(rules.getCPU1AP1ValueForCurrentReader(lines), " 103");
    EXPECT_EQ(rules.getCPU1BL1ValueForCurrentReader(lines), " 149");
    EXPECT_EQ(rules.getIndexNewFW(lines), kSection);
    EXPECT_EQ(rules.getPSValueForNewFW(lines, kSection), " 256");
    EXPECT_EQ(rules.getFWBLValueForNewFW(lines, kSection), " 150");
    EXPECT_EQ(rules.getFNValueForNewFW(lines, kSection), " ZT7_0303_TEST");
}

TEST_F(HeaderOfAFile, HasEmptyValuesWhereItHasNoLines) {
    EXPECT_EQ(rules.getOvrValue({}), 0);
    EXPECT_EQ(rules.getPSValueForCurrentReader({"1", "2", "3", "4"}), "");
    EXPECT_EQ(rules.getFWBLValueForCurrentReader({}), "Not Found");
    EXPECT_EQ(rules.getIndexNewFW({}), -1);
    EXPECT_EQ(rules.getFNValueForNewFW({"A 1", "B 2"}, -5), "");
    EXPECT_EQ(rules.getFNValueForNewFW({"A 1", "B 2"}, INT32_MAX), "");
}

TEST_F(HeaderOfAFile, TellsOverridesAsNumbersAndAllElseAsZero) {
    const struct {
        const char* line;
        int number;
    } rows[] = {{"OVR 12", 12}, {"OVR  3", 3}, {"OVR -1", -1},   {"OVR 4x", 4},
                {"OVR x4", 0},  {"OVR", 0},    {"OVR1", 0},      {"", 0},
                {" 5", 5},      {"OVR ", 0},   {"OVR 6 7 8", 6}, {"OVR 0", 0}};
    for (const auto& row : rows)
        EXPECT_EQ(rules.getOvrValue({row.line}), row.number) << row.line;
}

TEST_F(HeaderOfAFile, BeginsItsSectionWithTheFirstExactLine) {
    EXPECT_EQ(rules.getIndexNewFW({"#NEW FW ", "# NEW FW", "#new fw", "#NEW FW", "#NEW FW"}), 3);
}

TEST_F(HeaderOfAFile, TellsTheReaderInFrontOfTheSectionAlone) {
    const Lines lines = {"A 1", "FN ZT7_0302", "#NEW FW"};
    EXPECT_EQ(refusal(rules.getFNValueForReaderFW(lines, 2)), 0);
    EXPECT_EQ(refusal(rules.getFNValueForReaderFW(lines, 1)), 207);
    EXPECT_EQ(refusal(rules.getFNValueForReaderFW(lines, -1)), 207);
    EXPECT_EQ(refusal(rules.getFNValueForReaderFW(lines, INT32_MAX)), 0);
    EXPECT_EQ(refusal(rules.getFNValueForReaderFW({}, 3)), 207);
}

TEST_F(FirmwareCheck, PassesAFileForTheReader) {
    EXPECT_EQ(refusalOf(FirmwareHeader{}), 0);
    EXPECT_EQ(refusalOf(FirmwareFile{.micro = "M1"}), 0);
    EXPECT_EQ(refusalOf(FirmwareFile{.lineEnd = "\r\n"}), 0);
    EXPECT_EQ(refusalOf(FirmwareFile{.body = {}}), 0);
}

TEST_F(FirmwareCheck, RefusesAFileWithAnyByteChanged) {
    const std::string good = FirmwareFile{}.text();
    for (std::size_t i = 0; i < good.size(); ++i) {
        std::string bad = good;
        bad[i] = static_cast<char>(bad[i] ^ 1);
        writeText("some.hex", bad);
        EXPECT_EQ(refusal(rules.checkRulesForBootload("some.hex") == 1), 11) << i;
    }
}

TEST_F(FirmwareCheck, RefusesAFileThatIsNotThereWith11) {
    EXPECT_EQ(refusal(rules.checkRulesForBootload("none.hex") == 1), 11);
    EXPECT_EQ(refusal(rules.checkRulesForBootload("") == 1), 11);
    EXPECT_EQ(refusal(rules.checkRulesForBootload(nullptr) == 1), 11);
}

TEST_F(FirmwareCheck, NeverSees204ForAnotherExtension) {
    writeText("some.txt", FirmwareFile{}.text());
    EXPECT_EQ(refusal(rules.checkRulesForBootload("some.txt") == 1), 0);
}

TEST_F(FirmwareCheck, EndsWith205WhenTheHeaderCannotBeRead) {
    TrustingRules trusting;
    EXPECT_EQ(refusal(trusting.checkRulesForBootload("none.hex") == 1), 205);
}

TEST_F(FirmwareCheck, RefusesAHeaderWithoutItsLinesWith205) {
    EXPECT_EQ(refusalOf(Lines{}), 205);
    EXPECT_EQ(refusalOf(Lines{"OVR 1"}), 205);
    EXPECT_EQ(refusalOf(Lines{"OVR 1", "B", "C", "D", "E"}), 205);
    EXPECT_EQ(refusalOf(without(kSection)), 205);
}

TEST_F(FirmwareCheck, RefusesASectionThatEndsInFrontOfTheNameWith205) {
    Lines lines = FirmwareHeader{}.lines();
    while (lines.size() > kSection) {
        lines.pop_back();
        EXPECT_EQ(refusalOf(lines), 205) << lines.size();
    }
}

TEST_F(FirmwareCheck, TakesFiveLinesForAHeader) {
    EXPECT_EQ(refusalOf(Lines{"#NEW FW", "A", "B", "C", "FN TKG_00000"}), 207);
}

TEST_F(FirmwareCheck, RefusesANameValueOfEightCharactersBeforeItAsksForTheReader) {
    setReader("ZT7", "OTHER");
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_030"}), 221);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_0303"}), 207);
}

TEST_F(FirmwareCheck, RefusesANameLineWithoutABlankWith221) {
    Lines lines = FirmwareHeader{}.lines();
    for (const char* const line : {"", "ZT7_0303_TEST", "FN "}) {
        lines.back() = line;
        EXPECT_EQ(refusalOf(lines), 221) << line;
    }
}

TEST_F(FirmwareCheck, RefusesANameOfUnderNineCharactersWithoutItsRevisionWith221) {
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_0303"}), 221);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_0303-1234567"}), 221);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "-123456789"}), 221);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "TKG_0303-1"}), 221);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_0303-D"}), 0);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_03030-1"}), 0);
}

TEST_F(FirmwareCheck, AsksForTheReaderBeforeItMissesCharactersOfTheName) {
    setReader("ZT7", "OTHER");
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_0303-1234567"}), 207);
}

TEST_F(FirmwareCheck, RefusesAFileForOtherReadersWith207) {
    EXPECT_EQ(refusalOf(FirmwareHeader{.readerFirmware = "ZT7_0301"}), 207);
    EXPECT_EQ(refusalOf(FirmwareHeader{.readerFirmware = "zt7_0302"}), 207);
    EXPECT_EQ(refusalOf(FirmwareHeader{.readerFirmware = "ZT7_0302 "}), 207);
}

TEST_F(FirmwareCheck, DoesNotTakeTheReadersNameBehindTheSectionForItsOwn) {
    setReader("ZT7", "ZT7_0303_TEST");
    EXPECT_EQ(refusalOf(FirmwareHeader{}), 207);
}

TEST_F(FirmwareCheck, DoesNotReadTheBlockOfTheReader) {
    setReader("OTHER", "ZT7_0302");
    EXPECT_EQ(refusalOf(FirmwareHeader{}), 0);
}

TEST_F(FirmwareCheck, TakesANameInLowerCase) {
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "zt7_0303_test"}), 0);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "zt7_0303_tka"}), 212);
}

TEST_F(FirmwareCheck, WithoutAnOverrideRefusesANameLongerThanTheReaders) {
    EXPECT_EQ(refusalOf(FirmwareHeader{.overrideNumber = "0"}), 209);
    EXPECT_EQ(refusalOf(FirmwareHeader{.overrideNumber = "0", .newName = "ZT7_03020"}), 209);
}

TEST_F(FirmwareCheck, WithoutAnOverrideTakesTheReadersOwnTail) {
    setReader("ZT7", "ZT7_0302_TEST");
    EXPECT_EQ(refusalOf(FirmwareHeader{.overrideNumber = "0",
                                       .readerFirmware = "ZT7_0302_TEST",
                                       .newName = "ZT7_9992_TEST"}),
              0);
}

TEST_F(FirmwareCheck, WithoutAnOverrideTakesATkgNameForAnEightCharacterReader) {
    setSecondApp(0x010403);
    EXPECT_EQ(refusalOf(FirmwareHeader{.overrideNumber = "0", .newName = "TKG_03033"}), 0);
    EXPECT_EQ(refusalOf(FirmwareHeader{.overrideNumber = "0", .newName = "TKG_03034"}), 211);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "tkg_03033-17"}), 0);
}

TEST_F(FirmwareCheck, OfATkgNameSkipsTheFamilyAndTheChain) {
    setSecondApp(0x010403);
    setSecondBoot(0x010000);
    EXPECT_EQ(refusalOf(FirmwareHeader{.ps = "256", .newName = "TKG_03033"}), 0);
}

TEST_F(FirmwareCheck, OfATkgReaderAndAnotherNameIsRefusedByTheFamily) {
    setReader("ZT7", "TKG_0302");
    EXPECT_EQ(refusalOf(FirmwareHeader{.readerFirmware = "TKG_0302"}), 209);
}

TEST_F(FirmwareCheck, OfATkhReaderSkipsTheChain) {
    setReader("ZT7", "TKH_0302");
    FirmwareHeader header{.ps = "256", .readerFirmware = "TKH_0302", .newName = "TKH2_0306TKA"};
    EXPECT_EQ(refusalOf(header), 0);
    header.overrideNumber = "0";
    EXPECT_EQ(refusalOf(header), 209);
    header = {.readerFirmware = "TKH_0302", .newName = "ZT7_0303_TEST"};
    EXPECT_EQ(refusalOf(header), 209);
}

TEST_F(FirmwareCheck, OfATkhNameForAnotherReaderIsRefusedByTheFamily) {
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "TKH_0303_TEST"}), 209);
}

TEST_F(FirmwareCheck, OfAModelWithoutTheChainStillAsksAllElse) {
    setReader("MDL-4Qz1BzT", "ZT7_0302");
    EXPECT_EQ(refusalOf(FirmwareHeader{.ps = "256", .newName = "ZT720306_TKA__X"}), 0);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "ZT7_030"}), 221);
    EXPECT_EQ(refusalOf(FirmwareHeader{.readerFirmware = "NONE"}), 207);
    EXPECT_EQ(refusalOf(FirmwareHeader{.overrideNumber = "0"}), 209);
    EXPECT_EQ(refusalOf(FirmwareHeader{.newName = "TKG_03031"}), 211);
    EXPECT_EQ(refusalOf(Lines{}), 205);
}

TEST_F(FirmwareCheck, TakesThePsValueOfLine4) {
    EXPECT_EQ(refusalOf(FirmwareHeader{.ps = "256"}), 213);
    Lines lines = FirmwareHeader{}.lines();
    lines[kSection + 2] = "PS 256";
    EXPECT_EQ(refusalOf(lines), 0);
}

// Each row remedies what the row above was refused for.
TEST_F(FirmwareCheck, OfAFileWithManyFaultsTellsTheFirst) {
    setCurrent(0x010407);
    FirmwareHeader header = {"0", "256", "ZT7", "NONE", "ZT8_0"};
    const auto next = [&](std::string& text, const char* remedy) {
        const int code = refusalOf(header);
        text = remedy;
        return code;
    };
    EXPECT_EQ(next(header.newName, "ZT8_0-1234567"), 221);
    EXPECT_EQ(next(header.readerFirmware, "ZT7_0302"), 207);
    EXPECT_EQ(next(header.newName, "ZT8_0306_"), 221);
    EXPECT_EQ(next(header.newName, "ZT7_03X06TKA__X"), 209);
    EXPECT_EQ(next(header.overrideNumber, "1"), 209);
    EXPECT_EQ(next(header.newName, "ZT7_03X06ABC__X"), 212);
    EXPECT_EQ(next(header.newName, "ZT7_03X07ABC__X"), 210);
    EXPECT_EQ(next(header.ps, "128"), 213);
    EXPECT_EQ(next(header.newName, "ZT7_03X07ABC___"), 217);
    EXPECT_EQ(refusalOf(header), 0);
}

TEST_F(FirmwareCheck, SendsNothingAndLeavesTheErrorWordAlone) {
    DevDat[0].lLastErr = 0x1234;
    EXPECT_EQ(refusalOf(FirmwareHeader{}), 0);
    EXPECT_EQ(refusalOf(FirmwareHeader{.ps = "256"}), 213);
    EXPECT_EQ(DevDat[0].lLastErr, 0x1234);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FirmwareCheck, WithoutADeviceFindsNoReaderInTheFile) {
    iDevsFnd = 0;
    EXPECT_EQ(refusalOf(FirmwareHeader{}), 207);
    EXPECT_EQ(refusalOf(FirmwareHeader{.readerFirmware = ""}), 209);
}
