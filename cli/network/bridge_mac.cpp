// SPDX-License-Identifier: MIT
// Asks a bridge for its MAC address and knows the one that stands for no answer.
#include "cli/network/bridge_mac.h"

#include "frame/zelTagAPI.h"

namespace zel::cli {

namespace {
constexpr Mac kNoAnswer = {0x00, 0x20, 0x4A, 0x00, 0x00, 0x00};
}

std::optional<Mac> macOf(const Ipv4& host) {
    Mac mac = kNoAnswer;
    socket_GetMACAddress(host[0], host[1], host[2], host[3], mac.data());
    return mac == kNoAnswer ? std::nullopt : std::optional(mac);
}

} // namespace zel::cli
