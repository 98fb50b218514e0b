// SPDX-License-Identifier: MIT
// How the simulated bridge answers the two probes, through real sockets of the loopback network.
#include "sim/bridge/bridge.h"
#include "tests/sim/echo_stream.h"
#include "tests/support/host_socket.h"
#include "tests/support/loopback.h"

#include <gtest/gtest.h>
#include <ostream>

using namespace zel::sim;

namespace zel::sim {

static void PrintTo(Probe probe, std::ostream* stream) {
    *stream << (probe == Probe::Discovery ? "Discovery" : "MacQuery");
}

} // namespace zel::sim

namespace zel::test {

namespace {

constexpr int kWait = 1000; // ms until what was sent must have arrived

const Bytes& bytesOf(Probe probe) {
    static const Bytes discovery = {'Z', 'T', 'A', 'G', 'D', 'I', 'S', 'C', 1, 0};
    static const Bytes macQuery = {0, 0, 0, 0xF6};
    return probe == Probe::Discovery ? discovery : macQuery;
}

BridgeOptions optionsWithout(Probe probe) {
    return {.address = loopbackHost(2),
            .servesDiscovery = probe != Probe::Discovery,
            .servesMacQuery = probe != Probe::MacQuery};
}

class BridgeProbe : public ::testing::TestWithParam<Probe> {
protected:
    BridgeProbe() { EXPECT_TRUE(bridge_.start()) << "port " << bridge_.failedPort(); }

    void send() { host_.sendTo(options_.address, portOf(GetParam()), bytesOf(GetParam())); }
    Bytes ask() {
        send();
        bridge_.pump(kWait);
        return host_.receiveFrom(sender_);
    }
    Bytes reply() const { return replyTo(GetParam(), options_.address, options_.mac); }
    ProbeFaults& faults() { return bridge_.probeFaults(GetParam()); }

    BridgeOptions options_ = {.address = loopbackHost(1), .mac = {0x00, 0x1D, 0x4B, 1, 2, 3}};
    Bridge bridge_{std::make_shared<EchoStream>(), options_};
    HostSocket host_ = HostSocket::datagrams();
    Ipv4Address sender_ = {};
};

} // namespace

TEST_P(BridgeProbe, IsAnsweredFromTheAddressOfTheBridge) {
    EXPECT_EQ(ask(), reply());
    EXPECT_EQ(sender_, options_.address);
}

TEST_P(BridgeProbe, OfOtherBytesIsNotAnswered) {
    host_.sendTo(options_.address, portOf(GetParam()), {0, 0, 0, 0xF5});
    EXPECT_EQ(ask(), reply());
    EXPECT_FALSE(host_.hasSomething());
}

TEST_P(BridgeProbe, SentTwiceIsAnsweredTwice) {
    send();
    EXPECT_EQ(ask(), reply());
    EXPECT_EQ(host_.receiveFrom(sender_), reply());
}

TEST_P(BridgeProbe, GetsNoAnswerWhileItIsSilent) {
    faults().silent = true;
    send();
    bridge_.pump(kWait);
    faults().silent = false;
    EXPECT_EQ(ask(), reply());
    EXPECT_FALSE(host_.hasSomething());
}

TEST_P(BridgeProbe, WaitsForItsLateAnswer) {
    faults().late = 2;
    send();
    bridge_.pump(kWait);
    bridge_.pump(kWait);
    EXPECT_FALSE(host_.hasSomething());
    bridge_.pump(kWait);
    EXPECT_EQ(host_.receiveFrom(sender_), reply());
}

TEST_P(BridgeProbe, IsAnsweredFromAnotherAddress) {
    faults().from = loopbackHost(9);
    EXPECT_EQ(ask(), reply());
    EXPECT_EQ(sender_, loopbackHost(9));
}

TEST_P(BridgeProbe, HasAnyByteOfItsAnswerReplaced) {
    for (std::size_t offset = 0; offset < reply().size(); ++offset) {
        SCOPED_TRACE(offset);
        Bytes expected = reply();
        expected[offset] = 0x99;
        faults().bytes.clear();
        bridge_.spoilReply(GetParam(), offset, 0x99);
        EXPECT_EQ(ask(), expected);
    }
}

TEST_P(BridgeProbe, HasItsAnswerCut) {
    faults().size = 5;
    const Bytes whole = reply();
    EXPECT_EQ(ask(), Bytes(whole.begin(), whole.begin() + 5));
}

TEST_P(BridgeProbe, LeavesItsPortFreeWhereItIsNotServed) {
    Bridge other(std::make_shared<EchoStream>(), optionsWithout(GetParam()));
    EXPECT_TRUE(other.start());
    for (const Probe probe : kProbes) {
        SCOPED_TRACE(static_cast<int>(probe));
        const bool isFree =
            Socket::bound(Socket::Kind::Datagram, loopbackHost(2), portOf(probe)).isOpen();
        EXPECT_EQ(isFree, probe == GetParam());
    }
}

INSTANTIATE_TEST_SUITE_P(Each, BridgeProbe, ::testing::ValuesIn(kProbes),
                         ::testing::PrintToStringParamName());

} // namespace zel::test
