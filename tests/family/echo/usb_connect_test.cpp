// SPDX-License-Identifier: MIT
#include "family/echo/echo.h"
#include "tests/support/library_test.h"

using namespace zel::test;

namespace {

class EchoConnect : public LibraryTest {
protected:
    ~EchoConnect() override { iDevsFnd = 0; }
};

char name[] = "sensor";

} // namespace

TEST_F(EchoConnect, GivesAFoundSensorARecord) {
    DevDat[0].iDevType = 1;
    zelecho_FoundDevice(name, nullptr, -1);
    const tsDevDat& record = DevDat[0];
    EXPECT_EQ(record.Echo.bEchoOpen, 1U);
    EXPECT_EQ(record.bTagOpen, 0U);
    EXPECT_EQ(record.Band.bBandOpen, 0U);
    EXPECT_EQ(record.iProduct, 4U);
    EXPECT_EQ(record.iDevType, 0);
    EXPECT_EQ(record.iVidPidIdx, -1);
    EXPECT_STREQ(record.szDevName, "sensor");
    EXPECT_EQ(GetDevCnt(), 1);
}

// The scan of this transport answers for proximity readers alone.
TEST_F(EchoConnect, FindsNoneOnUsbWhateverIsAttached) {
    plugReader({0x8E4A, 0x9D2A, "sensor"});
    lLastCnctErr = 0x10000;
    EXPECT_EQ(zelecho_USBConnect(), 0);
    EXPECT_EQ(zelecho_USBDeviceConnect(0x8E4A, 0x9D2A, nullptr), -1);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(EchoConnect, EndsOnTheLastDeviceEvenWhenItFoundNone) {
    iDevsFnd = 3;
    EXPECT_EQ(zelecho_USBConnect(), 0);
    EXPECT_EQ(GetActDev(), 2);
}

TEST_F(EchoConnect, OnAnEmptyTableEndsOnDeviceZero) {
    iActDev = 5;
    EXPECT_EQ(zelecho_USBConnect(), 0);
    EXPECT_EQ(GetActDev(), 0);
}

TEST_F(EchoConnect, HasASecondNameForItself) {
    iDevsFnd = 3;
    EXPECT_EQ(zelecho_usbConnect(), 0);
    EXPECT_EQ(GetActDev(), 2);
}

TEST_F(EchoConnect, HasNoSerialForm) {
    SetDevTypeSrch(1);
    EXPECT_EQ(zelecho_USBConnect(), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
}
