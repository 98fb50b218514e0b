// SPDX-License-Identifier: MIT
// What a proximity reader's command means, for a person who reads a trace.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zel::sim {

// Empty when the command has no name. `command` is the payload of a report.
std::string tagCommandName(std::span<const std::uint8_t> command);

} // namespace zel::sim
