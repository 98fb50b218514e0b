// SPDX-License-Identifier: MIT
// Looks through the hidraw nodes for readers and tests whether they may be opened.
#include "cli/device/system_readers_linux.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <unistd.h>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

// "hidraw12" is 12.
std::optional<unsigned> numberOf(const std::string& entry) {
    unsigned number = 0;
    int used = 0;
    const bool parsed = std::sscanf(entry.c_str(), "hidraw%u%n", &number, &used) == 1;
    return parsed && entry.size() == static_cast<std::size_t>(used) ? std::optional(number)
                                                                    : std::nullopt;
}

// HID_ID=0003:00005A3E:00009D23 is bus, vendor and product. Any device may vanish while it is
// looked at; then there is no such line.
std::optional<ReaderId> readerIdIn(const fs::path& uevent) {
    std::ifstream file(uevent);
    std::string line;
    while (std::getline(file, line)) {
        unsigned vendor = 0;
        unsigned product = 0;
        if (std::sscanf(line.c_str(), "HID_ID=%*x:%x:%x", &vendor, &product) == 2)
            return ReaderId{static_cast<int>(vendor), static_cast<int>(product)};
    }
    return {};
}

Access accessTo(const std::string& node, const HidrawPlaces& places) {
    if (places.access(node.c_str(), R_OK | W_OK) == 0)
        return Access::Open;
    switch (errno) {
    case EACCES:
    case EPERM:
        return Access::Denied;
    case ENOENT:
        return Access::NoNode;
    default:
        return Access::Refused;
    }
}

} // namespace

std::vector<SystemReader> findSystemReaders(const HidrawPlaces& places) {
    std::map<unsigned, SystemReader> found; // the library scans by number too
    std::error_code error;
    for (fs::directory_iterator entry(places.classFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        const auto number = numberOf(name);
        const auto id = readerIdIn(entry->path() / "device" / "uevent");
        if (number && id && isReaderId(*id))
            found[*number] = {places.nodeFolder + "/" + name, Access::Open, *id};
    }
    std::vector<SystemReader> readers;
    readers.reserve(found.size());
    for (const auto& [number, reader] : found)
        readers.push_back({reader.node, accessTo(reader.node, places), reader.id});
    return readers;
}

std::vector<SystemReader> systemReaders() { return findSystemReaders({.access = ::access}); }

} // namespace zel::cli
