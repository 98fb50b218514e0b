// SPDX-License-Identifier: MIT
// IPv4 addresses byte by byte, and as the sockets want them.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <netinet/in.h>

namespace zel {

using Ipv4 = std::array<std::uint8_t, 4>;

inline sockaddr_in socketAddress(const Ipv4& address, std::uint16_t port) {
    sockaddr_in to = {};
    to.sin_family = AF_INET;
    to.sin_port = htons(port);
    to.sin_addr.s_addr = std::bit_cast<std::uint32_t>(address);
    return to;
}

inline Ipv4 bytesOf(const in_addr& address) {
    return std::bit_cast<Ipv4>(static_cast<std::uint32_t>(address.s_addr));
}

} // namespace zel
