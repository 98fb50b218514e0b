// SPDX-License-Identifier: MIT
// Addresses as they are written.
#pragma once

#include "sim/bridge/probes.h"

#include <optional>
#include <string>
#include <string_view>

namespace zel::sim {

std::string toText(const Ipv4Address& address);
std::string toText(const MacAddress& mac);

// "127.0.0.1" of a host, "00:20:4A:00:00:07"; nothing where the text is none.
std::optional<Ipv4Address> ipv4In(std::string_view text);
std::optional<MacAddress> macIn(std::string_view text);

} // namespace zel::sim
