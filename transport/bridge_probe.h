// SPDX-License-Identifier: MIT
// The two datagrams that a network bridge answers, and what counts as its answer.
#pragma once

#include "transport/ipv4.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel {

// A reply as received; bytes that didn't come are 0xFF.
using Reply = std::array<std::uint8_t, 256>;
using MacAddress = std::array<std::uint8_t, 6>;

constexpr std::uint16_t kFirstProbePort = 11000;
constexpr std::uint16_t kSecondProbePort = 30718;
constexpr std::size_t kFirstReplyRoom = 128;

// Where a reply to the second probe tells the address. That of a known maker begins with 0.
constexpr std::size_t kMacAt = 24;

constexpr std::array<std::uint8_t, 10> kFirstProbe = {'Z', 'T', 'A', 'G', 'D', 'I', 'S', 'C', 1, 0};
constexpr std::array<std::uint8_t, 4> kSecondProbe = {0, 0, 0, 0xF6};

constexpr Reply noReply() {
    Reply reply = {};
    reply.fill(0xFF);
    return reply;
}

// Whether a reply to the first probe comes from a bridge that was asked at this address.
bool isFirstReply(const Reply& reply, const Ipv4& address);

// Whether a reply to the second probe comes from a bridge of a known maker.
bool isSecondReply(const Reply& reply);

// The bridge's address that a reply to the second probe tells (IEEE 802.3).
MacAddress macOf(const Reply& reply);

} // namespace zel
