// SPDX-License-Identifier: MIT
// A word that is a number from its first character to its last.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace zel::cli {

// Nothing for any other text, and for a number that the type can't hold.
template <class Number> std::optional<Number> wholeNumber(std::string_view text, int base = 10) {
    Number number = 0;
    const char* const behind = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), behind, number, base);
    return error == std::errc() && end == behind ? std::optional(number) : std::nullopt;
}

} // namespace zel::cli
