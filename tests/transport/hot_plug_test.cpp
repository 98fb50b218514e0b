// SPDX-License-Identifier: MIT
// Removals by name and the closing of gaps.
#include "transport/hot_plug.h"

#include "tests/transport/device_table.h"

using namespace zel;
using namespace zel::test;

namespace {

class Removal : public DeviceTable {};
class Gaps : public DeviceTable {};

} // namespace

TEST_F(Removal, ClosesTheFirstRecordWithAHandleWhicheverIsNamed) {
    connectReaders({"a", "b", "c", "d"});
    EXPECT_EQ(removeDevice("d"), 1);
    EXPECT_EQ(bus().takeTrace(), "close a\n");
    EXPECT_EQ(list(), "b c d");
}

TEST_F(Removal, PassesOverRecordsWithoutAHandle) {
    addSerial("line");
    cbIndex = 1;
    connectReaders({"a"});
    EXPECT_EQ(list(), "line- a");
    EXPECT_EQ(removeDevice("line"), 1);
    EXPECT_EQ(bus().takeTrace(), "close a\n");
    EXPECT_EQ(list(), "line-") << "two holes, of which one call takes one";
}

TEST_F(Removal, OfOneOfThreeLeavesTheBytesOfTheLastBehindTheEnd) {
    connectReaders({"a", "b", "c"});
    void* const last = DevDat[2].hDev;
    DevDat[2].iLUID = 77;
    iActDev = 2;
    EXPECT_EQ(removeDevice("a"), 1);
    EXPECT_EQ(list(), "b c");
    EXPECT_EQ(DevDat[1].hDev, last);
    EXPECT_EQ(DevDat[1].iLUID, 77);
    EXPECT_EQ(DevDat[2].hDev, last);
    EXPECT_EQ(DevDat[2].iLUID, 77);
    EXPECT_STREQ(DevDat[2].szDevName, "c");
    EXPECT_EQ(iActDev, 0);
}

TEST_F(Removal, ClearsTheWholeRecord) {
    connectReaders({"a"});
    tsDevDat& record = DevDat[0];
    record.lLastErr = 5;
    freshPort(record);
    tsDevDat empty;
    std::memset(&empty, 0, sizeof empty);
    empty.hDev = noHandle();
    EXPECT_EQ(removeDevice("a"), 1);
    EXPECT_EQ(std::memcmp(&record, &empty, sizeof empty), 0);
    EXPECT_EQ(iDevsFnd, 0);
}

TEST_F(Removal, ComparesWholeNamesWithoutCase) {
    connectReaders({"Reader-One"});
    for (const char* other : {"reader-on", "reader-one2", "", "eader-one"})
        EXPECT_EQ(removeDevice(other), 0) << other;
    EXPECT_EQ(removeDevice("rEADER-oNE"), 1);
}

TEST_F(Removal, OfAnUnknownNameChangesNothing) {
    connectReaders({"a", "b"});
    addSerial("line");
    iActDev = 1;
    EXPECT_EQ(removeDevice("x"), 0);
    EXPECT_EQ(list(), "a b line-");
    EXPECT_EQ(iActDev, 1);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Removal, LooksAtTheRecordsInUseAlone) {
    connectReaders({"a", "b"});
    removeDevice("a");
    removeDevice("b");
    EXPECT_EQ(iDevsFnd, 0);
    EXPECT_STREQ(DevDat[1].szDevName, "b");
    EXPECT_EQ(removeDevice("b"), 0);
}

TEST_F(Removal, TakesANameOf511Characters) {
    connectReaders({"a"});
    const std::string name(511, 'N');
    std::strcpy(DevDat[0].szDevName, name.c_str());
    EXPECT_EQ(removeDevice(std::string(511, 'n').c_str()), 1);
}

// The name has no end within its memory: reading on would be caught.
TEST_F(Removal, ReadsNoFurtherThan512Characters) {
    connectReaders({"a"});
    const std::vector<char> endless(512, 'n');
    EXPECT_EQ(removeDevice(endless.data()), 0);
    EXPECT_EQ(removeDevice(nullptr), 0);
    EXPECT_EQ(list(), "a");
}

TEST_F(Removal, OfASerialDeviceAloneYieldsZeroAndTakesItOffTheCount) {
    addSerial("line");
    EXPECT_EQ(removeDevice("LINE"), 0);
    EXPECT_EQ(iDevsFnd, 0);
    EXPECT_NE(DevDat[0].pPort, nullptr) << "its record keeps its bytes";
}

TEST_F(Removal, OfAnArrivalClosesNothing) {
    connectReaders({"a"});
    EXPECT_EQ(zeltag_ChkAddArrival(kTagName), 1);
    EXPECT_EQ(removeDevice(kTagName), 1);
    EXPECT_EQ(list(), std::string(kTagName) + "0") << "the reader in front went";
    EXPECT_EQ(removeDevice(kTagName), 1);
    EXPECT_EQ(bus().takeTrace(), "close a\n");
    EXPECT_EQ(iDevsFnd, 0);
}

