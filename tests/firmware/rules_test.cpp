// SPDX-License-Identifier: MIT
// The single rules on names and versions, and the order of their chain.
#include "tests/firmware/rules_test.h"

using namespace zel::test;

namespace {

class VersionText : public RulesTest {};
class SecondBootRule : public RulesTest {};
class TkgRule : public RulesTest {};
class TargetRule : public RulesTest {};
class TkaRule : public RulesTest {};
class TkdRule : public RulesTest {};
class TkfRule : public RulesTest {};
class CcidRule : public RulesTest {};
class Rule256K : public RulesTest {};
class FormatRule : public RulesTest {};
class RuleChain : public RulesTest {};
class Revision : public RulesTest {};

// A version and the number of the rule that refuses it, 0 for none.
struct Row {
    const char* version;
    int refusal;
};

} // namespace

TEST_F(VersionText, JoinsThreeDecimalBytes) {
    const struct {
        std::uint32_t word;
        const char* text;
    } rows[] = {{0x00010408, "148"}, {0x00010C03, "1123"},      {0, "000"},
                {0xFF010408, "148"}, {0x01FFFFFF, "255255255"}, {0x000A0000, "1000"}};
    for (const auto& row : rows) {
        setCurrent(row.word);
        EXPECT_EQ(rules.getFirmwareVersion(0, 1), row.text);
    }
}

TEST_F(VersionText, IsOfTheUnitAndSlotAsked) {
    setCurrent(0x010101);
    setSecondBoot(0x020202);
    setSecondApp(0x030303);
    EXPECT_EQ(rules.getFirmwareVersion(0, 1), "111");
    EXPECT_EQ(rules.getFirmwareVersion(1, 1), "222");
    EXPECT_EQ(rules.getFirmwareVersion(1, 0), "333");
    EXPECT_EQ(rules.getFirmwareVersion(3, 0), "000");
}

TEST_F(VersionText, OfAReaderThatIsNoMultiConfigurationOneIsThreeZeros) {
    setCurrent(0x010408);
    for (const unsigned state : {0U, 1U, 3U}) {
        DevDat[0].iTagPlusState = state;
        EXPECT_EQ(rules.getFirmwareVersion(0, 1), "000") << state;
    }
}

TEST(NumberText, HoldsDigitsAlone) {
    EXPECT_TRUE(isNumber("0123456789"));
    EXPECT_TRUE(isNumber(""));
    for (const char* const text : {"12a", "-1", " 1", "1 ", "1.5", "\xB2", "/", ":"})
        EXPECT_FALSE(isNumber(text)) << text;
    EXPECT_FALSE(isNumber(std::string(1, '\0')));
}

TEST(UpperCase, ChangesTheLettersAToZAlone) {
    EXPECT_EQ(convertToUppercase("aAzZ-09`{@[\xE9\xFF"), "AAZZ-09`{@[\xE9\xFF");
    EXPECT_EQ(convertToUppercase(std::string("a\0b", 3)), std::string("A\0B", 3));
    EXPECT_EQ(convertToUppercase(""), "");
}

TEST_F(Revision, OfDigitsIsCutAtTheFirstDash) {
    EXPECT_EQ(rules.removeSVN("ABC-12"), "ABC");
    EXPECT_EQ(rules.removeSVN("ABC-D-12"), "ABC");
    EXPECT_EQ(rules.removeSVN("ABC--12"), "ABC");
    EXPECT_EQ(rules.removeSVN("-12"), "");
}

TEST_F(Revision, WithALetterStays) {
    EXPECT_EQ(rules.removeSVN("ABC-D"), "ABC-D");
    EXPECT_EQ(rules.removeSVN("ABC-12-D"), "ABC-12-D");
    EXPECT_EQ(rules.removeSVN("ABC-1D"), "ABC-1D");
}

TEST_F(Revision, ThatIsEmptyCountsAsANumber) {
    EXPECT_EQ(rules.removeSVN("ABC-"), "ABC");
    EXPECT_EQ(rules.removeSVN("ABC-D-"), "ABC");
    EXPECT_EQ(rules.removeSVN("-"), "");
}

