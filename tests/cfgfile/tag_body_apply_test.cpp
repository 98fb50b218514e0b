// SPDX-License-Identifier: MIT
// What of a file's settings reaches the record, by which calls.
#include "tests/cfgfile/template_test.h"
#include "tests/family/tag/tag_record.h"

using namespace zel::test;

namespace {

class TemplateSettings : public TagRecordTest {
protected:
    TemplateSettings() {
        config().bCfgValid = 1;
        config().sIDBitCnts = {1, 1, 16, 26, 0, 0, 0, 0};
        device().lLastErr = kUntouched;
    }

    static void read(const std::string& text) { EXPECT_EQ(reading(text, ReadFCfgBody), 1); }

    static void readBytes(const std::string& bytes) {
        read("BEGIN sFldSepData\n" + bytes + "\nEND sFldSepData\n");
    }

    static constexpr std::int64_t kUntouched = 0x77;
};

struct Change {
    const char* line;
    const char* marks;
    bool clearsError; // the options have no error word
};

constexpr Change kChanges[] = {
    {"AZERTYShiftlock = 1", "Ext", false}, {"ExtendedPrecisionMath = 1", "Ext", false},
    {"iIDBitCnt = 17", "IDFrmt1", true},   {"iPad7 = 1", "IDFrmt1", true},
    {"iBitStrmTO = 8", "Time", true},      {"bSndFac = 1", "IDFrmt1", true},
    {"bDspHex = 1", "IDFrmt2", true},      {"isASCIIpresent = 1", "IDFrmt2", true},
    {"bUseNumKP = 1", "Time", true},       {"iELDelim = 1", "IDFrmt1 Ext", true},
    {"iLeadChr1 = 1", "IDFrmt2", true},    {"iTrailChr1 = 1", "IDFrmt2", true},
    {"iRedLEDState = 1", "IDFrmt2", true}, {"iPad3 = 1", "IDFrmt2", true},
    {"iRelayState = 1", "IDFrmt2", true},  {"iPad0 = 1", "IDFrmt2", true},
};

// Two settings of which at least one is refused.
struct Order {
    const char* earlier;
    const char* later;
    std::int64_t error; // in the end
};

constexpr std::int64_t kSet = ZELTAGAPI_ERR_SET;
constexpr Order kOrders[] = {
    {"iIDBitCnt = 300", "iBitStrmTO = 2000", kSet | 0x1030},
    {"iBitStrmTO = 2000", "bSndFac = 1", 0},
    {"iBitStrmTO = 2000", "bDspHex = 1", 0},
    {"iBitStrmTO = 2000", "bUseNumKP = 1", 0},
    {"bSndFac = 1", "iELDelim = 256", kSet | 0x1021},
    {"bDspHex = 1", "iELDelim = 256", kSet | 0x1021},
    {"bUseNumKP = 1", "iELDelim = 256", kSet | 0x1021},
    {"iELDelim = 256", "iLeadChrCnt = 4", kSet | 0x1050},
    {"iLeadChrCnt = 4", "iTrailChr0 = 1", 0},
    {"iTrailChrCnt = 4", "iRedLEDState = 1", 0},
    {"iTrailChrCnt = 4", "iRelayState = 1", 0},
};

} // namespace

