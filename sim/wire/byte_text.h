// SPDX-License-Identifier: MIT
// Bytes as a trace shows them.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zel::sim {

// Pairs of hexadecimal digits with a space between.
std::string hexOf(std::span<const std::uint8_t> bytes);

// Printable text with its line ends stands in quotes, everything else as hexOf().
std::string chunkOf(std::span<const std::uint8_t> bytes);

} // namespace zel::sim
