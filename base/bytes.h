// SPDX-License-Identifier: MIT
// Numbers and the bytes that they travel as.
#pragma once

#include <cstdint>

namespace zel {

template <class Number> constexpr std::uint8_t lowByte(Number value) {
    return static_cast<std::uint8_t>(value);
}

// The number of two bytes, whichever of them travels first.
constexpr std::uint16_t wordOf(std::uint8_t high, std::uint8_t low) {
    return static_cast<std::uint16_t>(high << 8 | low);
}

} // namespace zel
