// SPDX-License-Identifier: MIT
// Settings outside the ten records, and the two records that can go to the reader at once.
#include "family/tag/services.h"
#include "tests/family/tag/tag_record.h"

using namespace zel::test;

namespace {

class Options : public TagRecordTest {};
class SecurityFlag : public TagRecordTest {};

class VolatileOutputs : public LibraryTest {
protected:
    VolatileOutputs() : reader_(connectReader()) {
        tsTagCfg& config = DevDat[0].Cfg[0];
        config.sCfgFlags2.bUseLeadChrs = 1;
        config.sIDDispParms2 = {1, 'A', 'B', 'C', 0x11, 0x22, 0, 0};
        config.sIDDispParms3 = {1, 'x', 'y', 'z', 0, 0, 0, 0};
    }
    static tsTagCfg& config() { return DevDat[0].Cfg[0]; }

    std::shared_ptr<zel::sim::TagReader> reader_;
};

struct Option {
    int (*get)();
    int (*set)(short);
    std::uint32_t tsTagCfg::*stored;
    int withoutReader;
};

constexpr Option kOptions[] = {
    {GetAZERTYShiftLock, SetAZERTYShiftLock, &tsTagCfg::AZERTYShiftLock, -7},
    {GetExtendedPrecisionMath, SetExtendedPrecisionMath, &tsTagCfg::ExtendedPrecisionMath, -7},
    {Get64BytesInPackets, Set64BytesInPackets, &tsTagCfg::b64BytesInPackets, 0},
    {GetEasyReadMode, SetEasyReadMode, &tsTagCfg::bEasyReadMode, 0},
    {GetPrependCSN, SetPrependCSN, &tsTagCfg::bPrependCSN, 0},
};

} // namespace

