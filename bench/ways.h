// SPDX-License-Identifier: MIT
// The ways to do a thing that are compared, under one shape: by the library, and by the least that
// could do the same.
#pragma once

#include <span>
#include <string_view>

namespace zel::bench {

struct Way {
    const char* name;
    bool (*begin)(); // makes ready; whether that went well
    // A read: the bits of the card, 0 when it isn't the stand-in's; a scan and a connect: readers;
    // anything else: 1 once done.
    int (*once)();
    void (*end)();
};

// Card reads and scans by the library and by what stands below it.
std::span<const Way> libraryWays();

// Connects, and settings read and written.
std::span<const Way> settingsWays();

// Template files of settings, written and read in the working directory.
std::span<const Way> templateWays();

// A firmware file's check, in the working directory; none when built without zlib.
std::span<const Way> firmwareWays();

// hidapi, the library that users would take instead; none when built without it.
std::span<const Way> hidapiWays();

std::span<const std::span<const Way>> allWays();

// The way of that name, or null.
const Way* findWay(std::string_view name);

// Whether the eight bytes are the stand-in's card.
bool isStandinCard(const unsigned char* id);

} // namespace zel::bench
