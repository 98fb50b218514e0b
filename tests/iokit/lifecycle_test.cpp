// SPDX-License-Identifier: MIT
// The HID manager from start to stop.
#include "tests/iokit/iokit_test.h"

using namespace zel::test;

namespace {

using Start = IokitTest;
using Stop = IokitTest;

constexpr char kStartCalls[] = R"(IOHIDManagerCreate(default, 0) = manager
IOHIDManagerSetDeviceMatching(manager, null)
IOHIDManagerOpen(manager, 0) = success
)";

constexpr char kStopCalls[] = R"(IOHIDManagerClose(manager, 0)
CFRelease(manager)
)";

TEST_F(Start, CreatesAManagerForAllDevicesAndOpensIt) {
    EXPECT_EQ(useIokit(), 1);
    EXPECT_EQ(takeCalls(), kStartCalls);
    EXPECT_EQ(heldObjects(), "manager open\n");
}

TEST_F(Start, SucceedsWithAManagerThatDoesNotOpen) {
    fakeIokit().opensManager = false;
    EXPECT_EQ(useIokit(), 1);
    EXPECT_EQ(heldObjects(), "manager\n");
}

TEST_F(Start, CreatesNothingTheSecondTime) {
    useIokit();
    takeCalls();
    EXPECT_EQ(UsbDriver_Init(), 1);
    EXPECT_EQ(takeCalls(), "");
}

TEST_F(Start, FailsWithoutAManagerAndTouchesNothing) {
    fakeIokit().createsManager = false;
    EXPECT_EQ(useIokit(), 0);
    EXPECT_EQ(scan(), 0);
    UsbDriver_Exit();
    EXPECT_EQ(takeCalls(), "IOHIDManagerCreate(default, 0) = null\n");
}

TEST_F(Start, IsTriedAgainAfterAFailure) {
    fakeIokit().createsManager = false;
    useIokit();
    takeCalls();
    fakeIokit().createsManager = true;
    EXPECT_EQ(UsbDriver_Init(), 1);
    EXPECT_EQ(takeCalls(), kStartCalls);
}

TEST_F(Stop, ClosesAndReleasesTheManager) {
    useIokit();
    takeCalls();
    UsbDriver_Exit();
    EXPECT_EQ(takeCalls(), kStopCalls);
    EXPECT_EQ(heldObjects(), "");
}

TEST_F(Stop, DoesNothingTheSecondTime) {
    useIokit();
    UsbDriver_Exit();
    takeCalls();
    UsbDriver_Exit();
    EXPECT_EQ(takeCalls(), "");
}

TEST_F(Stop, IsFollowedByAFreshStart) {
    useIokit();
    UsbDriver_Exit();
    takeCalls();
    EXPECT_EQ(UsbDriver_Init(), 1);
    EXPECT_EQ(takeCalls(), kStartCalls);
}

TEST_F(Stop, LeavesWhatAFailedScanLeft) {
    FakeHidDevice refusing = readerAt("IOService:/port 0");
    refusing.canBeOpened = false;
    connect({refusing});
    UsbDriver_Exit();
    EXPECT_EQ(takeCalls(), kStopCalls);
    EXPECT_EQ(heldObjects(), "set\nentry 0\ndevice 0\n");
}

} // namespace
