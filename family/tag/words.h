// SPDX-License-Identifier: MIT
// The words of the ten records as a table: where each stands in tsTagCfg, in its record and in the
// reader's configuration blocks. Made from frame/records.def.
#pragma once

#include "frame/zelTagState.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace zel::tag {

enum class Record : std::uint8_t {
#define ZEL_RECORD(record, table, calls) record,
#define ZEL_WORD(...)
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
};

enum class Kind : std::uint8_t { flag, number, pad };

// Where a configuration block holds a word.
struct Place {
    std::int8_t block = -1; // -1: nowhere
    std::uint8_t byte = 0;
    std::uint8_t bit = 0;
    std::uint8_t bits = 0;
    std::uint8_t unit = 1; // what one step of the reader's number means in the record
    bool isMirror = false; // read only: another word carries the byte back
};

struct Word {
    Record record;
    std::uint8_t index;
    const char* label;
    Kind kind;
    const char* description;
    Place place;
    std::uint16_t offset; // in tsTagCfg, bytes
};

namespace rows {

constexpr Place wire(std::int8_t block, std::uint8_t byte, std::uint8_t bit, std::uint8_t bits,
                     std::uint8_t unit) {
    return {block, byte, bit, bits, unit, false};
}
constexpr Place mirror(std::int8_t block, std::uint8_t byte, std::uint8_t bit) {
    return {block, byte, bit, 1, 1, true};
}
constexpr Place nowhere = {};
constexpr const char* same = nullptr;
constexpr const char* labelOr(const char* name, const char* label) { return label ? label : name; }

constexpr Word kAll[] = {
#define ZEL_RECORD(record, table, calls)
#define ZEL_WORD(record, index, name, label, kind, description, place)                             \
    {Record::record,                                                                               \
     index,                                                                                        \
     labelOr(#name, label),                                                                        \
     Kind::kind,                                                                                   \
     description,                                                                                  \
     place,                                                                                        \
     offsetof(tsTagCfg, s##record) + offsetof(s##record, name)},
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
};

} // namespace rows

constexpr std::span<const Word> kWords = rows::kAll;

// The eight words of a record.
constexpr std::span<const Word> wordsOf(Record record) {
    return kWords.subspan(static_cast<std::size_t>(record) * 8, 8);
}

inline std::int16_t get(const tsTagCfg& config, const Word& word) {
    std::int16_t value;
    std::memcpy(&value, reinterpret_cast<const char*>(&config) + word.offset, sizeof value);
    return value;
}

inline void set(tsTagCfg& config, const Word& word, std::int16_t value) {
    std::memcpy(reinterpret_cast<char*>(&config) + word.offset, &value, sizeof value);
}

} // namespace zel::tag
