// SPDX-License-Identifier: MIT
// The ways to read a card and to scan for readers that are compared, under one shape.
#pragma once

#include <span>
#include <string_view>

namespace zel::bench {

struct Way {
    const char* name;
    bool (*begin)(); // makes ready; whether that went well
    int (*once)(); // a read: the bits of the card, 0 when it isn't the stand-in's; a scan: readers
    void (*end)();
};

// The library and what stands below it.
std::span<const Way> libraryWays();

// hidapi, the library that users would take instead; none when built without it.
std::span<const Way> hidapiWays();

// The way of that name, or null.
const Way* findWay(std::string_view name);

// Whether the eight bytes are the stand-in's card.
bool isStandinCard(const unsigned char* id);

} // namespace zel::bench
