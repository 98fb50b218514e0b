// SPDX-License-Identifier: MIT
// The part of the loopback network that is this test process's own, so that tests that run at the
// same time can listen on the same fixed ports.
#pragma once

#include "sim/bridge/probes.h"

#include <cstdint>
#include <unistd.h>

namespace zel::test {

inline sim::Ipv4Address loopbackHost(std::uint8_t host) {
    const auto process = static_cast<std::uint32_t>(getpid());
    constexpr std::uint32_t kNetworks = 254; // neither the system's own 0 nor the broadcast's 255
    return {127, static_cast<std::uint8_t>(1 + process / 256 % kNetworks),
            static_cast<std::uint8_t>(process % 256), host};
}

} // namespace zel::test
