// SPDX-License-Identifier: MIT
// An identifier as hexadecimal and decimal text.
#include "cli/card/identifier.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace zel::cli {

namespace {

constexpr int kBitsPerByte = 8;

bool isZero(const std::vector<std::uint8_t>& number) {
    return std::all_of(number.begin(), number.end(), [](std::uint8_t byte) { return byte == 0; });
}

// Divides a little-endian number by ten; returns the remainder.
unsigned divideByTen(std::vector<std::uint8_t>& number) {
    unsigned remainder = 0;
    for (auto byte = number.rbegin(); byte != number.rend(); ++byte) {
        const unsigned part = remainder << kBitsPerByte | *byte;
        *byte = static_cast<std::uint8_t>(part / 10);
        remainder = part % 10;
    }
    return remainder;
}

} // namespace

std::vector<std::uint8_t> Identifier::used() const {
    const int whole = (std::max(bits, 0) + kBitsPerByte - 1) / kBitsPerByte;
    const auto count = isWhole ? kSize : std::min(static_cast<std::size_t>(whole), kSize);
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::string hexOf(const Identifier& identifier) {
    const auto bytes = identifier.used();
    return fmt::format("{:02X}", fmt::join(bytes.rbegin(), bytes.rend(), ""));
}

std::string decimalOf(const Identifier& identifier) {
    auto rest = identifier.used();
    std::string digits;
    do {
        digits += static_cast<char>('0' + divideByTen(rest));
    } while (!isZero(rest));
    std::reverse(digits.begin(), digits.end());
    return digits;
}

} // namespace zel::cli
