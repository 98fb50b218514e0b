// SPDX-License-Identifier: MIT
// The clock, texts without case, files.
#include "base/runtime.h"

#include <cctype>
#include <cerrno>
#include <sys/time.h>

namespace {

int lowerCase(char c) { return std::tolower(static_cast<unsigned char>(c)); }

// Stops at the first difference, at the end of either text, or after `pairs` pairs. Equal
// characters, the most, need no mapping.
int compareWithoutCase(const char* a, const char* b, std::size_t pairs) {
    for (;; ++a, ++b) {
        const int difference = *a == *b ? 0 : lowerCase(*a) - lowerCase(*b);
        if (difference != 0 || *a == '\0' || --pairs == 0)
            return difference;
    }
}

} // namespace

std::uint64_t GetTickCount() {
    timeval now{};
    gettimeofday(&now, nullptr);
    return static_cast<std::uint64_t>(now.tv_sec) * 1000 +
           static_cast<std::uint64_t>(now.tv_usec) / 1000;
}

// A count of pairs that wraps to the greatest value has no end of its own.
int _stricmp(const char* a, const char* b) { return compareWithoutCase(a, b, 0); }

int _strnicmp(const char* a, const char* b, std::size_t count) {
    return count == 0 ? 0 : compareWithoutCase(a, b, count + 1);
}

int fopen_s(std::FILE** file, const char* name, const char* mode) {
    *file = std::fopen(name, mode);
    return *file != nullptr ? 0 : errno;
}
