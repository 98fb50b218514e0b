// SPDX-License-Identifier: MIT
// The presence test with a time measurement.
#include "base/runtime.h"
#include "family/band/band.h"
#include "family/tag/tag.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"

#include <algorithm>

namespace {

constexpr std::uint64_t kLongestPing = 65535; // ms

bool isPresent() {
    return zel::forFamilyOr(0, zeltag_IsDevicePresent, zelband_IsDevicePresent, nullptr) != 0;
}

} // namespace

// An absent device is told by the size of the result: the time of the start, unchanged.
std::uint64_t Ping() {
    const std::uint64_t start = GetTickCount();
    if (!isPresent())
        return start;
    return std::clamp<std::uint64_t>(GetTickCount() - start, 1, kLongestPing);
}
