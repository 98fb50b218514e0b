// SPDX-License-Identifier: MIT
// The datagrams of the two probes.
#include "sim/bridge/probes.h"

#include <algorithm>
#include <string_view>

namespace zel::sim {

namespace {

constexpr std::uint8_t kDiscovery[] = {'Z', 'T', 'A', 'G', 'D', 'I', 'S', 'C', 0x01, 0x00};
constexpr std::uint8_t kMacQuery[] = {0x00, 0x00, 0x00, 0xF6};
constexpr std::size_t kDiscoveryReplySize = 40;
constexpr std::size_t kMacReplySize = 30;

using Datagram = std::vector<std::uint8_t>;

template <class Bytes> void put(Datagram& datagram, std::ptrdiff_t offset, const Bytes& bytes) {
    std::copy(std::begin(bytes), std::end(bytes), datagram.begin() + offset);
}

Datagram discoveryReply(const Ipv4Address& address) {
    constexpr std::uint8_t kKind[] = {0xF4, 0xF0, 0xF2, 0xF0};
    constexpr std::uint8_t kBuild[] = {0x68, 0xAB, 0x8A};
    Datagram reply(kDiscoveryReplySize);
    put(reply, 0, std::string_view("ZTAGDISC\x02"));
    put(reply, 10, kKind);
    put(reply, 14, std::string_view("-Norvane/Wedge"));
    put(reply, 29, kBuild);
    put(reply, 36, address);
    return reply;
}

Datagram macReply(const MacAddress& mac) {
    Datagram reply(kMacReplySize);
    reply[3] = 0xF7;
    put(reply, 24, mac);
    return reply;
}

} // namespace

bool isProbe(Probe probe, std::span<const std::uint8_t> datagram) {
    return probe == Probe::Discovery ? std::ranges::equal(datagram, kDiscovery)
                                     : std::ranges::equal(datagram, kMacQuery);
}

Datagram replyTo(Probe probe, const Ipv4Address& address, const MacAddress& mac) {
    return probe == Probe::Discovery ? discoveryReply(address) : macReply(mac);
}

} // namespace zel::sim
