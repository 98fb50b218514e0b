// SPDX-License-Identifier: MIT
// The vocabulary of a magnetic stripe reader's file.
#include "cfgfile/band_keys.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace zel::cfgfile {

namespace {

using Kind = BandKey::Kind;

struct KeyList {
    std::array<BandKey, kBandKeys.size()> keys = {};
    std::size_t count = 0;

    constexpr void add(const BandName& name, Kind kind, std::size_t offset, const char* comment) {
        keys[count++] = {name, kind, offset, comment};
    }

    // The elements of an array of bytes.
    constexpr void add(const BandName& name, Kind kind, std::size_t offset, const char* comment,
                       std::size_t elements) {
        for (std::size_t i = 0; i < elements; ++i)
            add(name[i], kind, offset + i, comment);
    }

    constexpr void addField(const BandName& field, std::size_t offset) {
#define ZEL_FIELD(name, call, kind, most, comment)                                                 \
    add(field + "." #name, Kind::kind, offset + offsetof(BandUserField, name), comment);
#define ZEL_FIELD_ARRAY(name, call, kind, most, comment)                                           \
    add(field + "." #name, Kind::kind, offset + offsetof(BandUserField, name), comment,            \
        sizeof(BandUserField::name));
#include "frame/band_settings.def"
    }
};

constexpr KeyList allKeys() {
    KeyList list;
#define ZEL_SETTING(name, member, kind, most, comment)                                             \
    list.add(BandName(#name), Kind::kind, offsetof(tsDevDat, member), comment);
#define ZEL_ARRAY(name, kind, most, comment)                                                       \
    list.add(BandName(#name), Kind::kind, offsetof(tsDevDat, Band.name), comment,                  \
             sizeof(tsBand::name));
#define ZEL_FIELDS(name)                                                                           \
    for (std::size_t i = 0; i < std::size(decltype(tsBand::name){}); ++i)                          \
        list.addField(BandName(#name)[i],                                                          \
                      offsetof(tsDevDat, Band.name) + i * sizeof(BandUserField));
#include "frame/band_settings.def"
    return list;
}

static_assert(allKeys().count == kBandKeys.size());

} // namespace

constexpr std::array<BandKey, kBandKeys.size()> kBandKeys = allKeys().keys;

BandValue bandValueIn(const char* line) {
    const char* const colon = std::strchr(line, ':');
    if (!colon)
        return {};
    const std::string_view name(line, static_cast<std::size_t>(colon - line));
    const auto* const key =
        std::find_if(kBandKeys.begin(), kBandKeys.end(),
                     [name](const BandKey& candidate) { return candidate.name.view() == name; });
    char* end = nullptr;
    const long number = std::strtol(colon + 1, &end, 10);
    return key != kBandKeys.end() && end != colon + 1 ? BandValue{key, number} : BandValue{};
}

long valueOf(const BandKey& key, const tsDevDat& record) {
    const auto* const place = reinterpret_cast<const unsigned char*>(&record) + key.offset;
    std::uint16_t word = 0;
    switch (key.kind) {
    case Kind::flag:
        return *place & 1;
    case Kind::byte:
        return *place;
    case Kind::time:
        std::memcpy(&word, place, sizeof word);
        return word;
    case Kind::luid:
        std::memcpy(&word, place, sizeof word);
        return static_cast<std::int16_t>(word);
    }
    return 0;
}

// The low bits of a number; of a flag whether it is above 0.
void store(const BandKey& key, tsDevDat& record, long value) {
    auto* const place = reinterpret_cast<unsigned char*>(&record) + key.offset;
    const auto word = static_cast<std::uint16_t>(value);
    switch (key.kind) {
    case Kind::flag:
        *place = value > 0 ? 1 : 0;
        break;
    case Kind::byte:
        *place = static_cast<unsigned char>(value);
        break;
    case Kind::time:
    case Kind::luid:
        std::memcpy(place, &word, sizeof word);
        break;
    }
}

} // namespace zel::cfgfile
