// SPDX-License-Identifier: MIT
// The two probes by which a host finds a network bridge, and the bridge's replies, byte by byte.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace zel::sim {

using Ipv4Address = std::array<std::uint8_t, 4>; // first byte of the dotted form first
using MacAddress = std::array<std::uint8_t, 6>;

enum class Probe {
    Discovery, // is there a bridge, and is it the one at this address
    MacQuery,  // what is the bridge's MAC address
};

inline constexpr Probe kProbes[] = {Probe::Discovery, Probe::MacQuery};

// The UDP port that a bridge awaits the probe on.
constexpr std::uint16_t portOf(Probe probe) { return probe == Probe::Discovery ? 11000 : 30718; }

bool isProbe(Probe probe, std::span<const std::uint8_t> datagram);

// The reply of the bridge with these addresses.
std::vector<std::uint8_t> replyTo(Probe probe, const Ipv4Address& address, const MacAddress& mac);

} // namespace zel::sim
