// SPDX-License-Identifier: MIT
#include "family/band/band.h"
#include "tests/support/library_test.h"

using namespace zel::test;

namespace {

class BandConnect : public LibraryTest {
protected:
    ~BandConnect() override { iDevsFnd = 0; }
};

char name[] = "stripe";

} // namespace

TEST_F(BandConnect, GivesAFoundReaderARecord) {
    DevDat[0].iDevType = 1;
    zelband_FoundDevice(name, nullptr, 4);
    const tsDevDat& record = DevDat[0];
    EXPECT_EQ(record.Band.bBandOpen, 1U);
    EXPECT_EQ(record.bTagOpen, 0U);
    EXPECT_EQ(record.iProduct, 2U);
    EXPECT_EQ(record.iDevType, 0);
    EXPECT_EQ(record.iVidPidIdx, 4);
    EXPECT_STREQ(record.szDevName, "stripe");
    EXPECT_EQ(record.hDev, nullptr);
    EXPECT_EQ(cbIndex, 1);
    EXPECT_EQ(GetDevCnt(), 1);
}

TEST_F(BandConnect, MarksNoKeyboardlessReader) {
    setFilterRow(0, 0x5A3E, 0x9D22);
    zelband_FoundDevice(name, nullptr, 0);
    EXPECT_EQ(DevDat[0].bTagAdv, 0U);
}

TEST_F(BandConnect, TakesNoRecordOfAFullTable) {
    iDevsFnd = 127;
    zelband_FoundDevice(name, nullptr, -1);
    EXPECT_EQ(GetDevCnt(), 127);
    EXPECT_EQ(DevDat[0].Band.bBandOpen, 0U);
}

// The scan of this transport answers for proximity readers alone.
TEST_F(BandConnect, FindsNoneOnUsbWhateverIsAttached) {
    plugReader({0x5A3E, 0x9D2B, "stripe"});
    lLastCnctErr = 0x10000;
    EXPECT_EQ(zelband_USBConnect(), 0);
    EXPECT_EQ(zelband_USBDeviceConnect(0x5A3E, 0x9D2B, nullptr), -1);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(BandConnect, RefusesWhileAFoundRecordIsSuchAReader) {
    zelband_FoundDevice(name, nullptr, -1);
    EXPECT_EQ(zelband_USBConnect(), 0);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_EQ(GetDevCnt(), 1);
    lLastCnctErr = 0;
}

TEST_F(BandConnect, LooksAtRecordsInUseOnly) {
    DevDat[1].Band.bBandOpen = 1;
    iDevsFnd = 1;
    EXPECT_EQ(zelband_USBConnect(), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
}
