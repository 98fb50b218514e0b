// SPDX-License-Identifier: MIT
// The simulated bridge's stream, through real sockets of the loopback network.
#include "sim/bridge/bridge.h"
#include "tests/sim/echo_stream.h"
#include "tests/support/descriptors.h"
#include "tests/support/host_socket.h"
#include "tests/support/loopback.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>

using namespace zel::sim;

namespace zel::test {

namespace {

constexpr int kWait = 1000; // ms until what was sent must have arrived

std::set<int> inheritedDescriptors() {
    std::set<int> open = openDescriptors();
    std::erase_if(open, [](int fd) { return (fcntl(fd, F_GETFD) & FD_CLOEXEC) != 0; });
    return open;
}

class BridgeStream : public ::testing::Test {
protected:
    BridgeStream() { EXPECT_TRUE(bridge_.start()) << "port " << bridge_.failedPort(); }

    HostSocket connect() const { return HostSocket::connected(address_, bridge_.port()); }

    Ipv4Address address_ = loopbackHost(1);
    std::shared_ptr<EchoStream> device_ = std::make_shared<EchoStream>();
    Bridge bridge_{device_, {.address = address_}};
};

} // namespace

TEST_F(BridgeStream, CarriesBytesToTheDeviceAndBack) {
    HostSocket host = connect();
    host.send({0xFA, 0x04, 0xED});
    bridge_.pump(kWait);
    EXPECT_EQ(device_->received, (Bytes{0xFA, 0x04, 0xED}));
    EXPECT_EQ(host.receive(3), (Bytes{0x05, 0xFB, 0x12}));
}

TEST_F(BridgeStream, RestartsTheDeviceForEachClient) {
    EXPECT_EQ(device_->restarts, 0);
    HostSocket first = connect();
    bridge_.pump(kWait);
    EXPECT_EQ(device_->restarts, 1);
    first.close();
    HostSocket second = connect();
    bridge_.pump(kWait);
    EXPECT_EQ(device_->restarts, 2);
}

TEST_F(BridgeStream, LetsASecondClientWaitUntilTheFirstHasClosed) {
    HostSocket first = connect();
    bridge_.pump(kWait);
    HostSocket second = connect();
    second.send({0x22});
    first.send({0x11});
    bridge_.pump(kWait);
    EXPECT_EQ(first.receive(1), Bytes{0xEE});
    EXPECT_EQ(device_->received, Bytes{0x11});
    first.close();
    bridge_.pump(kWait);
    EXPECT_EQ(second.receive(1), Bytes{0xDD});
}

TEST_F(BridgeStream, ServesClientsThatCameAndWentSinceTheLastPump) {
    HostSocket first = connect();
    first.send({0x11});
    first.close();
    HostSocket second = connect();
    second.send({0x22});
    bridge_.pump(kWait);
    EXPECT_EQ(device_->received, (Bytes{0x11, 0x22}));
    EXPECT_EQ(second.receive(1), Bytes{0xDD});
}

TEST_F(BridgeStream, NoticesThatItsClientHasClosed) {
    HostSocket host = connect();
    bridge_.pump(kWait);
    EXPECT_TRUE(bridge_.hasClient());
    host.close();
    bridge_.pump(kWait);
    EXPECT_FALSE(bridge_.hasClient());
}

TEST_F(BridgeStream, SurvivesAClientThatResetsBeforeItsReplyIsOut) {
    bridge_.streamFaults().dribble = 1;
    HostSocket host = connect();
    host.send({1, 2, 3, 4});
    bridge_.pump(kWait);
    host.abort();
    bridge_.pump(kWait);
    EXPECT_FALSE(bridge_.hasClient());
}

TEST_F(BridgeStream, TakesNoMoreOfAClientThatDoesNotRead) {
    constexpr std::size_t kMuch = 64 << 20;
    const Bytes piece(1 << 16, 0x0F);
    HostSocket host = connect();
    std::size_t sent = 0;
    for (int full = 0; full < 10 && sent < kMuch; bridge_.pump(0)) {
        const std::size_t size = host.sendSome(piece);
        sent += size;
        full = size == 0 ? full + 1 : 0;
    }
    EXPECT_LT(sent, kMuch);
    std::size_t received = 0;
    for (int empty = 0; empty < 10 && received < sent; bridge_.pump(1)) {
        const Bytes some = host.receiveSome();
        received += some.size();
        empty = some.empty() ? empty + 1 : 0;
    }
    EXPECT_EQ(received, sent);
}

TEST_F(BridgeStream, KeepsTheOrderOfManyBytes) {
    Bytes bytes(100'000);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(i % 251);
    HostSocket host = connect();
    Bytes received;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t size = host.sendSome(
            std::span(bytes).subspan(at).first(std::min<std::size_t>(700, bytes.size() - at)));
        bridge_.pump(kWait);
        const Bytes part = host.receive(size);
        received.insert(received.end(), part.begin(), part.end());
        at += size;
    }
    EXPECT_TRUE(received == EchoStream::turnedOver(bytes));
}

// A host that gathers its bytes holds the second one back until the first is acknowledged.
TEST_F(BridgeStream, AcknowledgesAtOnceWhatIsNotAnswered) {
    HostSocket host = connect();
    for (int round = 0; round < 40; ++round) {
        bridge_.streamFaults().silent = true;
        host.send({0x11});
        bridge_.pump(kWait);
        bridge_.streamFaults().silent = false;
        host.send({0x22});
        bridge_.pump(5);
        ASSERT_TRUE(host.hasSomething(5)) << "round " << round;
        ASSERT_EQ(host.receive(1), Bytes{0xDD});
    }
}

TEST_F(BridgeStream, LosesBytesWhileItIsSilent) {
    HostSocket host = connect();
    bridge_.streamFaults().silent = true;
    host.send({0x11});
    bridge_.pump(kWait);
    bridge_.streamFaults().silent = false;
    host.send({0x22});
    bridge_.pump(kWait);
    EXPECT_EQ(host.receive(1), Bytes{0xDD});
    EXPECT_EQ(device_->received, Bytes{0x22});
}

TEST_F(BridgeStream, DribblesSoManyBytesAPump) {
    bridge_.streamFaults().dribble = 2;
    HostSocket host = connect();
    host.send({1, 2, 3, 4, 5});
    std::vector<std::size_t> sizes;
    for (int pump = 0; pump < 4; ++pump) {
        bridge_.pump(pump == 0 ? kWait : 0);
        host.hasSomething(pump < 3 ? kWait : 0);
        sizes.push_back(host.receiveSome().size());
    }
    EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 2, 1, 0}));
}