TEST_F(Removal, LeavesNoHandleTwice) {
    connectReaders({"a", "b", "c"});
    removeDevice("a");
    removeDevice("b");
    removeDevice("c");
    EXPECT_EQ(bus().takeTrace(), "close a\nclose b\nclose c\n");
    USBDisconnect();
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Removal, LeavesCopiesThatADisconnectClosesOnce) {
    connectReaders({"a", "b", "c"});
    removeDevice("c");
    bus().takeTrace();
    USBDisconnect();
    EXPECT_EQ(bus().takeTrace(), "close b\nclose c\n");
}

TEST_F(Removal, OfAHandleThatTwoRecordsHoldLeavesZeroInTheOther) {
    connectReaders({"a"});
    EXPECT_EQ(ResetDevLst(&DevDat[0], 0), 1);
    EXPECT_EQ(list(), "a a");
    EXPECT_EQ(removeDevice("a"), 1);
    EXPECT_EQ(list(), "a0");
    EXPECT_EQ(bus().takeTrace(), "close a\n");
}

TEST_F(Gaps, AreClosedByACallWithoutARecord) {
    connectReaders({"a", "b", "c"});
    UsbDriver_Close(DevDat[1].hDev);
    DevDat[1].hDev = noHandle();
    for (const int remove : {0, 1}) {
        EXPECT_EQ(ResetDevLst(nullptr, remove), 0);
        EXPECT_EQ(list(), "a c") << "the second call found none";
    }
}

TEST_F(Gaps, OfTwoLeaveACopyBehind) {
    addSerial("l1");
    addSerial("l2");
    cbIndex = 2;
    connectReaders({"a"});
    EXPECT_EQ(ResetDevLst(nullptr, 0), 0);
    EXPECT_EQ(list(), "l1- a") << "the nearer hole is filled";
    EXPECT_STREQ(DevDat[2].szDevName, "a");
    ResetDevLst(nullptr, 0);
    EXPECT_EQ(list(), "a");
    bus().takeTrace();
    USBDisconnect();
    EXPECT_EQ(bus().takeTrace(), "close a\n") << "though three records held it";
}

TEST_F(Gaps, AreMadeBySerialDevicesAtEveryCall) {
    addSerial("l1");
    addSerial("l2");
    addSerial("l3");
    for (const char* expected : {"l1- l2-", "l1-", "", ""}) {
        EXPECT_EQ(ResetDevLst(nullptr, 0), 0);
        EXPECT_EQ(list(), expected);
    }
}

TEST_F(Gaps, BySerialDevicesAreClosedByAnArrivalToo) {
    addSerial("line");
    EXPECT_EQ(zeltag_ChkAddArrival(kTagName), 1);
    EXPECT_EQ(list(), std::string(kTagName) + "0");
}

TEST_F(Gaps, ThatWereFilledLeaveThePortObjectsToTheDisconnect) {
    addSerial("line");
    cbIndex = 1;
    connectReaders({"a"});
    ResetDevLst(nullptr, 0);
    EXPECT_EQ(DevDat[0].pPort, nullptr) << "the record that had it was overwritten";
    freshPort(DevDat[0]);
    DevDat[5].pPort = DevDat[0].pPort;
    USBDisconnect();
    EXPECT_EQ(DevDat[0].pPort, nullptr);
    EXPECT_EQ(DevDat[5].pPort, nullptr) << "freed once, and no record keeps it";
}

TEST_F(Gaps, AreNotHandlesOfZero) {
    fill();
    iDevsFnd = 3;
    ResetDevLst(nullptr, 0);
    EXPECT_EQ(iDevsFnd, 3);
}

TEST_F(Gaps, EndWithDeviceZeroActiveEvenWithoutAny) {
    for (const short devices : std::initializer_list<short>{0, 1}) {
        SCOPED_TRACE(devices);
        DevDat[0].hDev = nullptr;
        iDevsFnd = devices;
        iActDev = 5;
        EXPECT_EQ(ResetDevLst(nullptr, 0), 0);
        EXPECT_EQ(iActDev, 0);
        EXPECT_EQ(iDevsFnd, devices);
    }
}

TEST_F(Gaps, AreLookedForInsideTheTable) {
    fill();
    iDevsFnd = 200;
    EXPECT_EQ(ResetDevLst(nullptr, 0), 0);
    EXPECT_EQ(iDevsFnd, 127);
    iDevsFnd = -5;
    tsDevDat record = {};
    EXPECT_EQ(ResetDevLst(&record, 0), 1);
    EXPECT_EQ(iDevsFnd, 1);
}
