// SPDX-License-Identifier: MIT
// The checksum of a file's text, bit by bit.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace zel::test {

inline std::uint32_t crc32(std::string_view text) {
    std::uint32_t remainder = ~std::uint32_t{0};
    for (const char character : text) {
        remainder ^= static_cast<unsigned char>(character);
        for (int bit = 0; bit < 8; ++bit)
            remainder = remainder >> 1 ^ ((remainder & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~remainder;
}

// Eight upper-case digits, as a file carries them.
inline std::string crcDigits(std::string_view text) {
    char digits[9] = {};
    std::snprintf(digits, sizeof digits, "%08X", crc32(text));
    return digits;
}

} // namespace zel::test
