// SPDX-License-Identifier: MIT
// Calls on single words that do more or less than the others, and what they reach on other
// products.
#include "tests/api/accessors_test.h"

using namespace zel::test;

namespace {

class AccessorDepartures : public Accessors {
protected:
    AccessorDepartures() { connectAndRead(); }
};

// A record of another product that reaches no device; its Cfg holds legalWords() everywhere.
class AccessorsOfOtherProducts : public Accessors {
protected:
    AccessorsOfOtherProducts() {
        iDevsFnd = 1;
        SetUnsupportedProductErrorCode(-7);
        fill(config());
    }
    ~AccessorsOfOtherProducts() override { iDevsFnd = 0; }

    static void fill(tsTagCfg& configuration) {
        for (const RecordRow& record : kAccessorRows)
            record.store(configuration, legalWords(record));
    }

    static void activate(std::uint32_t product) { DevDat[0].iProduct = product; }

    // What the gets of a record's words yield.
    static Words read(const std::string& record) {
        Words words = {};
        forEachPair("", [&](const Pair& pair) {
            if (pair.record.is(record))
                words[pair.word] = static_cast<short>(pair.get());
        });
        return words;
    }

    // Sets each word of a record but the one at `spared`, and tells Cfg's record afterwards.
    static Words setAllBut(std::size_t spared, const std::string& record) {
        Words content = {};
        forEachPair("", [&](const Pair& pair) {
            if (!pair.record.is(record))
                return;
            if (pair.word != spared) {
                EXPECT_EQ(pair.set(9), 1);
            }
            content = pair.record.load(config());
        });
        return content;
    }
};

} // namespace

TEST_F(AccessorDepartures, FeatureByteComesOutWithItsLowSevenBitsSet) {
    EXPECT_EQ(setTimeParms_ExFeatures01(0), 1);
    EXPECT_EQ(getTimeParms_ExFeatures01(), 127);
    EXPECT_EQ(setTimeParms_ExFeatures01(0x80), 1);
    EXPECT_EQ(getTimeParms_ExFeatures01(), 255);
    EXPECT_EQ(setTimeParms_ExFeatures01(1), 1);
    EXPECT_EQ(getTimeParms_ExFeatures01(), 127) << "the old bit 7 is lost";
    EXPECT_EQ(setTimeParms_ExFeatures01(-256), 1);
    EXPECT_EQ(getTimeParms_ExFeatures01(), -129);
}

TEST_F(AccessorDepartures, FlagByteAmongTheTimesStaysWhateverIsSet) {
    config().sTimeParms.iTPCfgFlg3 = 0x12;
    EXPECT_EQ(setTimeParms_iTPCfgFlg3(255), 1);
    EXPECT_EQ(getTimeParms_iTPCfgFlg3(), 0x12);
}

TEST_F(AccessorDepartures, ThirdFlagsRebuildThatByteAndMarkItsBlock) {
    config().sCfgFlags3 = {};
    config().sTimeParms.iTPCfgFlg3 = 1;
    EXPECT_EQ(setCfgFlags3_bUseNumKP(1), 1);
    EXPECT_EQ(getTimeParms_iTPCfgFlg3(), 0x80);
    EXPECT_EQ(setCfgFlags3_bUse64Bit(1), 1);
    EXPECT_EQ(getTimeParms_iTPCfgFlg3(), 0x82);
    EXPECT_EQ(marks(), " 1");
}

TEST_F(AccessorDepartures, BootFlagTravelsElsewhereAndMarksThatBlockNevertheless) {
    config().sCfgFlags3 = {};
    config().sTimeParms.iTPCfgFlg3 = 1;
    EXPECT_EQ(setCfgFlags3_bNotBootDev(1), 1);
    EXPECT_EQ(getTimeParms_iTPCfgFlg3(), 0);
    EXPECT_EQ(marks(), " 1");
}

