// SPDX-License-Identifier: MIT
// The keys of a proximity reader's file: the exported tables of names, in the order of the file.
#pragma once

#include "family/tag/words.h"

#include <array>

namespace zel::cfgfile {

// A record's section. Every row is read by its name; a range of them is written.
struct Section {
    tag::Record record;
    const char* heading;
    const tsNamePair* names;
    std::size_t firstWritten;
    std::size_t lastWritten;

    const tag::Word& word(std::size_t row) const { return tag::wordsOf(record)[row]; }
};

// A record's heading and table have its name.
#define ZEL_SECTION(record, first, last)                                                           \
    { tag::Record::record, "ts" #record, record##Str, first, last }

constexpr std::array<Section, 10> kSections = {{
    ZEL_SECTION(IDBitCnts, 0, 3),
    ZEL_SECTION(CfgFlags, 0, 7),
    ZEL_SECTION(IDDispParms, 0, 4),
    ZEL_SECTION(TimeParms, 0, 4),
    ZEL_SECTION(CfgFlags2, 0, 6),
    ZEL_SECTION(CfgFlags3, 0, 7),
    ZEL_SECTION(IDDispParms2, 0, 5),
    ZEL_SECTION(IDDispParms3, 0, 3),
    ZEL_SECTION(LEDCtrl, 0, 2),
    ZEL_SECTION(BprRlyCtrl, 1, 2),
}};

#undef ZEL_SECTION

constexpr char kTitle[] = "--- zelTag and OEM Reader Configuration Template File ---";
constexpr char kFieldData[] = "sFldSepData";

} // namespace zel::cfgfile
