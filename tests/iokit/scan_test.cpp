// SPDX-License-Identifier: MIT
// A scan in which every reader opens.
#include "tests/iokit/iokit_test.h"

#include <cstring>

using namespace zel::test;

namespace {

using Scan = IokitTest;
using Properties = IokitTest;

struct Ids {
    unsigned vendor;
    unsigned product;
    bool operator==(const Ids&) const = default;
};

// What the backend reads of the first listed device.
Ids listedIds() {
    const UsbBackend& backend = zel::iokitUsbBackend();
    Ids ids = {1, 1};
    backend.list();
    backend.ids(0, &ids.vendor, &ids.product);
    backend.unlist();
    return ids;
}

TEST_F(Scan, OpensTheOneReaderOfTwoDevices) {
    attach({{.vendor = 0x1234, .path = "IOService:/port 0"}, readerAt("IOService:/port 1")});
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(takeCalls(), R"(IOHIDManagerSetDeviceMatching(manager, null)
IOHIDManagerCopyDevices(manager) = set
CFSetGetCount(set) = 2
CFSetGetValues(set)
IOHIDDeviceGetProperty(listed 0, VendorID) = number 4660
CFNumberGetValue(number 4660, SInt32)
IOHIDDeviceGetProperty(listed 0, ProductID) = number 40227
CFNumberGetValue(number 40227, SInt32)
IOHIDDeviceGetProperty(listed 1, VendorID) = number 23102
CFNumberGetValue(number 23102, SInt32)
IOHIDDeviceGetProperty(listed 1, ProductID) = number 40227
CFNumberGetValue(number 40227, SInt32)
IOHIDDeviceGetService(listed 1) = service 1
IORegistryEntryGetPath(service 1, IOService) = IOService:/port 1
IORegistryEntryFromPath(0, IOService:/port 1) = entry 1
IOHIDDeviceCreate(default, entry 1) = device 1
IOHIDDeviceOpen(device 1, 0) = success
IOObjectRelease(entry 1)
CFRelease(set)
)");
    EXPECT_EQ(heldObjects(), "manager open\ndevice 1 open\n");
    EXPECT_EQ(GetDevCnt(), 1);
}

TEST_F(Scan, GivesEachReaderARecordWithItsPath) {
    attach({readerAt("IOService:/port 0"), readerAt("IOService:/port 1")});
    zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, nullptr);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_STREQ(DevDat[0].szDevName, "IOService:/port 0");
    EXPECT_STREQ(DevDat[1].szDevName, "IOService:/port 1");
    EXPECT_EQ(heldObjects(), "manager open\ndevice 0 open\ndevice 1 open\n");
}

TEST_F(Scan, OpensAReaderAgainWhenItIsRepeated) {
    attach({readerAt("IOService:/port 0")});
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(heldObjects(), "manager open\ndevice 0 open\ndevice 0 open\n");
    EXPECT_NE(DevDat[0].hDev, DevDat[1].hDev);
}

TEST_F(Scan, FindsNothingWhereThereIsNoSet) {
    attach({});
    fakeIokit().copiesSet = false;
    EXPECT_EQ(scan(), 0);
    EXPECT_EQ(takeCalls(), R"(IOHIDManagerSetDeviceMatching(manager, null)
IOHIDManagerCopyDevices(manager) = null
)");
}

TEST_F(Scan, ReleasesAnEmptySet) {
    attach({});
    EXPECT_EQ(scan(), 0);
    EXPECT_EQ(takeCalls(), R"(IOHIDManagerSetDeviceMatching(manager, null)
IOHIDManagerCopyDevices(manager) = set
CFSetGetCount(set) = 0
CFSetGetValues(set)
CFRelease(set)
)");
}

TEST_F(Scan, TakesAPathOf511CharactersWhole) {
    const std::string path = "IOService:/" + std::string(499, 'p') + "!";
    ASSERT_EQ(path.size(), 511U);
    std::memset(DevDat[0].szDevName, '#', sizeof DevDat[0].szDevName);
    attach({readerAt(path)});
    EXPECT_EQ(scan(), 1);
    const std::string name(DevDat[0].szDevName, sizeof DevDat[0].szDevName);
    EXPECT_EQ(name, path + '\0');
}

TEST_F(Properties, ReadAsNumbers) {
    attach({{.vendor = 0x5A3E, .product = 0x9D22}});
    EXPECT_EQ(listedIds(), (Ids{0x5A3E, 0x9D22}));
}

TEST_F(Properties, KeepAll32BitsAndTheirSign) {
    attach({{.vendor = 0x15A3E, .product = -1}});
    EXPECT_EQ(listedIds(), (Ids{0x15A3E, 0xFFFFFFFF}));
}

TEST_F(Properties, ReadAsZeroWhenMissing) {
    attach({{.vendor = {}, .product = {}}});
    EXPECT_EQ(listedIds(), (Ids{0, 0}));
}

TEST_F(Properties, ReadAsZeroWhenTheyAreNotNumbers) {
    attach({{.vendor = "23102", .product = "40227"}});
    EXPECT_EQ(listedIds(), (Ids{0, 0}));
}

TEST_F(Properties, MatchNothingWhenMissingOrNotNumbers) {
    attach({{.vendor = "23102", .path = "IOService:/port 0"},
            {.product = {}, .path = "IOService:/port 1"}});
    EXPECT_EQ(scan(), 0);
    EXPECT_EQ(takeCalls(), R"(IOHIDManagerSetDeviceMatching(manager, null)
IOHIDManagerCopyDevices(manager) = set
CFSetGetCount(set) = 2
CFSetGetValues(set)
IOHIDDeviceGetProperty(listed 0, VendorID) = text 23102
IOHIDDeviceGetProperty(listed 0, ProductID) = number 40227
CFNumberGetValue(number 40227, SInt32)
IOHIDDeviceGetProperty(listed 1, VendorID) = number 23102
CFNumberGetValue(number 23102, SInt32)
IOHIDDeviceGetProperty(listed 1, ProductID) = null
CFRelease(set)
)");
    EXPECT_EQ(GetDevCnt(), 0);
}

} // namespace
