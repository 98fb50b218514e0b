// SPDX-License-Identifier: MIT
#include "family/tag/tag.h"
#include "tests/support/library_test.h"

#include <cstring>

using namespace zel::test;

namespace {
class Identity : public LibraryTest {};
class ActiveDevice : public LibraryTest {};
class TagActiveDevice : public LibraryTest {};
class Disconnect : public LibraryTest {};
} // namespace

TEST_F(Identity, ReadsRecordZeroWithNoDevice) {
    DevDat[0].iDID = 0x142;
    DevDat[0].iLUID = 7;
    DevDat[0].iDevType = 1;
    EXPECT_EQ(GetDID(), 0x142);
    EXPECT_EQ(GetLUID(), 7);
    EXPECT_EQ(GetDevType(), 1);
}

TEST_F(Identity, OfADisconnectedReaderIsItsStaleOne) {
    connectReader();
    DevDat[0].iDID = 0x142;
    USBDisconnect();
    EXPECT_EQ(GetDID(), 0x142);
}

TEST_F(Identity, SixteenBitsComeSignExtended) {
    DevDat[0].iDID = 0xFFFF;
    DevDat[0].iLUID = 0x8000;
    EXPECT_EQ(GetDID(), -1);
    EXPECT_EQ(GetLUID(), -32768);
}

TEST_F(Identity, SerialNumberIsSixtyFourBitsWide) {
    connectReader();
    DevDat[0].lSN = 65535;
    EXPECT_EQ(GetSN(), 65535);
    DevDat[0].lSN = 0x123456789A;
    EXPECT_EQ(GetSN(), 0x123456789A);
}

TEST_F(Identity, AnIndexOutsideTheTableReadsRecordZero) {
    DevDat[0].iDID = 5;
    for (const short index : std::initializer_list<short>{-1, 127, -32768}) {
        iActDev = index;
        EXPECT_EQ(GetDID(), 5) << index;
    }
}

TEST_F(Identity, SetLuidMarksItForTheNextWrite) {
    EXPECT_EQ(SetLUID(65535), 1);
    EXPECT_EQ(DevDat[0].iLUID, 65535);
    EXPECT_EQ(DevDat[0].bLUIDDirty, 1U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Identity, ProductIsZeroWithNoDeviceWhateverTheRecordHolds) {
    DevDat[0].iProduct = 1;
    EXPECT_EQ(GetProduct(), 0U);
}

TEST_F(Identity, NameOfAUsbDeviceComesWith999) {
    plugReader("/dev/hidraw3");
    connect();
    char name[512] = {};
    EXPECT_EQ(GetDevName(name), 999);
    EXPECT_STREQ(name, "/dev/hidraw3");
    EXPECT_EQ(GetProduct(), 1U);
    EXPECT_EQ(GetDevType(), 0);
}

TEST_F(Identity, NameIsRefusedWithoutABuffer) {
    connectReader();
    EXPECT_EQ(GetDevName(nullptr), 0);
}

TEST_F(ActiveDevice, MovesInsideTheTableOnly) {
    plugReader("a");
    plugReader("b");
    plugReader("c");
    connect();
    EXPECT_EQ(SetActDev(2), 1);
    EXPECT_EQ(SetActDev(5), 0);
    EXPECT_EQ(SetActDev(-1), 0);
    EXPECT_EQ(GetActDev(), 2);
}

TEST_F(ActiveDevice, GoesBackToZeroWithAnEmptyTable) {
    iActDev = 9;
    EXPECT_EQ(SetActDev(5), 0);
    EXPECT_EQ(GetActDev(), 0);
}

TEST_F(Disconnect, OfAnEmptyTableYieldsOneAndKeepsNames) {
    std::strcpy(DevDat[3].szDevName, "kept");
    EXPECT_EQ(USBDisconnect(), 1);
    EXPECT_STREQ(DevDat[3].szDevName, "kept");
}

TEST_F(Disconnect, ClosesEachDeviceInOrder) {
    plugReader("a");
    plugReader("b");
    connect();
    bus().takeTrace();
    EXPECT_EQ(USBDisconnect(), 1);
    EXPECT_EQ(bus().takeTrace(), "close a\nclose b\n");
    EXPECT_EQ(GetDevCnt(), 0);
}

TEST_F(Disconnect, ResetsWhatBelongsToTheConnectionAndKeepsTheRest) {
    connectReader();
    tsDevDat& record = DevDat[0];
    record.bSepFldOK = record.bPartNumOK = 0;
    record.iTagPlusState = 2;
    record.bTagAdv = 1;
    record.lLastErr = 0x20000;
    record.Cfg[0].bCfgValid = 1;
    record.CardTypeList[0] = 0x1204;
    cbIndex = 1;
    listIndex = 5;
    USBDisconnect();
    EXPECT_EQ(record.bSepFldOK, 1U);
    EXPECT_EQ(record.bPartNumOK, 1U);
    EXPECT_EQ(record.iTagPlusState, 0U);
    EXPECT_EQ(record.bTagAdv, 0U);
    EXPECT_EQ(record.bTagOpen, 0U);
    EXPECT_EQ(record.iProduct, 0U);
    EXPECT_EQ(record.CardTypeList[0], 0);
    EXPECT_EQ(record.lLastErr, 0x20000);
    EXPECT_EQ(record.Cfg[0].bCfgValid, 1U);
    EXPECT_STREQ(record.szDevName, "reader");
    EXPECT_EQ(cbIndex, 1);
    EXPECT_EQ(listIndex, 0);
}

TEST_F(Disconnect, ClosesAHandleOnceThoughTwoRecordsHoldIt) {
    connectReader();
    DevDat[5].hDev = DevDat[0].hDev;
    DevDat[126].hDev = DevDat[0].hDev;
    USBDisconnect();
    EXPECT_EQ(bus().takeTrace(), "close reader\n");
}

TEST_F(Disconnect, ClosesNothingForAHandleOfZero) {
    connectReader();
    USBDisconnect();
    bus().takeTrace();
    DevDat[0].hDev = nullptr;
    USBDisconnect();
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(TagActiveDevice, IsChosenWithinTheTable) {
    iDevsFnd = 3;
    EXPECT_EQ(zeltag_GetDevCnt(), 3);
    EXPECT_EQ(zeltag_SetActDev(2), 1);
    EXPECT_EQ(zeltag_GetActDev(), 2);
}

TEST_F(TagActiveDevice, StaysWhereTheIndexIsOutside) {
    iDevsFnd = 3;
    iActDev = 1;
    for (const int outside : {-1, 3, 127, 32767})
        EXPECT_EQ(zeltag_SetActDev(static_cast<short>(outside)), 0) << outside;
    iDevsFnd = 300;
    EXPECT_EQ(zeltag_SetActDev(127), 0) << "beyond the table itself";
    EXPECT_EQ(zeltag_GetActDev(), 1);
    iDevsFnd = 0;
}