TEST_F(TemplateSettings, MarkTheBlockOfWhatDiffers) {
    const tsTagCfg before = config();
    for (const Change& change : kChanges) {
        config() = before;
        device().lLastErr = kUntouched;
        read(change.line);
        EXPECT_EQ(dirtyFlags(config()), change.marks) << change.line;
        EXPECT_EQ(device().lLastErr, change.clearsError ? 0 : kUntouched) << change.line;
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(TemplateSettings, ThatAreThoseOfTheRecordCallNothing) {
    const tsTagCfg before = config();
    read("iIDBitCnt = 16\niTotalBitCnt = 26\nbSndFac = 0\nAZERTYShiftlock = 0\n");
    EXPECT_TRUE(isSame(config(), before));
    EXPECT_EQ(device().lLastErr, kUntouched);
}

TEST_F(TemplateSettings, ThatAreRefusedLeaveTheirRecordAlone) {
    const sIDBitCnts counts = config().sIDBitCnts;
    read("iIDBitCnt = 300\niTrailParityBitCnt = 2\niTrailChr1 = 3\n");
    EXPECT_TRUE(isSame(config().sIDBitCnts, counts));
    EXPECT_EQ(config().sIDDispParms3.iTrailChr1, 3);
    EXPECT_EQ(device().lLastErr, 0) << "a later record's success";
}

// The error word is that of the later call; one that succeeds clears it.
TEST_F(TemplateSettings, AreSetInTheOrderOfTheCalls) {
    for (const Order& order : kOrders)
        for (const auto& [first, second] :
             {std::pair{order.earlier, order.later}, std::pair{order.later, order.earlier}}) {
            config().sIDBitCnts = {1, 1, 16, 26, 0, 0, 0, 0};
            config().sCfgFlags = {};
            config().sCfgFlags2 = {};
            config().sCfgFlags3 = {};
            config().sIDDispParms3 = {};
            config().sLEDCtrl = {};
            config().sBprRlyCtrl = {};
            read(std::string(first) + '\n' + second);
            EXPECT_EQ(device().lLastErr, order.error) << order.earlier << ", " << order.later;
        }
}

// The flags' own record carries that byte.
TEST_F(TemplateSettings, OfTheThirdFlagsComeByTheirNamesOnly) {
    read("iTPCfgFlg3 = 255\n");
    EXPECT_EQ(config().sTimeParms.iTPCfgFlg3, 0);
    EXPECT_EQ(dirtyFlags(config()), "Time");
    read("bUseNumKP = 1\niTPCfgFlg3 = 1\n");
    EXPECT_EQ(config().sTimeParms.iTPCfgFlg3, 0x80);
}

TEST_F(TemplateSettings, OfAnOptionAreSetAsAShort) {
    read("AZERTYShiftlock = 65535\n");
    EXPECT_EQ(config().AZERTYShiftLock, 0xFFFFFFFFU);
}

TEST_F(TemplateSettings, HoldAnOutputFormatForTheExtendedFormAlone) {
    config().uSFD.bytes[0] = 0x24;
    read("iExOutputFormat = 1\n");
    EXPECT_EQ(config().sIDDispParms.iExOutputFormat, 1);
    for (const std::uint8_t form : std::initializer_list<std::uint8_t>{0, 0x0C, 0x34, 0xFF}) {
        config().sIDDispParms.iExOutputFormat = 1;
        config().uSFD.bytes[0] = form;
        read("iExOutputFormat = 2\n");
        EXPECT_EQ(config().sIDDispParms.iExOutputFormat, 0) << int{form};
    }
}

// Whether the file names the format or not.
TEST_F(TemplateSettings, ClearTheOutputFormatOfAnotherForm) {
    config().sIDDispParms.iExOutputFormat = 1;
    read("\n");
    EXPECT_EQ(config().sIDDispParms.iExOutputFormat, 0);
    EXPECT_EQ(dirtyFlags(config()), "IDFrmt1 Ext");
}

// The record's form decides, not the file's.
TEST_F(TemplateSettings, HoldNoOutputFormatForAFormThatTheFileAlone) {
    config().uSFD.bytes[0] = 0x0C;
    read("iExOutputFormat = 1\nBEGIN sFldSepData\n24\nEND sFldSepData\n");
    EXPECT_EQ(config().sIDDispParms.iExOutputFormat, 0);
}

TEST_F(TemplateSettings, ChangeTheContentsOfFieldData) {
    config().uSFD.bytes[0] = 0x0C;
    readBytes("0C.11.22");
    EXPECT_EQ(config().uSFD.bytes[1], 0x11);
    EXPECT_EQ(config().uSFD.bytes[2], 0x22);
    EXPECT_EQ(dirtyFlags(config()), "SepFld");
}

TEST_F(TemplateSettings, NeverChangeTheFormOfFieldData) {
    for (const std::uint8_t form : std::initializer_list<std::uint8_t>{0, 0x0C, 0x24}) {
        config().uSFD = {{form, 9}};
        for (const char* bytes : {"00.01", "2C.01", "FF.01"}) {
            readBytes(bytes);
            EXPECT_EQ(config().uSFD.bytes[0], form);
            EXPECT_EQ(config().uSFD.bytes[1], 9) << bytes << " over " << int{form};
        }
    }
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(TemplateSettings, MarkNoFieldDataThatAreTheSame) {
    config().uSFD = {{0x0C, 9}};
    readBytes("0C.09.00");
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(TemplateSettings, ChangeNoFieldDataOfARecordThatWasNeverRead) {
    config().bCfgValid = 0;
    config().uSFD.bytes[0] = 0x0C;
    readBytes("0C.09");
    EXPECT_EQ(config().uSFD.bytes[1], 0);
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(TemplateSettings, GoToTheActiveConfiguration) {
    device().iTagPlusState = 2;
    device().iMaxConfig = 2;
    device().iActConfig = 1;
    read("bSndFac = 1\n");
    EXPECT_EQ(device().Cfg[0].sCfgFlags.bSndFac, 0);
    EXPECT_EQ(device().Cfg[1].sCfgFlags.bSndFac, 1);
}

TEST_F(TemplateSettings, ReachNoDeviceOfAnotherProduct) {
    device().iProduct = ZELTAGAPI_ZELBAND;
    read("bSndFac = 1\nAZERTYShiftlock = 1\n");
    EXPECT_EQ(config().sCfgFlags.bSndFac, 0);
    EXPECT_EQ(config().AZERTYShiftLock, 0U);
}
