// SPDX-License-Identifier: MIT
// Words of the eleven user fields, and the tracks that are enabled, in memory.
#include "base/bytes.h"
#include "family/band/band.h"
#include "frame/state/state.h"

#include <cstddef>
#include <iterator>

using namespace zel;

namespace {

constexpr unsigned kFields = std::size(decltype(tsBand::UserField){});
constexpr unsigned kLastKey = std::size(decltype(BandUserField::Keybyte){}); // one past the array
constexpr int kTracks = 7;

// The field of a number from 1 on, or null.
BandUserField* find(unsigned number) {
    return number >= 1 && number <= kFields ? &activeRecord().Band.UserField[number - 1] : nullptr;
}

int store(unsigned number, std::uint8_t BandUserField::*word, std::uint8_t value) {
    BandUserField* const field = find(number);
    if (!field)
        return 0;
    field->*word = value;
    return 1;
}

int storeFlag(unsigned number, std::uint8_t BandUserField::*word, short value) {
    return store(number, word, value != 0 ? 1 : 0);
}

int load(unsigned number, std::uint8_t BandUserField::*word) {
    const BandUserField* const field = find(number);
    return field ? field->*word : 0;
}

int loadFlag(unsigned number, std::uint8_t BandUserField::*word) { return load(number, word) & 1; }

// A key's byte. The index behind the array is what follows it in the settings: the next field's
// Enable, and behind the last field the low byte of KeyPressTime.
std::uint8_t* keyAt(unsigned number, unsigned index) {
    static_assert(offsetof(tsBand, KeyPressTime) >=
                  offsetof(tsBand, UserField) + sizeof(tsBand::UserField));
    BandUserField* const field = find(number);
    if (!field || index > kLastKey)
        return nullptr;
    if (index < kLastKey)
        return &field->Keybyte[index];
    if (number < kFields)
        return &find(number + 1)->Enable;
    return reinterpret_cast<std::uint8_t*>(&activeRecord().Band.KeyPressTime);
}

} // namespace

int zelband_SetTrackEnables(unsigned short bits) {
    activeRecord().Band.TrackEnables = bits & kTracks;
    return 1;
}

int zelband_GetTrackEnables() { return activeRecord().Band.TrackEnables & kTracks; }

#define ZEL_flag(name, call)                                                                       \
    int zelband_SetField##call(unsigned short field, short value) {                                \
        return storeFlag(field, &BandUserField::name, value);                                      \
    }                                                                                              \
    int zelband_GetField##call(unsigned short field) {                                             \
        return loadFlag(field, &BandUserField::name);                                              \
    }

#define ZEL_byte(name, call)                                                                       \
    int zelband_SetField##call(unsigned short field, unsigned short value) {                       \
        return store(field, &BandUserField::name, lowByte(value));                                 \
    }                                                                                              \
    int zelband_GetField##call(unsigned short field) { return load(field, &BandUserField::name); }

#define ZEL_FIELD(name, call, kind, most, comment) ZEL_##kind(name, call)
#include "frame/band_settings.def"
#undef ZEL_flag
#undef ZEL_byte

int zelband_SetFieldKeydata(unsigned short field, unsigned short index, unsigned short value) {
    std::uint8_t* const key = keyAt(field, index);
    if (!key)
        return 0;
    *key = lowByte(value);
    return 1;
}

int zelband_GetFieldKeydata(unsigned short field, unsigned short index) {
    const std::uint8_t* const key = keyAt(field, index);
    return key ? *key : 0;
}
