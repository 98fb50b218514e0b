// SPDX-License-Identifier: MIT
// Bounded copies of texts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>

namespace zel {

// Copies a text as far as it fits with its end; what lies behind it is zero. Returns its length.
inline std::size_t copyText(std::span<char> to, const char* from) {
    const std::size_t length = strnlen(from, to.size() - 1);
    std::memcpy(to.data(), from, length);
    std::fill(to.begin() + static_cast<std::ptrdiff_t>(length), to.end(), '\0');
    return length;
}

} // namespace zel
