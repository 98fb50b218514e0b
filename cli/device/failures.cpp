// SPDX-License-Identifier: MIT
// Names the active device and the library's error word in a failure.
#include "cli/device/failures.h"

#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

#include <cstdint>
#include <fmt/format.h>

namespace zel::cli {

Failure deviceFailed(const std::string& what, const std::string& hint) {
    const Device device = activeDevice();
    const auto error = static_cast<std::uint64_t>(GetLastLibErr());
    const std::string word = error == 0 ? "" : fmt::format(" (library error 0x{:X})", error);
    return {ExitCode::Failed, fmt::format("{} {} failed{}", what, device.name, word), hint,
            device.name};
}

Failure wrongProduct(const std::string& reason, const std::string& hint) {
    const Device device = activeDevice();
    return {ExitCode::Failed, fmt::format("{} is a {}: {}", device.name, activeProduct(), reason),
            hint, device.name};
}

} // namespace zel::cli
