// SPDX-License-Identifier: MIT
// Gathers the ways and finds one by name.
#include "bench/ways.h"

#include "bench/standin.h"

#include <algorithm>
#include <cstring>

namespace zel::bench {

#ifndef ZEL_BENCH_HIDAPI
std::span<const Way> hidapiWays() { return {}; }
#endif

#ifndef ZEL_BENCH_ZLIB
std::span<const Way> firmwareWays() { return {}; }
#endif

std::span<const std::span<const Way>> allWays() {
    static const std::span<const Way> all[] = {libraryWays(), hidapiWays(), settingsWays(),
                                               templateWays(), firmwareWays()};
    return all;
}

const Way* findWay(std::string_view name) {
    for (const std::span<const Way> ways : allWays()) {
        const auto way = std::ranges::find(ways, name, &Way::name);
        if (way != ways.end())
            return &*way;
    }
    return nullptr;
}

bool isStandinCard(const unsigned char* id) {
    return std::memcmp(id, kCardId, sizeof kCardId) == 0;
}

} // namespace zel::bench
