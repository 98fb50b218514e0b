// SPDX-License-Identifier: MIT
// Records that a magnetic stripe reader and a sensor have a part of.
#include "tests/support/is_same.h"
#include "tests/support/library_test.h"

#include <initializer_list>

using namespace zel::test;

namespace {

// A device of another product that reaches nothing.
class RecordsDispatch : public LibraryTest {
protected:
    explicit RecordsDispatch(std::uint32_t product) {
        iDevsFnd = 1;
        DevDat[0].iProduct = product;
        SetUnsupportedProductErrorCode(-7);
    }
    ~RecordsDispatch() override {
        EXPECT_EQ(bus().takeTrace(), "");
        EXPECT_EQ(DevDat[0].lLastErr, 0);
        iDevsFnd = 0;
    }

    static tsBand& band() { return DevDat[0].Band; }
    static tsEcho& echo() { return DevDat[0].Echo; }
    static short& ledFlags() { return echo().sSonarParms.LEDFlagsS; }
};

class StripeReadersPartOfRecords : public RecordsDispatch {
protected:
    StripeReadersPartOfRecords() : RecordsDispatch(ZELTAGAPI_ZELBAND) {}
};

class SensorsPartOfRecords : public RecordsDispatch {
protected:
    SensorsPartOfRecords() : RecordsDispatch(ZELTAGAPI_ZELECHO) {}
};

constexpr sCfgFlags kFlags = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr sCfgFlags3 kFlags3 = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr sLEDCtrl kLeds = {9, 9, 9, 4, 5, 6, 7, 8};

} // namespace

TEST_F(StripeReadersPartOfRecords, FlagsAreItsHaltFlagAlone) {
    band().HaltKBSend = 1;
    sCfgFlags flags = kFlags;
    EXPECT_EQ(GetFlags(&flags), 1);
    EXPECT_TRUE(isSame(flags, sCfgFlags{1, 2, 3, 4, 5, 6, 7, 1}));
}

TEST_F(StripeReadersPartOfRecords, HaltFlagIsSetToZeroOrOne) {
    for (const short value : std::initializer_list<short>{1, 0, -1, 256}) {
        sCfgFlags flags = {0, 0, 0, 0, 0, 0, 0, value};
        EXPECT_EQ(SetFlags(&flags), 1);
        EXPECT_EQ(band().HaltKBSend, value != 0) << value;
    }
}

TEST_F(StripeReadersPartOfRecords, SetFlagsLeavesTheProximityReadersRecord) {
    sCfgFlags flags = kFlags;
    EXPECT_EQ(SetFlags(&flags), 1);
    EXPECT_TRUE(isSame(DevDat[0].Cfg[0].sCfgFlags, sCfgFlags{}));
    EXPECT_EQ(DevDat[0].Cfg[0].bDirtyIDFrmt1, 0U);
    EXPECT_EQ(echo().bEchoHalt, 0U);
}

