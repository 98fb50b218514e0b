// SPDX-License-Identifier: MIT
// A card's identifier and its written forms.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zel::cli {

struct Identifier {
    static constexpr std::size_t kSize = 32;

    int bits = 0;
    bool isWhole = false;                       // all bytes count, those behind the bits too
    std::array<std::uint8_t, kSize> bytes = {}; // little-endian

    // The bytes that the bits fill, or all, least significant first.
    std::vector<std::uint8_t> used() const;

    bool operator==(const Identifier&) const = default;
};

// Two digits a byte, most significant byte first.
std::string hexOf(const Identifier& identifier);

// The whole number, which may have 77 digits.
std::string decimalOf(const Identifier& identifier);

} // namespace zel::cli
