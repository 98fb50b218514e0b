// SPDX-License-Identifier: MIT
// The network in a whole connect, bridges for reports, and who closes the one socket.
#include "sim/wire/line.h"
#include "tests/family/tag/network_test.h"
#include "tests/sim/echo_stream.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/serial_lines.h"

using namespace zel;
using namespace zel::test;
using sim::Bridge;

namespace {

class ReportBridge : public NetworkConnect {
protected:
    // A USB reader whose record is the next to be taken, with its handle open.
    ReportBridge() {
        connectReader();
        iDevsFnd = 0;
    }
};
class NetworkSearch : public NetworkConnect {};
class TheSocket : public NetworkConnect {};

} // namespace

TEST_F(ReportBridge, AnswersByTheUsbHandleThatItsRecordHolds) {
    bridge(5, std::make_shared<EchoStream>());
    DevDat[0].iDevType = 1;
    EXPECT_EQ(connectReports(5), 1);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(DevDat[0].szDevName, nameOf(kTold, 5));
    EXPECT_EQ(DevDat[0].IPAddr[3], 5);
    EXPECT_EQ(DevDat[0].iDevType, 0);
    EXPECT_TRUE(tcpipUSBmode);
    EXPECT_TRUE(socket_IsOpen());
    EXPECT_STREQ(GetVidPidVendorName(), "");
}

TEST_F(ReportBridge, WithoutAHandleEndsWithTheSocketClosed) {
    bridge(5);
    USBDisconnect();
    EXPECT_EQ(connectReports(5), 0);
    EXPECT_EQ(GetDevCnt(), 0);
    EXPECT_FALSE(tcpipUSBmode);
    EXPECT_FALSE(socket_IsOpen());
}

TEST_F(ReportBridge, ThatRefusesLeavesTheMarkSet) {
    bridge(5).refuse();
    EXPECT_EQ(connectReports(5), 0);
    EXPECT_TRUE(tcpipUSBmode);
    EXPECT_EQ(GetDevCnt(), 0);
    EXPECT_EQ(DevDat[0].iDevType, 0);
    SetDevTypeSrch(1);
    EXPECT_EQ(zeltag_USBConnect(), 0);
    EXPECT_FALSE(tcpipUSBmode) << "any connect clears it";
}

TEST_F(ReportBridge, FreesTheObjectOfItsRecord) {
    bridge(5);
    zel::freshPort(DevDat[0]);
    connectReports(5);
    EXPECT_EQ(DevDat[0].pPort, nullptr);
}

// Of every host the address given is opened; the handle answers for the first one.
TEST_F(ReportBridge, IsOpenedAtTheAddressGivenForEveryHost) {
    hurry();
    const auto atZero = std::make_shared<EchoStream>();
    bridge(0, atZero);
    EXPECT_EQ(connectReports(0), 1);
    pumpBridges();
    EXPECT_EQ(atZero->restarts, 254);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(DevDat[0].IPAddr[3], 1);
    EXPECT_EQ(DevDat[0].szDevName, nameOf(kTold, 0));
    EXPECT_FALSE(tcpipUSBmode) << "the hosts behind it are absent";
}

TEST_F(NetworkSearch, FindsAReaderThatIsOnNoList) {
    bridge(5);
    SetDevTypeSrch(2);
    SetIpPort(a(), b(), c(), 5, port());
    DevDat[0].iVidPidIdx = 4;
    int64_t did = 0;
    EXPECT_EQ(USBConnect(&did), 1);
    EXPECT_EQ(did, 0x142);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(DevDat[0].iVidPidIdx, -1);
    EXPECT_EQ(GetProduct(), 1U);
    EXPECT_EQ(GetDevType(), 1);
    EXPECT_EQ(DevDat[0].Cfg[0].bCfgValid, 1U);
    char name[512];
    EXPECT_EQ(GetDevName(name), port());
    EXPECT_EQ(nv_GetDevName(name), static_cast<std::int16_t>(port()));
    EXPECT_EQ(name, nameOf(kTold, 5));
}

TEST_F(NetworkSearch, FindsTheSameReaderEachTime) {
    bridge(5);
    SetDevTypeSrch(2);
    SetIpPort(a(), b(), c(), 5, port());
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_TRUE(socket_IsOpen());
}

// What was a TCP stream once stays one: a scan of the lines takes their numbers for TCP ports of
// the bridge, until a disconnect frees the object.
TEST_F(NetworkSearch, LeavesAnObjectThatOpensNoLine) {
    bridge(5);
    connectStream(5);
    sim::Lines::install();
    sim::lines().clear();
    SetComLinux(1, "/dev/ttySIM1");
    SetComSrchRange(1, 1);
    EXPECT_EQ(zeltag_comConnect(), 0);
    EXPECT_EQ(sim::lines().opens(), 0);
    USBDisconnect();
    EXPECT_EQ(zeltag_comConnect(), 0);
    EXPECT_EQ(sim::lines().opens(), 1);
    sim::lines().clear();
    sim::Lines::uninstall();
}

TEST_F(TheSocket, IsClosedByADisconnect) {
    Bridge& only = bridge(5);
    connectStream(5);
    EXPECT_EQ(ComDisconnect(), 1);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_TRUE(IsComPortInUse(port()));
    EXPECT_EQ(zeltag_IsDevicePresent(), 0);
    pumpBridges();
    EXPECT_FALSE(only.hasClient());
    iDevsFnd = 0;
    EXPECT_EQ(connectStream(5), 1);
    USBDisconnect();
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(DevDat[0].pPort, nullptr);
}

TEST_F(TheSocket, OfABridgeForReportsIsClosedByTheConnectsAndDisconnects) {
    bridge(5, std::make_shared<EchoStream>());
    const auto take = [this] {
        cbIndex = 0;
        connectReader();
        iDevsFnd = 0;
        EXPECT_EQ(connectReports(5), 1);
        EXPECT_TRUE(socket_IsOpen());
    };
    const auto expectClosed = [] {
        EXPECT_FALSE(socket_IsOpen());
        EXPECT_FALSE(tcpipUSBmode);
        USBDisconnect();
        bus().clear();
    };
    take();
    EXPECT_EQ(ComDisconnect(), 0) << "it has no line";
    expectClosed();
    take();
    USBDisconnect();
    expectClosed();
    take();
    EXPECT_EQ(USBConnect(nullptr), 1);
    expectClosed();
}

// Only its mark makes a connect close it; a stream's socket is closed where its record is reused.
TEST_F(TheSocket, OfAStreamStaysOpenOverAConnectOnUsb) {
    bridge(5);
    connectStream(5);
    SetDevTypeSrch(0);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_TRUE(socket_IsOpen());
}

TEST_F(TheSocket, IsClosedByUsbDisconnectWhichFreesTheObjectsOfAllRecords) {
    hurry();
    bridge(9);
    Bridge& last = bridge(254);
    connectStream(0);
    ASSERT_TRUE(DevDat[0].pPort && DevDat[1].pPort);
    EXPECT_EQ(USBDisconnect(), 1);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_FALSE(DevDat[0].pPort || DevDat[1].pPort);
    pumpBridges();
    EXPECT_FALSE(last.hasClient());
}
