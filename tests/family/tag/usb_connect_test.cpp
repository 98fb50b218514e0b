// SPDX-License-Identifier: MIT
#include "family/tag/tag.h"
#include "tests/support/library_test.h"

#include <cstring>

using namespace zel::test;

namespace {

class FoundReader : public LibraryTest {};
class UsbScan : public LibraryTest {};
class FullTable : public LibraryTest {};

} // namespace

TEST_F(FoundReader, TakesARecord) {
    plugReader("/dev/hidraw7");
    EXPECT_EQ(connect(), 1);
    const tsDevDat& record = DevDat[0];
    EXPECT_EQ(record.bTagOpen, 1U);
    EXPECT_EQ(record.iProduct, 1U);
    EXPECT_EQ(record.iDevType, 0);
    EXPECT_EQ(record.iVidPidIdx, -1);
    EXPECT_EQ(record.bTagAdv, 0U);
    EXPECT_STREQ(record.szDevName, "/dev/hidraw7");
    EXPECT_EQ(cbIndex, 1);
    EXPECT_EQ(GetActDev(), 0);
    EXPECT_EQ(bus().takeTrace(), "open /dev/hidraw7\n");
}

TEST_F(FoundReader, OfTheFilterListKeepsItsRow) {
    setFilterRow(0, 0x7C1F, 0x9D29);
    setFilterRow(1, 0x5A3E, 0x9D21);
    plugReader({0x5A3E, 0x9D21, "listed"});
    connect();
    EXPECT_EQ(DevDat[0].iVidPidIdx, 1);
    EXPECT_EQ(DevDat[0].bTagAdv, 0U);
}

TEST_F(FoundReader, OfTheKeyboardlessKindIsMarked) {
    setFilterRow(0, 0x5A3E, 0x9D22);
    plugReader({0x5A3E, 0x9D22, "adv"});
    connect();
    EXPECT_EQ(DevDat[0].bTagAdv, 1U);
    EXPECT_NE(DevDat[0].hDev, nullptr);
}

TEST_F(FoundReader, WithoutAHandleHoldsZero) {
    char name[] = "arrived";
    zeltag_FoundDevice(name, nullptr, -1);
    EXPECT_EQ(DevDat[0].hDev, nullptr);
    EXPECT_EQ(GetDevCnt(), 1);
}

TEST_F(FoundReader, WithARowOutsideTheListIsAPlainOne) {
    char name[] = "row";
    for (const int row : {-1, 51, 1 << 30, -(1 << 30)})
        zeltag_FoundDevice(name, nullptr, row);
    EXPECT_EQ(DevDat[0].bTagAdv | DevDat[1].bTagAdv | DevDat[2].bTagAdv | DevDat[3].bTagAdv, 0U);
}

TEST_F(FoundReader, NameIsCutAt511Characters) {
    std::string name(600, 'n');
    zeltag_FoundDevice(name.data(), nullptr, -1);
    EXPECT_EQ(std::strlen(DevDat[0].szDevName), 511U);
}

TEST_F(FoundReader, ReplacesTheNameOfAnEarlierOne) {
    char longer[] = "a longer name";
    char shorter[] = "short";
    zeltag_FoundDevice(longer, nullptr, -1);
    cbIndex = 0;
    zeltag_FoundDevice(shorter, nullptr, -1);
    EXPECT_STREQ(DevDat[0].szDevName, "short");
}

TEST_F(FoundReader, ClosesTheHandleThatItsRecordStillHeld) {
    plugReader("one");
    connect();
    cbIndex = iDevsFnd = 0;
    bus().takeTrace();
    connect();
    EXPECT_EQ(bus().takeTrace(), "open one\nclose one\n");
}

TEST_F(FoundReader, KeepsAHeldHandleOpenForTheOtherRecordThatHoldsIt) {
    plugReader("one");
    connect();
    DevDat[4].hDev = DevDat[0].hDev;
    cbIndex = iDevsFnd = 0;
    bus().takeTrace();
    connect();
    EXPECT_EQ(bus().takeTrace(), "open one\n");
    USBDisconnect();
    EXPECT_EQ(bus().takeTrace(), "close one\nclose one\n") << "two opens, two closes";
}

TEST_F(UsbScan, WithoutAPlaceForTheDeviceIdYieldsMinusOne) {
    plugReader("a");
    EXPECT_EQ(zeltag_USBDeviceConnect(0x5A3E, 0x9D23, nullptr), -1);
    EXPECT_EQ(GetDevCnt(), 1);
}

TEST_F(UsbScan, AnswersFromTheRecordAfterTheFirstNewOne) {
    plugReader("a");
    plugReader("b");
    DevDat[0].iDID = 0x10;
    DevDat[1].iDID = 0x11;
    lLastCnctErr = 0x10000;
    unsigned short did = 0;
    const intptr_t handle = zeltag_USBDeviceConnect(0x5A3E, 0x9D23, &did);
    EXPECT_EQ(did, 0x11);
    EXPECT_EQ(handle, reinterpret_cast<intptr_t>(DevDat[1].hDev));
    EXPECT_EQ(DevDat[1].lLastErr, 0x10000);
    EXPECT_EQ(DevDat[0].lLastErr, 0);
    lLastCnctErr = 0;
}

TEST_F(UsbScan, OfOneReaderAnswersFromTheEmptyRecordBehindIt) {
    plugReader("a");
    unsigned short did = 0xEEEE;
    EXPECT_EQ(zeltag_USBDeviceConnect(0x5A3E, 0x9D23, &did), -1) << "the record holds no handle";
    EXPECT_EQ(did, 0);
}

TEST_F(UsbScan, ThatFindsNothingLeavesTheDeviceIdAlone) {
    unsigned short did = 0xEEEE;
    EXPECT_EQ(zeltag_USBDeviceConnect(0x5A3E, 0x9D23, &did), -1);
    EXPECT_EQ(did, 0xEEEE);
}

TEST_F(UsbScan, OnTheLastRecordHasNoneBehindIt) {
    plugReader("a");
    cbIndex = 126;
    unsigned short did = 0xEEEE;
    EXPECT_EQ(zeltag_USBDeviceConnect(0x5A3E, 0x9D23, &did), -1);
    EXPECT_EQ(did, 0xEEEE);
    EXPECT_STREQ(DevDat[126].szDevName, "a");
}

TEST_F(UsbScan, AppendsToWhatStandsInTheTable) {
    plugReader("a");
    connect();
    plugReader("b");
    EXPECT_EQ(connect(), 3);
    EXPECT_STREQ(DevDat[1].szDevName, "a");
    EXPECT_STREQ(DevDat[2].szDevName, "b");
}

TEST_F(FullTable, TakesThe127thReaderAndClosesTheOthers) {
    for (int i = 0; i < 130; ++i)
        plugReader("r" + std::to_string(i));
    EXPECT_EQ(connect(), 127);
    EXPECT_EQ(cbIndex, 127);
    EXPECT_STREQ(DevDat[126].szDevName, "r126");
    EXPECT_EQ(bus().openHandles(), 127);
}

TEST_F(FullTable, TakesNothingAtAnIndexOutside) {
    plugReader("a");
    for (const int index : {-1, 127, 1 << 30, -(1 << 30)}) {
        cbIndex = index;
        EXPECT_EQ(connect(), 0) << index;
        EXPECT_EQ(bus().openHandles(), 0) << index;
    }
}

TEST_F(FullTable, TakesNothingWhenItsCountSaysFull) {
    plugReader("a");
    iDevsFnd = 127;
    EXPECT_EQ(connect(), 127);
    EXPECT_EQ(bus().openHandles(), 0);
}
