// SPDX-License-Identifier: MIT
// Addresses on the network as a user writes them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zel::cli {

using Ipv4 = std::array<std::uint8_t, 4>; // first byte of the dotted form first
using Mac = std::array<std::uint8_t, 6>;

std::string asText(const Ipv4& address);
std::string asText(const Mac& mac);

// "A.B.C.D"
std::optional<Ipv4> addressIn(std::string_view text);

// HOST or HOST:PORT, the host by name or by address.
struct Endpoint {
    std::string host;
    std::uint16_t port;
};

std::optional<Endpoint> endpointIn(std::string_view text);

// Hosts of one network, each by its last byte.
struct HostRange {
    Ipv4 first;
    std::uint8_t last;

    int count() const { return last - first[3] + 1; }
    Ipv4 at(int index) const;
};

// "A.B.C.FIRST-LAST" or "A.B.C.D", of the bytes 1 to 254.
std::optional<HostRange> hostsIn(std::string_view text);

// What is wrong with a word; empty when nothing is.
std::string checkEndpoint(const std::string& text);
std::string checkHosts(const std::string& text);

} // namespace zel::cli
