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

constexpr std::array<Section, 10> kSections = {{
    {tag::Record::IDBitCnts, "tsIDBitCnts", IDBitCntsStr, 0, 3},
    {tag::Record::CfgFlags, "tsCfgFlags", CfgFlagsStr, 0, 7},
    {tag::Record::IDDispParms, "tsIDDispParms", IDDispParmsStr, 0, 4},
    {tag::Record::TimeParms, "tsTimeParms", TimeParmsStr, 0, 4},
    {tag::Record::CfgFlags2, "tsCfgFlags2", CfgFlags2Str, 0, 6},
    {tag::Record::CfgFlags3, "tsCfgFlags3", CfgFlags3Str, 0, 7},
    {tag::Record::IDDispParms2, "tsIDDispParms2", IDDispParms2Str, 0, 5},
    {tag::Record::IDDispParms3, "tsIDDispParms3", IDDispParms3Str, 0, 3},
    {tag::Record::LEDCtrl, "tsLEDCtrl", LEDCtrlStr, 0, 2},
    {tag::Record::BprRlyCtrl, "tsBprRlyCtrl", BprRlyCtrlStr, 1, 2},
}};

constexpr char kTitle[] = "--- zelTag and OEM Reader Configuration Template File ---";
constexpr char kFieldData[] = "sFldSepData";

// An application may have put anything into the tables.
inline const char* textOf(const char* text) { return text ? text : ""; }

} // namespace zel::cfgfile
