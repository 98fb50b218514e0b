// SPDX-License-Identifier: MIT
// The table of words, made from the rows of the records, and the library's calls by record.
#include "cli/config/words.h"

#include "frame/zelTagAPI.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <string_view>

namespace zel::cli {

namespace {

enum Record : std::size_t {
#define ZEL_RECORD(record, table, calls) record,
#define ZEL_WORD(record, index, name, label, kind, description, place)
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
    kRecords
};

constexpr int wire(int, int, int, int, int unit) { return unit; }
constexpr int mirror(int, int, int) { return 1; }
constexpr int nowhere = 1;

constexpr Word kWords[] = {
#define ZEL_RECORD(record, table, calls)
#define ZEL_WORD(record, index, name, label, kind, description, place)                             \
    {Record::record, index, #name, WordKind::kind, description, place},
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
};

template <class Struct, int (*get)(Struct*)> bool getRecord(Values& values) {
    static_assert(sizeof(Struct) == sizeof(Values));
    Struct record = {};
    const bool done = get(&record) == 1;
    std::memcpy(values.data(), &record, sizeof record);
    return done;
}

template <class Struct, int (*set)(Struct*)> bool setRecord(const Values& values) {
    Struct record = {};
    std::memcpy(&record, values.data(), sizeof record);
    return set(&record) == 1;
}

struct Access {
    const char* name;
    bool (*get)(Values&);
    bool (*set)(const Values&);
};

constexpr Access kAccess[] = {
#define ZEL_RECORD(record, table, calls)                                                           \
    {#record, getRecord<s##record, Get##calls>, setRecord<s##record, Set##calls>},
#define ZEL_WORD(record, index, name, label, kind, description, place)
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
};

bool is(const Word& word, std::string_view name) { return word.name == name; }

constexpr int kLongParity = 0x80; // of ExFeatures01

int longestParity() {
    sTimeParms times = {};
    return GetTimeParms(&times) == 1 && (times.ExFeatures01 & kLongParity) != 0 ? 142 : 15;
}

// The library's error code of a word is its record's base and its index.
struct Limit {
    Record record;
    std::size_t first;
    std::size_t last;
    Range range;
};

constexpr Limit kLimits[] = {
    {IDBitCnts, 2, 2, {1, 255}},  {IDBitCnts, 3, 3, {26, 255}},  {IDDispParms, 0, 1, {0, 255}},
    {IDDispParms, 2, 3, {0, 25}}, {IDDispParms2, 0, 0, {0, 3}},  {IDDispParms3, 0, 0, {0, 3}},
    {TimeParms, 0, 0, {0, 1020}}, {TimeParms, 1, 2, {0, 12750}}, {TimeParms, 3, 4, {0, 1020}},
};

} // namespace

std::span<const Word> allWords() { return kWords; }

std::size_t recordCount() { return kRecords; }

std::string recordName(std::size_t record) { return kAccess[record].name; }

std::string fullName(const Word& word) {
    return fmt::format("{}.{}", kAccess[word.record].name, word.name);
}

bool isReadOnly(const Word& word) {
    return is(word, "isASCIIpresent") || is(word, "ExFeatures01") || is(word, "iTPCfgFlg3");
}

bool isTime(const Word& word) { return word.unit > 1; }

bool isVolatileMark(const Word& word) { return is(word, "bVolatile"); }

bool travelsWith(const Word& word, std::size_t& record) {
    record = CfgFlags2;
    return is(word, "bNotBootDev");
}

bool readRecord(std::size_t record, Values& values) { return kAccess[record].get(values); }

bool writeRecord(std::size_t record, const Values& values) { return kAccess[record].set(values); }

Range rangeOf(const Word& word) {
    if (word.kind == WordKind::flag)
        return {0, 1};
    if (word.record == IDBitCnts && word.index < 2)
        return {0, longestParity()};
    const auto* const limit =
        std::find_if(std::begin(kLimits), std::end(kLimits), [&word](const Limit& candidate) {
            return candidate.record == word.record && word.index >= candidate.first &&
                   word.index <= candidate.last;
        });
    return limit == std::end(kLimits) ? Range{0, INT16_MAX} : limit->range;
}

std::string valueText(const Word& word, int value) {
    return isTime(word) ? fmt::format("{} ms", value) : std::to_string(value);
}

std::string keptOtherwiseText(const std::string& kept, int step) {
    return step != 0 ? fmt::format(", kept as {}: the reader counts in steps of {} ms", kept, step)
                     : fmt::format(", but the reader kept {}", kept);
}

} // namespace zel::cli
