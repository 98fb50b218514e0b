// SPDX-License-Identifier: MIT
// Writes and reads lines of a key, a colon, a number and a comment.
#include "cfgfile/band_file.h"

#include "base/runtime.h"
#include "cfgfile/band_keys.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <cstdio>
#include <string_view>

using namespace zel;

namespace {

constexpr char kTitle[] = "--- zelBand Configuration Template File ---";
constexpr std::size_t kHeadSize = 257; // the title stands within

void writeLine(std::FILE* file, const char* entry, const char* comment) {
    std::fprintf(file, "%-31s %s\n", entry, comment);
}

// Ends with an empty line: the comment of the last one is a line end.
void writeAll(std::FILE* file, const tsDevDat& record) {
    std::fprintf(file, "//%s\n//Library Version: %d.%d.%d \n", kTitle, ZELTAGAPI_VERSION_MAJOR,
                 ZELTAGAPI_VERSION_MINOR, ZELTAGAPI_VERSION_BUILD);
    for (const cfgfile::BandKey& key : cfgfile::kBandKeys) {
        char entry[64];
        std::snprintf(entry, sizeof entry, "%s: %ld", key.name.c_str(), valueOf(key, record));
        writeLine(file, entry, key.comment);
    }
    writeLine(file, "//##END##: ", "\n");
}

// A file that can't be read to its end changes nothing.
bool readAll(std::FILE* file, tsDevDat& record) {
    if (std::fseek(file, 0, SEEK_SET) != 0) // a pipe
        return false;
    const tsDevDat before = record;
    cfgfile::BandLines lines(file);
    while (const char* const line = lines.next())
        if (const cfgfile::BandValue value = cfgfile::bandValueIn(line); value.key)
            store(*value.key, record, value.number);
    if (std::ferror(file) != 0)
        record = before;
    return std::ferror(file) == 0;
}

} // namespace

bool cfgfile::hasBandTitle(std::FILE* file) {
    char head[kHeadSize];
    const std::size_t size = std::fread(head, 1, sizeof head, file);
    return std::string_view(head, size).find(kTitle) != std::string_view::npos;
}

// What the disk doesn't take isn't noticed.
int zelband_WriteDevCfgToFile(const char* name) {
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "wt") != 0)
        return 0;
    writeAll(file, activeRecord());
    std::fclose(file);
    return 1;
}

int zelband_ReadDevCfgFmFile(const char* name) {
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "rt") != 0)
        return 0;
    const bool isRead = cfgfile::hasBandTitle(file) && readAll(file, activeRecord());
    std::fclose(file);
    return isRead ? 1 : 0;
}
