// SPDX-License-Identifier: MIT
// A scan of three readers that ends at the second one, which can't be opened.
#include "tests/iokit/iokit_test.h"

using namespace zel::test;

namespace {

struct Failure {
    const char* name;
    void (*breakReader)(FakeHidDevice&);
    const char* lastCalls; // from the broken reader's service on
    const char* held;
};

void PrintTo(const Failure& failure, std::ostream* out) { *out << failure.name; }

const Failure kFailures[] = {
    {"Service", [](FakeHidDevice& reader) { reader.hasService = false; },
     R"(IOHIDDeviceGetService(listed 1) = null
IORegistryEntryGetPath(null, IOService) = error
IORegistryEntryFromPath(0, ) = null
)",
     "manager open\nset\ndevice 0 open\n"},
    {"Path", [](FakeHidDevice& reader) { reader.path.clear(); },
     R"(IOHIDDeviceGetService(listed 1) = service 1
IORegistryEntryGetPath(service 1, IOService) = error
IORegistryEntryFromPath(0, ) = null
)",
     "manager open\nset\ndevice 0 open\n"},
    {"Entry", [](FakeHidDevice& reader) { reader.hasEntry = false; },
     R"(IOHIDDeviceGetService(listed 1) = service 1
IORegistryEntryGetPath(service 1, IOService) = IOService:/port 1
IORegistryEntryFromPath(0, IOService:/port 1) = null
)",
     "manager open\nset\ndevice 0 open\n"},
    {"Device", [](FakeHidDevice& reader) { reader.canBeCreated = false; },
     R"(IOHIDDeviceGetService(listed 1) = service 1
IORegistryEntryGetPath(service 1, IOService) = IOService:/port 1
IORegistryEntryFromPath(0, IOService:/port 1) = entry 1
IOHIDDeviceCreate(default, entry 1) = null
)",
     "manager open\nset\ndevice 0 open\nentry 1\n"},
    {"Permission", [](FakeHidDevice& reader) { reader.canBeOpened = false; },
     R"(IOHIDDeviceGetService(listed 1) = service 1
IORegistryEntryGetPath(service 1, IOService) = IOService:/port 1
IORegistryEntryFromPath(0, IOService:/port 1) = entry 1
IOHIDDeviceCreate(default, entry 1) = device 1
IOHIDDeviceOpen(device 1, 0) = error
)",
     "manager open\nset\ndevice 0 open\nentry 1\ndevice 1\n"},
};

class AReaderWithout : public IokitTest, public ::testing::WithParamInterface<Failure> {
protected:
    void SetUp() override {
        IokitTest::SetUp();
        std::vector<FakeHidDevice> readers = {readerAt("IOService:/port 0"),
                                              readerAt("IOService:/port 1"),
                                              readerAt("IOService:/port 2")};
        GetParam().breakReader(readers[1]);
        attach(readers);
    }
};

TEST_P(AReaderWithout, EndsTheScanAtOnceWithNothingReleased) {
    EXPECT_EQ(scan(), 0);
    const std::string calls = takeCalls();
    const std::size_t broken = calls.find("IOHIDDeviceGetService(listed 1)");
    ASSERT_NE(broken, std::string::npos);
    EXPECT_EQ(calls.substr(broken), GetParam().lastCalls);
    EXPECT_EQ(heldObjects(), GetParam().held);
}

TEST_P(AReaderWithout, LeavesTheReadersBeforeItInTheTable) {
    scan();
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_STREQ(DevDat[0].szDevName, "IOService:/port 0");
    EXPECT_FALSE(zel::holdsHandle(DevDat[1]));
}

TEST_P(AReaderWithout, DoesNotDisturbTheNextScan) {
    scan();
    fakeIokit().devices.resize(1);
    takeCalls();
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(takeCalls(), R"(IOHIDManagerSetDeviceMatching(manager, null)
IOHIDManagerCopyDevices(manager) = set
CFSetGetCount(set) = 1
CFSetGetValues(set)
IOHIDDeviceGetProperty(listed 0, VendorID) = number 23102
CFNumberGetValue(number 23102, SInt32)
IOHIDDeviceGetProperty(listed 0, ProductID) = number 40227
CFNumberGetValue(number 40227, SInt32)
IOHIDDeviceGetService(listed 0) = service 0
IORegistryEntryGetPath(service 0, IOService) = IOService:/port 0
IORegistryEntryFromPath(0, IOService:/port 0) = entry 0
IOHIDDeviceCreate(default, entry 0) = device 0
IOHIDDeviceOpen(device 0, 0) = success
IOObjectRelease(entry 0)
CFRelease(set)
)");
}

INSTANTIATE_TEST_SUITE_P(, AReaderWithout, ::testing::ValuesIn(kFailures),
                         [](const auto& each) { return each.param.name; });

} // namespace
