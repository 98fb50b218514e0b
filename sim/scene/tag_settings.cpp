// SPDX-License-Identifier: MIT
// Reads the words' places from the table that the library is made from.
#include "sim/scene/tag_settings.h"

#include "sim/tag/reader.h"

namespace zel::sim {

namespace {

struct Place {
    int block = -1; // -1: no block holds the word
    std::size_t byte = 0;
    unsigned bit = 0;
    unsigned bits = 0;
    int unit = 1;
};

struct Word {
    const char* name;
    Place place;
};

// A mirrored word is a bit of a byte that another word carries as a whole.
constexpr Place wire(int block, std::size_t byte, unsigned bit, unsigned bits, int unit) {
    return {block, byte, bit, bits, unit};
}
constexpr Place mirror(int block, std::size_t byte, unsigned bit) {
    return {block, byte, bit, 1, 1};
}
constexpr Place nowhere = {};

constexpr Word kWords[] = {
#define ZEL_RECORD(record, table, calls)
#define ZEL_WORD(record, index, name, label, kind, description, place) {#record "." #name, place},
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
};

constexpr unsigned maskOf(const Place& place) { return (1U << place.bits) - 1; }

std::uint8_t& byteOf(TagReader& reader, const Place& place) {
    auto& configuration = reader.configuration(reader.activeConfiguration());
    return configuration.block.at(static_cast<std::size_t>(place.block)).at(place.byte);
}

Setting settingOf(TagReader& reader, const Word& word) {
    const Place place = word.place;
    const auto get = [&reader, place] {
        const unsigned raw = byteOf(reader, place) >> place.bit & maskOf(place);
        return static_cast<int>(raw) * place.unit;
    };
    const auto set = [&reader, place](int value) {
        std::uint8_t& byte = byteOf(reader, place);
        const unsigned others = byte & ~(maskOf(place) << place.bit);
        const auto raw = static_cast<unsigned>(value / place.unit);
        byte = static_cast<std::uint8_t>(others | (raw & maskOf(place)) << place.bit);
    };
    return {word.name, place.unit, static_cast<int>(maskOf(place)) * place.unit, get, set};
}

} // namespace

Settings tagSettings(TagReader& reader) {
    Settings settings;
    for (const Word& word : kWords)
        if (word.place.block >= 0)
            settings.push_back(settingOf(reader, word));
    return settings;
}

} // namespace zel::sim
