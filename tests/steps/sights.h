// SPDX-License-Identifier: MIT
// Bytes and words as sights show them.
#pragma once

#include "sim/wire/byte_text.h"
#include "tests/steps/bench.h"

#include <initializer_list>
#include <string>

namespace zel::test::steps {

inline std::string shown(std::span<const std::uint8_t> bytes) { return sim::hexOf(bytes); }

template <class Object> std::string shownObject(const Object& object) {
    return shown({reinterpret_cast<const std::uint8_t*>(&object), sizeof object});
}

inline std::string shownWords(std::initializer_list<long long> words) {
    std::string text;
    for (const long long word : words)
        text += std::to_string(word) + ' ';
    return text;
}

// The caller's buffer, and the library's own one.
inline const Sight kBuffer = {"the buffer", [] { return shown(buffer()); }};
inline const Sight kOwnBuffer = {"activeIDBuf", [] { return shown(activeIDBuf); }};

} // namespace zel::test::steps
