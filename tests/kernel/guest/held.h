// SPDX-License-Identifier: MIT
// What this process holds: descriptors and memory.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zel::test {

inline long countDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

// Of memory in use, in KiB.
inline long residentMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long size = 0; word == "VmRSS:" && status >> size)
            return size;
    return -1;
}

} // namespace zel::test