TEST_F(Revision, IsMissingInANameWithoutADash) {
    EXPECT_EQ(rules.removeSVN("ABC12"), "ABC12");
    EXPECT_EQ(rules.removeSVN(""), "");
}

TEST_F(SecondBootRule, WantsVersion149ForAGenerationFromTwoOn) {
    const struct {
        std::uint32_t word;
        int refusal;
    } rows[] = {{0, 0},          {0x010408, 216}, {0x010409, 0},  {0x010500, 0},
                {0x010C03, 216}, {0x020000, 0},   {0x000001, 216}};
    for (const auto& row : rows) {
        setSecondBoot(row.word);
        EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetCpu1BL("TKX2")), row.refusal)
            << std::hex << row.word;
    }
}

TEST_F(SecondBootRule, AppliesByTheTextOfPosition3) {
    setSecondBoot(0x010408);
    const struct {
        const char* name;
        int refusal;
    } rows[] = {{"TKX1", 0},   {"TKX0", 0},   {"TKX-", 0},      {"TKX2", 216}, {"TKX9", 216},
                {"TKXA", 216}, {"TKX_", 216}, {"TKX\xE9", 216}, {"TKX", 0},    {"", 0}};
    for (const auto& row : rows)
        EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetCpu1BL(row.name)), row.refusal) << row.name;
}

TEST_F(TkgRule, WantsANameThatEndsWithTheThirdDigitOfTheApplication) {
    setSecondApp(0x010408);
    EXPECT_EQ(refusal(rules.checkTKGRule("TKG123458")), 0);
    EXPECT_EQ(refusal(rules.checkTKGRule("TKG123457")), 211);
    EXPECT_EQ(refusal(rules.checkTKGRule("TKG1234588")), 211);
    EXPECT_EQ(refusal(rules.checkTKGRule("TKG12345")), 211);
    EXPECT_EQ(refusal(rules.checkTKGRule("")), 211);
}

TEST_F(TkgRule, TakesTheThirdCharacterThoughItIsNotTheThirdNumber) {
    setSecondApp(0x010C03);
    EXPECT_EQ(refusal(rules.checkTKGRule("TKG123452")), 0);
    EXPECT_EQ(refusal(rules.checkTKGRule("TKG123453")), 211);
}

TEST_F(TargetRule, WithAnOverrideWantsTheFamilyAlone) {
    for (const int overrideNumber : {1, -1, 2, 100}) {
        SCOPED_TRACE(overrideNumber);
        EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7XXXXXXXXX", overrideNumber)), 0);
        EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT8_0302", overrideNumber)), 209);
        EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("zt7_0302", overrideNumber)), 209);
        EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("", overrideNumber)), 209);
    }
}

TEST_F(TargetRule, WithoutAnOverrideWantsTheTailFromPosition7Too) {
    setReader("ZT7", "ZT7_0302TAIL");
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7_0302TAIL", 0)), 0);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7XXXX2TAIL", 0)), 0);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7_0303TAIL", 0)), 209);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7_0302TAI", 0)), 209);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7_0302TAILS", 0)), 209);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT8_0302TAIL", 0)), 209);
}

TEST_F(TargetRule, HasNoTailInNamesThatEndBeforeIt) {
    setReader("ZT7", "ZT7_03");
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7_039", 0)), 0);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7_0399", 0)), 209);
}

TEST_F(TargetRule, ComparesTheReadersNameAsItIsTold) {
    setReader("zt7", "zt7_0302");
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw("ZT7_0302", 1)), 209);
}

TEST_F(TkaRule, BoundIsVersion148AsText) {
    for (const char* const name : {"TKX1_0102TKA", "TKX1_0102TKB", "TKX1_0102TKCXY"})
        for (const Row row : {Row{"148", 0},
                              {"147", 212},
                              {"1123", 212},
                              {"149", 0},
                              {"150", 0},
                              {"152", 0},
                              {"000", 212},
                              {"2", 0},
                              {"1510", 0}})
            EXPECT_EQ(refusal(rules.checkForTKATKBTKC(" 128", name, row.version)), row.refusal)
                << name << ' ' << row.version;
}

