// SPDX-License-Identifier: MIT
// The LED flags of the presence sensor in the library's copy of its settings.
#include "family/echo/echo.h"
#include "tests/support/library_test.h"

using namespace zel::test;

namespace {

// Two sensors, the second one active.
class EchoLed : public LibraryTest {
protected:
    EchoLed() {
        iDevsFnd = 2;
        iActDev = 1;
        DevDat[0].iProduct = DevDat[1].iProduct = 4;
    }
    ~EchoLed() override { iDevsFnd = 0; }

    static short& flagsOf(int device) { return DevDat[device].Echo.sSonarParms.LEDFlagsS; }
};

} // namespace

TEST_F(EchoLed, ReadsTheFlagsOfTheActiveDevice) {
    flagsOf(0) = 1;
    flagsOf(1) = 6;
    EXPECT_EQ(zelecho_GetLEDCtrl(), 6);
}

TEST_F(EchoLed, ReadsTheFlagsWithTheirSign) {
    flagsOf(1) = -2;
    EXPECT_EQ(zelecho_GetLEDCtrl(), -2);
}

TEST_F(EchoLed, ReadsMinusOneWithNoActiveDevice) {
    flagsOf(0) = flagsOf(1) = 5;
    iActDev = 2;
    EXPECT_EQ(zelecho_GetLEDCtrl(), -1);
    iActDev = -1;
    EXPECT_EQ(zelecho_GetLEDCtrl(), -1);
}

TEST_F(EchoLed, StoresTheFlagsInTheActiveDeviceAlone) {
    EXPECT_EQ(zelecho_SetLEDCtrl(5), 5);
    EXPECT_EQ(flagsOf(0), 0);
    EXPECT_EQ(flagsOf(1), 5);
}

TEST_F(EchoLed, StoresAnyFlagsAndAnswersWithTheirSign) {
    EXPECT_EQ(zelecho_SetLEDCtrl(-300), -300);
    EXPECT_EQ(flagsOf(1), -300);
}

TEST_F(EchoLed, StoresNothingWithNoActiveDevice) {
    iActDev = 2;
    EXPECT_EQ(zelecho_SetLEDCtrl(5), 0);
    EXPECT_EQ(flagsOf(0), 0) << "the record that stands in for a lost index";
    EXPECT_EQ(DevDat[2].Echo.sSonarParms.LEDFlagsS, 0);
}

TEST_F(EchoLed, MarksNothingForWriting) {
    zelecho_SetLEDCtrl(5);
    const tsEcho& echo = DevDat[1].Echo;
    EXPECT_EQ(echo.bDirtySonar | echo.bDirtyWalkAway | echo.bDirtyWalkUp | echo.bDirtyIdle, 0U);
    EXPECT_EQ(bus().takeTrace(), "");
}

// The settings of a sensor that were already marked stay marked.
TEST_F(EchoLed, KeepsAMarkThatStands) {
    DevDat[1].Echo.bDirtySonar = 1;
    zelecho_SetLEDCtrl(5);
    EXPECT_EQ(DevDat[1].Echo.bDirtySonar, 1U);
}