// Byte 0 of block 2 has the red LED in bit 0 and the green one in bit 1.
TEST_F(AccessorDepartures, VolatileLedsGoToTheReaderWithEachSet) {
    EXPECT_EQ(setLEDCtrl_bVolatile(1), 1);
    EXPECT_EQ(setLEDCtrl_iRedLEDState(1), 1);
    EXPECT_EQ(setLEDCtrl_iGrnLEDState(1), 1);
    EXPECT_EQ(getLEDCtrl_bVolatile(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 00 00 00 00 00 00 00 00  block 2 data\n"
                                 "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 01 00 00 00 00 00 00 00  block 2 data\n"
                                 "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 03 00 00 00 00 00 00 00  block 2 data\n");
    EXPECT_EQ(marks(), "");
}

// There the relay is bit 2 and the beeper bit 3.
TEST_F(AccessorDepartures, VolatileBeeperAndRelayToo) {
    EXPECT_EQ(setBprRlyCtrl_bVolatile(1), 1);
    EXPECT_EQ(setBprRlyCtrl_iBeeperState(1), 1);
    EXPECT_EQ(bus().takeTrace(), "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 00 00 00 00 00 00 00 00  block 2 data\n"
                                 "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 08 00 00 00 00 00 00 00  block 2 data\n");
    EXPECT_EQ(marks(), "");
}

TEST_F(AccessorDepartures, OutputsThatAreVolatileNoMoreWaitForTheWrite) {
    config().sLEDCtrl.bVolatile = 1;
    EXPECT_EQ(setLEDCtrl_bVolatile(0), 1);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(marks(), " 2");
}

TEST_F(AccessorsOfOtherProducts, StripeReaderHasItsHaltFlagAndOtherwiseWhatTheLibraryHolds) {
    activate(ZELTAGAPI_ZELBAND);
    DevDat[0].Band.HaltKBSend = 1;
    EXPECT_EQ(read("CfgFlags"), (Words{0, 1, 2, 3, 4, 5, 6, 1}));
}

TEST_F(AccessorsOfOtherProducts, SensorHasItsHaltFlagAndOtherwiseWhatTheLibraryHolds) {
    activate(ZELTAGAPI_ZELECHO);
    DevDat[0].Echo.bEchoHalt = 177;
    EXPECT_EQ(read("CfgFlags"), (Words{0, 1, 2, 3, 4, 5, 6, 177}));
}

TEST_F(AccessorsOfOtherProducts, ReadTheActiveConfigurationToo) {
    activate(ZELTAGAPI_ZELBAND);
    DevDat[0].Cfg[1].sCfgFlags.bSndFac = 8;
    DevDat[0].iActConfig = 1;
    EXPECT_EQ(read("CfgFlags"), (Words{0, 0, 0, 8, 0, 0, 0, 0}));
}

TEST_F(AccessorsOfOtherProducts, StripeReaderTakesItsHaltFlagAloneAsZeroOrOne) {
    activate(ZELTAGAPI_ZELBAND);
    EXPECT_EQ(setCfgFlags_bHaltKBSnd(5), 1);
    EXPECT_EQ(DevDat[0].Band.HaltKBSend, 1);
    EXPECT_EQ(setAllBut(7, "CfgFlags"), (Words{0, 1, 2, 3, 4, 5, 6, 7})) << "Cfg stays";
    EXPECT_EQ(DevDat[0].Band.HaltKBSend, 1);
    EXPECT_EQ(marks(), "");
}

TEST_F(AccessorsOfOtherProducts, SensorTakesItsHaltFlagAloneAsTheValueGiven) {
    activate(ZELTAGAPI_ZELECHO);
    EXPECT_EQ(setCfgFlags_bHaltKBSnd(176), 1);
    EXPECT_EQ(DevDat[0].Echo.bEchoHalt, 176U);
    EXPECT_EQ(setAllBut(7, "CfgFlags"), (Words{0, 1, 2, 3, 4, 5, 6, 7})) << "Cfg stays";
    EXPECT_EQ(DevDat[0].Echo.bEchoHalt, 176U);
    EXPECT_EQ(marks(), "");
}

TEST_F(AccessorsOfOtherProducts, StripeReaderHasTheKeypadFlagOfTheThirdFlags) {
    activate(ZELTAGAPI_ZELBAND);
    DevDat[0].Band.UseNumKP = 1;
    EXPECT_EQ(read("CfgFlags3"), (Words{1, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(setCfgFlags3_bUseNumKP(0), 1);
    EXPECT_EQ(DevDat[0].Band.UseNumKP, 0);
}

// Flags 6 are the application's own bit and green.
TEST_F(AccessorsOfOtherProducts, SensorHasThreeWordsOfTheLedsAndOtherwiseWhatTheLibraryHolds) {
    activate(ZELTAGAPI_ZELECHO);
    DevDat[0].Echo.sSonarParms.LEDFlagsS = 6;
    EXPECT_EQ(read("LEDCtrl"), (Words{1, 0, 1, 3, 4, 5, 6, 0}));
    EXPECT_EQ(setLEDCtrl_iRedLEDState(1), 1);
    EXPECT_EQ(DevDat[0].Echo.sSonarParms.LEDFlagsS, 7);
}

TEST_F(AccessorsOfOtherProducts, LedFlagsOutsideTheirRangeAreWhatEachGetYields) {
    activate(ZELTAGAPI_ZELECHO);
    DevDat[0].Echo.sSonarParms.LEDFlagsS = 8;
    EXPECT_EQ(read("LEDCtrl"), (Words{8, 8, 8, 8, 8, 8, 8, 8}));
    EXPECT_EQ(setLEDCtrl_iRedLEDState(1), 8);
    EXPECT_EQ(DevDat[0].Echo.sSonarParms.LEDFlagsS, 8) << "nothing is set";
}

TEST_F(AccessorsOfOtherProducts, RecordsThatAProductLacksYieldTheUnsupportedValue) {
    activate(ZELTAGAPI_ZELECHO);
    EXPECT_EQ(read("CfgFlags2"), (Words{-7, -7, -7, -7, -7, -7, -7, -7}));
    EXPECT_EQ(setCfgFlags2_bDspHex(9), -7);
    EXPECT_EQ(config().sCfgFlags2.bDspHex, 1);
}

TEST_F(AccessorsOfOtherProducts, UnknownProductYieldsTheUnsupportedValueEverywhere) {
    activate(8);
    expectAll(-7);
    EXPECT_EQ(marks(), "");
}
