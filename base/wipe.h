// SPDX-License-Identifier: MIT
// Work areas that hold key data, cleared before they leave.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace zel {

// Zeroes an area that nobody reads again; a plain memset there is one that a compiler leaves out.
inline void wipe(void* area, std::size_t size) {
    if (size == 0)
        return;
    std::memset(area, 0, size);
    __asm__ __volatile__("" : : "r"(area) : "memory");
}

// An area of zeros that is wiped when its scope ends.
template <class Area> struct Wiped {
    static_assert(std::is_trivially_copyable_v<Area>);

    Wiped() = default;
    ~Wiped() { wipe(&area, sizeof area); }
    Wiped(const Wiped&) = delete;
    Wiped& operator=(const Wiped&) = delete;

    Area area = {};
};

} // namespace zel
