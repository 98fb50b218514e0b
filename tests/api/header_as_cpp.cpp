// SPDX-License-Identifier: MIT
// The public headers from C++20: C linkage, and the two text objects.
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <cstdio>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<tsDevDat>, "records are copied whole");
static_assert(std::is_standard_layout_v<tsDevDat>, "records are plain data");

int main() {
    space += "longer than the room that a short text has inside its object";
    const bool good = getLibraryVersion_Major() == 7 && space.size() == 61 && errorString.empty() &&
                      pDevDat == DevDat;
    std::puts(good ? "good" : "not good");
    return good ? 0 : 1;
}