TEST_F(Options, HoldTheirValueAndMarkBlockThree) {
    for (const Option& option : kOptions) {
        SCOPED_TRACE(&option - kOptions);
        config() = {};
        device().lLastErr = 0x77;
        EXPECT_EQ(option.set(0x1234), 1);
        EXPECT_EQ(config().*option.stored, 0x1234U);
        EXPECT_EQ(option.get(), 0x1234);
        EXPECT_EQ(dirtyFlags(config()), "Ext");
        EXPECT_EQ(device().lLastErr, 0x77) << "an option has no error word";
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Options, StandEachByItself) {
    short value = 1;
    for (const Option& option : kOptions)
        option.set(value++);
    value = 1;
    for (const Option& option : kOptions)
        EXPECT_EQ(option.get(), value++);
}

TEST_F(Options, ComeBackWithTheirSign) {
    for (const Option& option : kOptions) {
        SCOPED_TRACE(&option - kOptions);
        option.set(-2);
        EXPECT_EQ(option.get(), -2);
    }
}

TEST_F(Options, AreThoseOfTheActiveConfiguration) {
    for (const Option& option : kOptions) {
        SCOPED_TRACE(&option - kOptions);
        device().iActConfig = 3;
        option.set(1);
        EXPECT_EQ(device().Cfg[3].*option.stored, 1U);
        device().iActConfig = 0;
        EXPECT_EQ(option.get(), 0);
    }
    EXPECT_EQ(dirtyFlags(device().Cfg[0]), "");
}

TEST_F(Options, WithoutAProximityReaderAnswerTheUnsupportedValueOrZero) {
    SetUnsupportedProductErrorCode(-7);
    config() = {};
    device().iProduct = ZELTAGAPI_ZELBAND;
    for (const Option& option : kOptions) {
        SCOPED_TRACE(&option - kOptions);
        EXPECT_EQ(option.set(1), option.withoutReader);
        EXPECT_EQ(option.get(), option.withoutReader);
        EXPECT_EQ(config().*option.stored, 0U);
    }
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(SecurityFlag, IsTheTopBitOfByte126) {
    std::memset(config().uSFD.bytes, 0xFF, 128);
    EXPECT_EQ(GetEnhanceSecurityFlag(), 128);
    config().uSFD.bytes[126] = 0x7F;
    EXPECT_EQ(GetEnhanceSecurityFlag(), 0);
}

TEST_F(SecurityFlag, TakesItsWholeByteAndMarksTheFieldData) {
    std::memset(config().uSFD.bytes, 0x55, 128);
    uSFD expected = config().uSFD;
    for (const short value : std::initializer_list<short>{1, 256, -1}) {
        SetEnhanceSecurityFlag(value);
        expected.bytes[126] = 128;
        EXPECT_TRUE(isSame(config().uSFD, expected)) << value;
        SetEnhanceSecurityFlag(0);
        expected.bytes[126] = 0;
        EXPECT_TRUE(isSame(config().uSFD, expected)) << value;
    }
    EXPECT_EQ(dirtyFlags(config()), "SepFld");
}

TEST_F(SecurityFlag, IsThatOfConfigurationZeroWhicheverIsActive) {
    device().iActConfig = 4;
    SetEnhanceSecurityFlag(1);
    EXPECT_EQ(GetEnhanceSecurityFlag(), 128);
    EXPECT_EQ(device().Cfg[0].uSFD.bytes[126], 128);
    EXPECT_EQ(device().Cfg[4].uSFD.bytes[126], 0);
    EXPECT_EQ(dirtyFlags(device().Cfg[0]), "SepFld");
    EXPECT_EQ(dirtyFlags(device().Cfg[4]), "");
}

TEST_F(SecurityFlag, WithoutAProximityReaderIsTheUnsupportedValueAndChangesNothing) {
    SetUnsupportedProductErrorCode(-7);
    iDevsFnd = 0;
    SetEnhanceSecurityFlag(1);
    EXPECT_EQ(GetEnhanceSecurityFlag(), -7);
    EXPECT_EQ(config().uSFD.bytes[126], 0);
    EXPECT_EQ(dirtyFlags(config()), "");
}

// Red and the application's control on; one lead character 'A', one trail character 'x'.
TEST_F(VolatileOutputs, OfTheLedsGoToTheReaderAtOnceAndMarkNothing) {
    sLEDCtrl leds = {1, 1, 0, 0, 0, 0, 0, 1};
    EXPECT_EQ(SetLEDCtrl(&leds), 1);
    EXPECT_EQ(bus().takeTrace(), "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 01 03 11 22 11 41 78 00  block 2 data\n");
    EXPECT_TRUE(isSame(config().sLEDCtrl, leds));
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(VolatileOutputs, OfBeeperAndRelayGoToTheReaderAtOnceAndMarkNothing) {
    sBprRlyCtrl outputs = {0, 1, 1, 0, 0, 0, 0, -1};
    EXPECT_EQ(SetBprRlyCtrl(&outputs), 1);
    EXPECT_EQ(bus().takeTrace(), "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 0C 01 11 22 11 41 78 00  block 2 data\n");
    EXPECT_TRUE(isSame(config().sBprRlyCtrl, outputs));
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(VolatileOutputs, LeaveAnEarlierMarkAsItIs) {
    config().bDirtyIDFrmt2 = 1;
    sLEDCtrl leds = {1, 1, 0, 0, 0, 0, 0, 1};
    sBprRlyCtrl outputs = {0, 1, 1, 0, 0, 0, 0, 1};
    SetLEDCtrl(&leds);
    SetBprRlyCtrl(&outputs);
    EXPECT_EQ(dirtyFlags(config()), "IDFrmt2");
}

TEST_F(VolatileOutputs, SucceedThoughTheWriteFails) {
    sLEDCtrl leds = {1, 1, 0, 0, 0, 0, 0, 1};
    sBprRlyCtrl outputs = {0, 1, 1, 0, 0, 0, 0, 1};
    for (const int exchange : {1, 2}) {
        bus().failExchange(0, exchange);
        EXPECT_EQ(SetLEDCtrl(&leds), 1) << exchange;
        EXPECT_EQ(GetLastLibErr(), 0) << exchange;
        bus().failExchange(0, exchange);
        EXPECT_EQ(SetBprRlyCtrl(&outputs), 1) << exchange;
        EXPECT_EQ(GetLastLibErr(), 0) << exchange;
    }
    EXPECT_TRUE(isSame(config().sLEDCtrl, leds));
    EXPECT_TRUE(isSame(config().sBprRlyCtrl, outputs));
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(VolatileOutputs, AskTheNewRecordNotTheStoredOne) {
    config().sLEDCtrl.bVolatile = 1;
    sLEDCtrl leds = {1, 1, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(SetLEDCtrl(&leds), 1);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(dirtyFlags(config()), "IDFrmt2");
}
