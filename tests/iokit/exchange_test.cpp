// SPDX-License-Identifier: MIT
// Feature reports to and from an open device, and its end.
#include "tests/iokit/iokit_test.h"

#include <array>

using namespace zel::test;

namespace {

constexpr char kPath[] = "IOService:/port 0";

class Send : public IokitTest {
protected:
    void SetUp() override {
        IokitTest::SetUp();
        connect({readerAt(kPath)});
    }
};
using Receive = Send;
using Close = Send;

using Report = std::array<unsigned char, 9>;
constexpr Report kReport = {0, 0x8F, 2, 3, 4, 5, 6, 7, 8};

TEST_F(Send, SetsThePayloadAloneWithReportId0) {
    EXPECT_EQ(UsbDriver_SendFR(8, 0, kReport.data()), 1);
    EXPECT_EQ(takeCalls(),
              "IOHIDDeviceSetReport(device 0, feature, 0, 8F 02 03 04 05 06 07 08) = success\n");
}

TEST_F(Send, SetsAnotherReportIdInFrontOfThePayload) {
    Report report = kReport;
    report[0] = 1;
    EXPECT_EQ(UsbDriver_SendFR(8, 0, report.data()), 1);
    EXPECT_EQ(takeCalls(),
              "IOHIDDeviceSetReport(device 0, feature, 1, 01 8F 02 03 04 05 06 07 08) = success\n");
}

TEST_F(Send, TriesAFailingDeviceSixTimesWithAPauseAfterEach) {
    fakeIokit().failingSends = -1;
    EXPECT_EQ(UsbDriver_SendFR(2, 0, kReport.data()), 0);
    EXPECT_EQ(takeCalls(), R"(IOHIDDeviceSetReport(device 0, feature, 0, 8F 02) = error
pause 80000
IOHIDDeviceSetReport(device 0, feature, 0, 8F 02) = error
pause 80000
IOHIDDeviceSetReport(device 0, feature, 0, 8F 02) = error
pause 80000
IOHIDDeviceSetReport(device 0, feature, 0, 8F 02) = error
pause 80000
IOHIDDeviceSetReport(device 0, feature, 0, 8F 02) = error
pause 80000
IOHIDDeviceSetReport(device 0, feature, 0, 8F 02) = error
pause 80000
)");
}

TEST_F(Send, EndsWithTheFirstSuccess) {
    fakeIokit().failingSends = 1;
    EXPECT_EQ(UsbDriver_SendFR(1, 0, kReport.data()), 1);
    EXPECT_EQ(takeCalls(), R"(IOHIDDeviceSetReport(device 0, feature, 0, 8F) = error
pause 80000
IOHIDDeviceSetReport(device 0, feature, 0, 8F) = success
)");
}

TEST_F(Receive, GetsThePayloadBehindTheReportId) {
    fakeIokit().reply = {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8, 0xA9};
    Report report = {1};
    EXPECT_EQ(UsbDriver_RecvFR(8, 0, report.data()), 1);
    EXPECT_EQ(takeCalls(), "IOHIDDeviceGetReport(device 0, feature, 1, 8) = success\n");
    EXPECT_EQ(report, (Report{1, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}));
}

TEST_F(Receive, TakesAShortAnswerAndTellsItsLength) {
    fakeIokit().reply = {0xA1, 0xA2};
    unsigned char data[4] = {9, 9, 9, 9};
    long size = sizeof data;
    EXPECT_EQ(zel::iokitUsbBackend().getFeature(DevDat[0].hDev, 0, data, &size), 1);
    EXPECT_EQ(size, 2);
    EXPECT_EQ(std::to_array(data), (std::array<unsigned char, 4>{0xA1, 0xA2, 9, 9}));
}

TEST_F(Receive, AsksAFailingDeviceOnce) {
    fakeIokit().failsReceives = true;
    Report report = {};
    EXPECT_EQ(UsbDriver_RecvFR(8, 0, report.data()), 0);
    EXPECT_EQ(takeCalls(), "IOHIDDeviceGetReport(device 0, feature, 0, 8) = error\n");
    EXPECT_EQ(report, Report{});
}

TEST_F(Close, TouchesNothingForHandle0) {
    EXPECT_EQ(UsbDriver_Close(nullptr), 1);
    EXPECT_EQ(takeCalls(), "");
    EXPECT_EQ(heldObjects(), "manager open\ndevice 0 open\n");
}

TEST_F(Close, ClosesAndReleasesTheDevice) {
    EXPECT_EQ(UsbDriver_Close(DevDat[0].hDev), 1);
    DevDat[0].hDev = zel::noHandle();
    EXPECT_EQ(takeCalls(), "IOHIDDeviceClose(device 0, 0)\nCFRelease(device 0)\n");
    EXPECT_EQ(heldObjects(), "manager open\n");
}

TEST_F(Close, HappensOnceForEachDeviceAtDisconnect) {
    fakeIokit().devices = {readerAt("IOService:/port 0"), readerAt("IOService:/port 1")};
    scan();
    takeCalls();
    EXPECT_EQ(USBDisconnect(), 1);
    EXPECT_EQ(USBDisconnect(), 1);
    EXPECT_EQ(takeCalls(), R"(IOHIDDeviceClose(device 0, 0)
CFRelease(device 0)
IOHIDDeviceClose(device 0, 0)
CFRelease(device 0)
IOHIDDeviceClose(device 1, 0)
CFRelease(device 1)
)");
    EXPECT_EQ(heldObjects(), "manager open\n");
}

} // namespace
