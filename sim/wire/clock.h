// SPDX-License-Identifier: MIT
// The clock of the simulated devices: the one that the library reads, so a test can own both.
#pragma once

#include <cstdint>
#include <sys/time.h>

namespace zel::sim {

inline std::uint64_t microseconds() {
    timeval time{};
    gettimeofday(&time, nullptr);
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000 +
           static_cast<std::uint64_t>(time.tv_usec);
}

} // namespace zel::sim