TEST_F(BridgeStream, ClosesBehindSoManyBytesOfEachClient) {
    bridge_.streamFaults().endsAfter = 3;
    for (int client = 0; client < 2; ++client) {
        SCOPED_TRACE(client);
        HostSocket host = connect();
        host.send({1, 2, 3, 4, 5});
        bridge_.pump(kWait);
        EXPECT_EQ(host.receive(5), (Bytes{0xFE, 0xFD, 0xFC}));
        EXPECT_TRUE(host.isAtEnd());
        EXPECT_EQ(host.error(), 0);
    }
}

TEST_F(BridgeStream, ClosesAtOnceBehindNoBytes) {
    bridge_.streamFaults().endsAfter = 0;
    HostSocket host = connect();
    bridge_.pump(kWait);
    EXPECT_TRUE(host.isAtEnd());
    EXPECT_FALSE(bridge_.hasClient());
}

TEST_F(BridgeStream, ResetsInsteadOfClosing) {
    bridge_.streamFaults().endsAfter = 2;
    bridge_.streamFaults().endsWithReset = true;
    HostSocket host = connect();
    host.send({1, 2, 3});
    bridge_.pump(kWait);
    host.receive(3);
    EXPECT_TRUE(host.isAtEnd());
    EXPECT_EQ(host.error(), ECONNRESET);
}

TEST_F(BridgeStream, RefusesNewClientsAndKeepsTheOldOne) {
    HostSocket old = connect();
    bridge_.pump(kWait);
    bridge_.refuse();
    EXPECT_EQ(connect().error(), ECONNREFUSED);
    old.send({0x11});
    bridge_.pump(kWait);
    EXPECT_EQ(old.receive(1), Bytes{0xEE});
}

TEST_F(BridgeStream, ListensAgainAtItsPort) {
    const std::uint16_t port = bridge_.port();
    bridge_.refuse();
    EXPECT_TRUE(bridge_.listen());
    EXPECT_EQ(bridge_.port(), port);
    HostSocket host = connect();
    host.send({0x11});
    bridge_.pump(kWait);
    EXPECT_EQ(host.receive(1), Bytes{0xEE});
}

TEST_F(BridgeStream, ListensAgainAtItsPortAfterItEndedAConnection) {
    bridge_.streamFaults().endsAfter = 1;
    HostSocket host = connect();
    host.send({0x11});
    bridge_.pump(kWait);
    EXPECT_EQ(host.receive(2), Bytes{0xEE});
    host.close();
    bridge_.refuse();
    EXPECT_TRUE(bridge_.listen());
}

TEST_F(BridgeStream, CanBeHadAtSeveralAddressesWithTheSamePorts) {
    Bridge other(device_, {.address = loopbackHost(2), .port = bridge_.port()});
    EXPECT_TRUE(other.start());
}

TEST_F(BridgeStream, FailsToStartWhereItsTcpPortIsTaken) {
    Bridge other(device_, {.address = address_, .port = bridge_.port()});
    EXPECT_FALSE(other.start());
    EXPECT_EQ(errno, EADDRINUSE);
    EXPECT_EQ(other.failedPort(), bridge_.port());
    EXPECT_FALSE(other.failedAtDiscovery());
}

TEST(BridgePorts, OfProbesThatAreTakenLetTheStartFailAndNothingStaysOpen) {
    for (const Probe probe : kProbes) {
        SCOPED_TRACE(static_cast<int>(probe));
        const Socket holder = Socket::bound(Socket::Kind::Datagram, loopbackHost(1), portOf(probe));
        const auto before = openDescriptors();
        Bridge bridge(std::make_shared<EchoStream>(), {.address = loopbackHost(1)});
        EXPECT_FALSE(bridge.start());
        EXPECT_EQ(errno, EADDRINUSE);
        EXPECT_EQ(bridge.failedPort(), portOf(probe));
        EXPECT_TRUE(bridge.failedAtDiscovery());
        EXPECT_EQ(openDescriptors(), before);
    }
}

TEST(BridgePorts, AreNotInheritedAndAllReleased) {
    const auto before = openDescriptors();
    const auto inherited = inheritedDescriptors();
    {
        Bridge bridge(std::make_shared<EchoStream>(), {.address = loopbackHost(1)});
        ASSERT_TRUE(bridge.start());
        const HostSocket host = HostSocket::connected(loopbackHost(1), bridge.port());
        bridge.pump(kWait);
        EXPECT_TRUE(bridge.hasClient());
        // listener, two probes, the client's two ends
        EXPECT_EQ(openDescriptors().size(), before.size() + 5);
        EXPECT_EQ(inheritedDescriptors(), inherited);
    }
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace zel::test