TEST_F(StripeReadersPartOfRecords, ThirdFlagsAreItsKeypadFlagAlone) {
    band().UseNumKP = 1;
    sCfgFlags3 flags = {0, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(GetFlags3(&flags), 1);
    EXPECT_TRUE(isSame(flags, kFlags3));
}

TEST_F(StripeReadersPartOfRecords, KeypadFlagIsSetToZeroOrOne) {
    for (const short value : std::initializer_list<short>{1, 0, -1, 256}) {
        sCfgFlags3 flags = {value, 0, 0, 0, 0, 0, 0, 0};
        EXPECT_EQ(SetFlags3(&flags), 1);
        EXPECT_EQ(band().UseNumKP, value != 0) << value;
    }
    EXPECT_EQ(DevDat[0].Cfg[0].bDirtyTime, 0U);
}

TEST_F(StripeReadersPartOfRecords, NullRecordsAreRefused) {
    band().HaltKBSend = band().UseNumKP = 1;
    EXPECT_EQ(GetFlags(nullptr), 0);
    EXPECT_EQ(SetFlags(nullptr), 0);
    EXPECT_EQ(GetFlags3(nullptr), 0);
    EXPECT_EQ(SetFlags3(nullptr), 0);
    EXPECT_EQ(band().HaltKBSend & band().UseNumKP, 1);
}

TEST_F(SensorsPartOfRecords, FlagsAreItsHaltWordAlone) {
    echo().bEchoHalt = 177;
    sCfgFlags flags = kFlags;
    EXPECT_EQ(GetFlags(&flags), 1);
    EXPECT_TRUE(isSame(flags, sCfgFlags{1, 2, 3, 4, 5, 6, 7, 177}));
}

TEST_F(SensorsPartOfRecords, HaltWordIsSetAsGiven) {
    for (const short value : std::initializer_list<short>{176, 177, 1, 0}) {
        sCfgFlags flags = {0, 0, 0, 0, 0, 0, 0, value};
        EXPECT_EQ(SetFlags(&flags), 1);
        EXPECT_EQ(echo().bEchoHalt, static_cast<unsigned>(value));
    }
    EXPECT_EQ(band().HaltKBSend, 0);
    EXPECT_EQ(DevDat[0].Cfg[0].bDirtyIDFrmt1, 0U);
}

TEST_F(SensorsPartOfRecords, SecondAndThirdFlagsAreUnsupported) {
    sCfgFlags2 flags2 = {};
    sCfgFlags3 flags3 = kFlags3;
    EXPECT_EQ(GetFlags2(&flags2), -7);
    EXPECT_EQ(SetFlags2(&flags2), -7);
    EXPECT_EQ(GetFlags3(&flags3), -7);
    EXPECT_EQ(SetFlags3(&flags3), -7);
    EXPECT_TRUE(isSame(flags3, kFlags3));
}

TEST_F(SensorsPartOfRecords, LedFlags6AreTheApplicationsBitAndGreen) {
    ledFlags() = 6;
    sLEDCtrl leds = kLeds;
    EXPECT_EQ(GetLEDCtrl(&leds), 1);
    EXPECT_TRUE(isSame(leds, sLEDCtrl{1, 0, 1, 4, 5, 6, 7, 8}));
}

TEST_F(SensorsPartOfRecords, LedFlagsUpTo7SpreadOverThreeWords) {
    for (short flags = 0; flags < 8; ++flags) {
        ledFlags() = flags;
        sLEDCtrl leds = kLeds;
        EXPECT_EQ(GetLEDCtrl(&leds), 1);
        EXPECT_EQ(leds.iRedLEDState + 2 * leds.bAppCtrlsLED + 4 * leds.iGrnLEDState, flags);
    }
}

TEST_F(SensorsPartOfRecords, OtherLedFlagsAreTheResultAndClearTheThreeWords) {
    for (const short flags : std::initializer_list<short>{8, 15, 32767, -1, -32768}) {
        ledFlags() = flags;
        sLEDCtrl leds = kLeds;
        EXPECT_EQ(GetLEDCtrl(&leds), flags);
        EXPECT_TRUE(isSame(leds, sLEDCtrl{0, 0, 0, 4, 5, 6, 7, 8})) << flags;
    }
}

TEST_F(SensorsPartOfRecords, SetLedsGathersThreeWordsThatArentZero) {
    const struct {
        sLEDCtrl leds;
        short flags;
    } cases[] = {{{0, 0, 0, 9, 9, 9, 9, 9}, 0},
                 {{0, 1, 0, 0, 0, 0, 0, 0}, 1},
                 {{-1, 0, 0, 0, 0, 0, 0, 0}, 2},
                 {{0, 0, 256, 0, 0, 0, 0, 0}, 4},
                 {{5, 6, 7, 0, 0, 0, 0, 1}, 7}};
    for (auto [leds, flags] : cases) {
        EXPECT_EQ(SetLEDCtrl(&leds), 1);
        EXPECT_EQ(ledFlags(), flags);
    }
    EXPECT_EQ(echo().bDirtySonar, 0U);
    EXPECT_TRUE(isSame(DevDat[0].Cfg[0].sLEDCtrl, sLEDCtrl{}));
}

TEST_F(SensorsPartOfRecords, NullRecordsAreRefused) {
    echo().bEchoHalt = 177;
    ledFlags() = 6;
    EXPECT_EQ(GetFlags(nullptr), 0);
    EXPECT_EQ(SetFlags(nullptr), 0);
    EXPECT_EQ(GetLEDCtrl(nullptr), 0);
    EXPECT_EQ(SetLEDCtrl(nullptr), 0);
    EXPECT_EQ(echo().bEchoHalt, 177U);
    EXPECT_EQ(ledFlags(), 6);
}