TEST_F(TkaRule, WantsA256KModelForVersion151) {
    EXPECT_EQ(refusal(rules.checkForTKATKBTKC(" 256", "TKX1_0102TKA", "151")), 0);
    for (const char* const ps : {" 128", "256", " 256 ", ""})
        EXPECT_EQ(refusal(rules.checkForTKATKBTKC(ps, "TKX1_0102TKA", "151")), 212) << ps;
}

TEST_F(TkaRule, ConcernsItsCodesAtPosition9Alone) {
    for (const char* const name : {"TKX1_0102TKD", "TKX1_0102TKF", "TKX1_0102TK", "TKX1_0102",
                                   "TKX1_010TKA", "TKX1_01020TKA", "TKX1_0102tka", "TKA", ""})
        EXPECT_EQ(refusal(rules.checkForTKATKBTKC(" 128", name, "000")), 0) << name;
}

TEST_F(TkdRule, BoundIsVersion149AsText) {
    for (const char* const name : {"TKX1_0102TKD", "TKX1_0102TKEX"})
        for (const Row row :
             {Row{"149", 0}, {"148", 214}, {"1490", 0}, {"1123", 214}, {"150", 0}, {"000", 214}})
            EXPECT_EQ(refusal(rules.checkForTKDTKE(" 128", name, row.version)), row.refusal)
                << name << ' ' << row.version;
}

TEST_F(TkdRule, WantsA256KModelForVersion151) {
    EXPECT_EQ(refusal(rules.checkForTKDTKE(" 256", "TKX1_0102TKD", "151")), 0);
    EXPECT_EQ(refusal(rules.checkForTKDTKE(" 128", "TKX1_0102TKE", "151")), 214);
}

TEST_F(TkdRule, ConcernsItsCodesAtPosition9Alone) {
    for (const char* const name : {"TKX1_0102TKA", "TKX1_0102TKF", "TKX1_010TKD", "TKX1_0102TK"})
        EXPECT_EQ(refusal(rules.checkForTKDTKE(" 128", name, "000")), 0) << name;
}

TEST_F(TkfRule, BoundIsVersion152AsText) {
    for (const Row row : {Row{"152", 0}, {"151", 215}, {"1511", 215}, {"160", 0}, {"000", 215}})
        EXPECT_EQ(refusal(rules.checkForTKF("TKX1_0102TKF", row.version)), row.refusal)
            << row.version;
    EXPECT_EQ(refusal(rules.checkForTKF("TKX1_0102TKA", "000")), 0);
    EXPECT_EQ(refusal(rules.checkForTKF("TKX1_0102", "000")), 0);
}

TEST_F(CcidRule, BoundIsVersion156AsText) {
    for (const Row row : {Row{"156", 0}, {"155", 210}, {"1559", 210}, {"16", 0}, {"000", 210}})
        EXPECT_EQ(refusal(rules.checkForCCID("TKX1_0106", row.version)), row.refusal)
            << row.version;
}

TEST_F(CcidRule, ConcernsTheDigits06AtPosition7Alone) {
    for (const char* const name : {"TKX1_0160", "TKX1_060", "TKX1_0100", "TKX1_01006", "TKX1_010"})
        EXPECT_EQ(refusal(rules.checkForCCID(name, "000")), 0) << name;
}

TEST_F(Rule256K, BoundIsVersion151AsText) {
    for (const Row row : {Row{"151", 0}, {"150", 213}, {"152", 0}, {"1509", 213}, {"000", 213}})
        EXPECT_EQ(refusal(rules.checkFor256KModels(" 256", row.version)), row.refusal)
            << row.version;
    for (const char* const ps : {"256", " 0256", " 256 ", ""})
        EXPECT_EQ(refusal(rules.checkFor256KModels(ps, "000")), 0) << ps;
}

TEST_F(FormatRule, WantsOneAsTheThirdDigitOfTheApplication) {
    setSecondApp(0x010401);
    EXPECT_EQ(refusal(rules.checkSpecialFormatForTKG("TKX1_0102_____X")), 0);
    setSecondApp(0x010410);
    EXPECT_EQ(refusal(rules.checkSpecialFormatForTKG("TKX1_0102_____X")), 0);
    setSecondApp(0x010402);
    EXPECT_EQ(refusal(rules.checkSpecialFormatForTKG("TKX1_0102_____X")), 217);
    EXPECT_EQ(refusal(rules.checkSpecialFormatForTKG("TKX1_0102_____XYZ")), 217);
}

