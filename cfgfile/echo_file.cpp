// SPDX-License-Identifier: MIT
// Writes and reads the rows of the four records.
#include "cfgfile/echo_file.h"

#include "base/runtime.h"
#include "cfgfile/text_lines.h"
#include "cfgfile/text_writer.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <span>

using namespace zel;
using cfgfile::textOf;

namespace {

constexpr char kTitle[] = "--- Sonar Configuration Template File ---";

// A record of the settings: its heading, its names and where its words stand.
struct Section {
    const char* heading;
    std::span<const tsNamePair> names;
    std::size_t offset;
};

// The names are data that an application may change, so they are looked at afresh.
const Section kSections[] = {
    {"tsSonarParms", SonarParmsStr, offsetof(tsEcho, sSonarParms)},
    {"tsWalkAwayParms", WalkAwayParmsStr, offsetof(tsEcho, sWalkAwayParms)},
    {"tsWalkUpParms", WalkUpParmsStr, offsetof(tsEcho, sWalkUpParms)},
    {"tsIdleParms", IdleParmsStr, offsetof(tsEcho, sIdleParms)},
};

std::size_t placeOf(const Section& section, std::size_t word) {
    return section.offset + word * sizeof(std::uint16_t);
}

std::uint16_t wordAt(const tsEcho& settings, std::size_t place) {
    std::uint16_t word = 0;
    std::memcpy(&word, reinterpret_cast<const unsigned char*>(&settings) + place, sizeof word);
    return word;
}

void writeSection(std::FILE* file, const Section& section, const tsEcho& settings) {
    cfgfile::writeHeading(file, section.heading);
    for (std::size_t word = 0; word < section.names.size(); ++word)
        cfgfile::writeRow(file, section.names[word], wordAt(settings, placeOf(section, word)));
}

// What the strict checks refuse keeps its old values as a whole, without a trace: the last record
// has no check and clears the error word.
void apply(tsEcho& read) {
    SetWalkAwayParms(&read.sWalkAwayParms);
    SetWalkUpParms(&read.sWalkUpParms);
    SetSonarParms(&read.sSonarParms);
    SetIdleParms(&read.sIdleParms);
}

} // namespace

int ProcessSonarTokenVal(const char* name, int value, std::uint16_t* area) {
    if (!name || !area)
        return 0;
    const auto number = static_cast<std::uint16_t>(value);
    for (const Section& section : kSections)
        for (std::size_t word = 0; word < section.names.size(); ++word)
            if (cfgfile::isSameKey(textOf(section.names[word].name), name)) {
                std::memcpy(reinterpret_cast<unsigned char*>(area) + placeOf(section, word),
                            &number, sizeof number);
                return 1;
            }
    return 0;
}

int zelecho_WriteDevCfgToFile(const char* name) {
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "wt") != 0)
        return 0;
    cfgfile::writeHead(file, kTitle);
    for (const Section& section : kSections)
        writeSection(file, section, activeRecord().Echo);
    std::fclose(file);
    return 1;
}

int zelecho_ReadDevCfgFmFile(const char* name) {
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "rt") != 0)
        return 0;
    tsEcho read = activeRecord().Echo;
    cfgfile::Lines lines(file);
    while (char* const text = lines.next()) {
        if (cfgfile::isComment(text))
            continue;
        const cfgfile::KeyValue setting = cfgfile::keyValueIn(text);
        if (setting.key)
            ProcessSonarTokenVal(setting.key, setting.value,
                                 reinterpret_cast<std::uint16_t*>(&read));
    }
    const bool isRead = std::ferror(file) == 0; // a directory opens, too
    std::fclose(file);
    if (isRead)
        apply(read);
    return isRead ? 1 : 0;
}
