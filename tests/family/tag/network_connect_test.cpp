// SPDX-License-Identifier: MIT
// Proximity readers behind network bridges, as byte streams: their records, and what a scan leaves.
#include "tests/family/tag/network_test.h"
#include "transport/port.h"

using namespace zel::test;
using zel::sim::Bridge;
using zel::sim::Probe;

namespace {
class OneBridge : public NetworkConnect {};
class NetworkScan : public NetworkConnect {};
} // namespace

TEST_F(OneBridge, GivesItsReaderARecord) {
    bridge(5);
    EXPECT_EQ(connectStream(5), 1);
    const tsDevDat& record = DevDat[0];
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(GetActDev(), 0);
    EXPECT_EQ(record.bTagOpen, 1U);
    EXPECT_EQ(record.iProduct, 1U);
    EXPECT_EQ(record.iDevType, 1);
    EXPECT_EQ(record.szDevName, nameOf(kTold, 5));
    EXPECT_EQ(std::vector<int>(record.IPAddr, record.IPAddr + 4),
              (std::vector<int>{a(), b(), c(), 5}));
    ASSERT_NE(record.pPort, nullptr);
    EXPECT_TRUE(record.pPort->IsTcpIpMode());
    EXPECT_EQ(record.pPort->port(), port());
    EXPECT_FALSE(tcpipUSBmode);
}

// The bridge's answer is there at the second look; then the stream's first pauses.
TEST_F(OneBridge, IsAskedForItsAddressThenForItsReader) {
    bridge(5);
    EXPECT_EQ(connectStream(5), 1);
    const std::string trace = bus().takeTrace();
    EXPECT_EQ(trace.substr(0, 24), "~ 50 ms\n~ 50 ms\n~ 20 ms\n") << trace;
    EXPECT_EQ(trace.find("> "), std::string::npos) << "USB is left alone";
}

TEST_F(OneBridge, ThatTellsNoAddressGetsTheUsualOne) {
    bridge(5).probeFaults(Probe::MacQuery).silent = true;
    EXPECT_EQ(connectStream(5), 1);
    EXPECT_EQ(DevDat[0].szDevName, nameOf(kDefault, 5));
}

TEST_F(OneBridge, SetsTheSpeedThoughTheNetworkHasNone) {
    bridge(5);
    baudrate = 38400;
    connectStream(5);
    EXPECT_EQ(baudrate, 9600U);
}

TEST_F(OneBridge, IsAppendedToTheTable) {
    connectReader();
    bridge(5);
    EXPECT_EQ(connectStream(5), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(GetActDev(), 1);
    EXPECT_EQ(DevDat[0].iDevType, 0);
    EXPECT_EQ(DevDat[1].szDevName, nameOf(kTold, 5));
}

TEST_F(OneBridge, ThatRefusesLeavesItsObjectWithTheRecord) {
    bridge(5).refuse();
    EXPECT_EQ(connectStream(5), 0);
    EXPECT_EQ(GetDevCnt(), 0);
    ASSERT_NE(DevDat[0].pPort, nullptr);
    EXPECT_FALSE(DevDat[0].pPort->IsConn());
    EXPECT_EQ(DevDat[0].bTagOpen, 0U);
    EXPECT_EQ(DevDat[0].iDevType, 1);
}

TEST_F(OneBridge, WithoutAReaderLosesItsObjectAndTheSocket) {
    bridge(5).streamFaults().silent = true;
    EXPECT_EQ(connectStream(5), 0);
    EXPECT_EQ(GetDevCnt(), 0);
    EXPECT_EQ(DevDat[0].pPort, nullptr);
    EXPECT_FALSE(socket_IsOpen());
}

TEST_F(OneBridge, FindsNoRecordInAFullTable) {
    Bridge& full = bridge(5);
    iDevsFnd = 127;
    EXPECT_EQ(zeltag_IPConnect(a(), b(), c(), 5, port()), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_FALSE(tcpipUSBmode);
    iDevsFnd = 126;
    EXPECT_EQ(connectStream(5), 1);
    EXPECT_EQ(GetDevCnt(), 127);
    EXPECT_EQ(DevDat[126].iProduct, 1U);
    EXPECT_TRUE(full.hasClient());
}

// The address is asked of host 0, where nobody is, and the name tells it.
TEST_F(NetworkScan, RecordsTheHostsButNamesThemByTheAddressGiven) {
    hurry();
    bridge(9);
    bridge(254);
    EXPECT_EQ(connectStream(0), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(DevDat[0].IPAddr[3], 9);
    EXPECT_EQ(DevDat[1].IPAddr[3], 254);
    EXPECT_EQ(DevDat[0].szDevName, nameOf(kDefault, 0));
    EXPECT_EQ(DevDat[1].szDevName, nameOf(kDefault, 0));
}

TEST_F(NetworkScan, LeavesTheLastReaderReachableByEveryRecord) {
    hurry();
    const auto last = tag();
    Bridge& first = bridge(9);
    bridge(254, last);
    connectStream(0);
    const int before = last->commands();
    SetActDev(0);
    EXPECT_EQ(zeltag_IsDevicePresent(), 1);
    EXPECT_EQ(last->commands(), before + 1);
    EXPECT_FALSE(first.hasClient());
}

// The try of the next host closes the socket, also where it can't be opened anew.
TEST_F(NetworkScan, LeavesNoReaderReachableWhereHostsFollow) {
    hurry();
    bridge(9);
    EXPECT_EQ(connectStream(0), 1);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(zeltag_IsDevicePresent(), 0);
    EXPECT_EQ(GetDevCnt(), 1);
}