TEST_F(FormatRule, PassesANameThatDoesNotReachPosition14) {
    for (const char* const name : {"TKX1_0102____X", "TKX1_0102______X", "TKX1_0102_____x", ""})
        EXPECT_EQ(refusal(rules.checkSpecialFormatForTKG(name)), 0) << name;
}

// Each row remedies what the row above was refused for.
TEST_F(RuleChain, IsToldByTheFirstRuleThatRefuses) {
    const struct {
        const char* name;
        const char* ps;
        std::uint32_t secondBoot, current;
        int refusal;
    } rows[] = {{"TKX2_0106TKA__X", " 256", 0x010408, 0x010407, 216},
                {"TKX2_0106TKA__X", " 256", 0x010409, 0x010407, 212},
                {"TKX2_0106TKD__X", " 256", 0x010409, 0x010407, 214},
                {"TKX2_0106TKF__X", " 256", 0x010409, 0x010407, 215},
                {"TKX2_0106___00X", " 256", 0x010409, 0x010407, 210},
                {"TKX2_0100___00X", " 256", 0x010409, 0x010407, 213},
                {"TKX2_0100___00X", " 128", 0x010409, 0x010407, 217},
                {"TKX2_0100___00-", " 128", 0x010409, 0x010407, 0}};
    for (const auto& row : rows) {
        setSecondBoot(row.secondBoot);
        setCurrent(row.current);
        EXPECT_EQ(refusal(rules.checkRule1(row.name, row.ps)), row.refusal) << row.name;
    }
}

TEST_F(RuleChain, RefusesATkfProductBelow152ThoughTheModelIsA256KOne) {
    setCurrent(0x010501);
    EXPECT_EQ(refusal(rules.checkRule1("TKX1_0100TKF", " 256")), 215);
}

TEST_F(RuleChain, IsSkippedByTwoModels) {
    for (const char* const part : {"MDL-4Qz2BzT", "MDL-4Qz1BzT"}) {
        setReader(part, "ZT7_0302");
        EXPECT_EQ(refusal(rules.checkRule1("TKX2_0106TKA__X", " 256")), 0) << part;
    }
    for (const char* const part : {"MDL-4Qz3BzT", "MDL-4Qz1BzTX", "mdl-4Qz1BzT", "MDL", ""}) {
        setReader(part, "ZT7_0302");
        EXPECT_EQ(refusal(rules.checkRule1("TKX2_0106TKA__X", " 256")), 212) << part;
    }
}

TEST_F(RuleChain, OfAReaderWithoutVersionsRefusesWhateverBearsAMark) {
    DevDat[0].iTagPlusState = 1;
    setCurrent(0x020202);
    EXPECT_EQ(refusal(rules.checkRule1("TKX2_0100TKA", " 128")), 212);
    EXPECT_EQ(refusal(rules.checkRule1("TKX2_0100TKE", " 128")), 214);
    EXPECT_EQ(refusal(rules.checkRule1("TKX2_0100TKF", " 128")), 215);
    EXPECT_EQ(refusal(rules.checkRule1("TKX2_0106___", " 128")), 210);
    EXPECT_EQ(refusal(rules.checkRule1("TKX2_0100___", " 256")), 213);
    EXPECT_EQ(refusal(rules.checkRule1("TKX2_0100_____X", " 128")), 217);
    EXPECT_EQ(refusal(rules.checkRule1("TKX2_0100___", " 128")), 0);
}

TEST_F(RuleChain, StaysInsideARecordThatAnApplicationFilledToItsEnd) {
    std::memset(DevDat[0].szPartNum, 'P', sizeof DevDat[0].szPartNum);
    std::memset(DevDat[0].szFWFile, 'F', sizeof DevDat[0].szFWFile);
    std::memset(DevDat[0].szFullFWVer, 'V', sizeof DevDat[0].szFullFWVer);
    EXPECT_EQ(refusal(rules.checkRule1("TKX1_0100___", " 128")), 0);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw(std::string(65, 'F'), 0)), 0);
    EXPECT_EQ(refusal(rules.checkCurrentFwWithTargetFw(std::string(66, 'F'), 0)), 209);
}
