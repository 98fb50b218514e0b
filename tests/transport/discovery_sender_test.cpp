// SPDX-License-Identifier: MIT
// A bridge on another network than the one searched: what is sent to network 10 arrives on the
// loopback network, which answers from its own addresses.
#include "sim/bridge/socket.h"
#include "tests/support/library_test.h"
#include "tests/support/loopback.h"
#include "tests/transport/system_calls.h"
#include "transport/tcp_socket.h"

#include <array>
#include <poll.h>

namespace zel::test {

namespace {

using Datagram = std::vector<std::uint8_t>;

class OtherNetwork : public LibraryTest {
protected:
    OtherNetwork() {
        systemCalls() = {};
        systemCalls().sendTo = [](sockaddr_in& to) {
            reinterpret_cast<std::uint8_t&>(to.sin_addr) = 127;
        };
        onPause([this](std::uint64_t) {
            if (!answers_.empty())
                answer();
        });
    }
    ~OtherNetwork() override { systemCalls() = {}; }

    // Once, in the pause behind the probe.
    void answer() {
        constexpr int kPatience = 1000; // ms
        constexpr int kDelivery = 2;
        pollfd end = {host_.descriptor(), POLLIN, 0};
        poll(&end, 1, kPatience);
        std::array<std::uint8_t, 16> probe;
        sockaddr_in library = {};
        if (host_.receiveFrom(probe, library) > 0)
            for (const Datagram& datagram : answers_)
                host_.sendTo(datagram, library);
        answers_.clear();
        poll(nullptr, 0, kDelivery);
    }

    const sim::Ipv4Address address_ = loopbackHost(5);
    const sim::Ipv4Address asked_ = {10, address_[1], address_[2], 5};
    int find() const { return socket_FindXport(10, address_[1], address_[2], 5, 5); }

    sim::Socket host_ = sim::Socket::bound(sim::Socket::Kind::Datagram, address_, 11000);
    std::vector<Datagram> answers_;
};

const Datagram kMacReply = replyTo(sim::Probe::MacQuery, {}, {0x00, 0x1D, 0x4B, 1, 2, 3});

} // namespace

TEST_F(OtherNetwork, IsTheResultOfTheSecondProbe) {
    answers_ = {{0}, kMacReply};
    EXPECT_EQ(find(), 127);
}

TEST_F(OtherNetwork, DoesNotMatterForTheFirstProbe) {
    answers_ = {replyTo(sim::Probe::Discovery, asked_, {})};
    EXPECT_EQ(find(), 5);
    answers_ = {replyTo(sim::Probe::Discovery, address_, {})};
    EXPECT_EQ(find(), 0) << "the reply must name the address asked";
}

TEST_F(OtherNetwork, TellsNoMacAddress) {
    std::array<std::uint8_t, 6> mac;
    host_ = sim::Socket::bound(sim::Socket::Kind::Datagram, address_, 30718);
    answers_ = {kMacReply};
    EXPECT_EQ(socket_GetMACAddress(10, address_[1], address_[2], 5, mac.data()), 1);
    EXPECT_EQ(mac, (std::array<std::uint8_t, 6>{0x00, 0x20, 0x4A, 0, 0, 0}));
}

} // namespace zel::test
