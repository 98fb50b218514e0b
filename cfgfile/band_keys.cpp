// SPDX-License-Identifier: MIT
// The vocabulary of a magnetic stripe reader's file.
#include "cfgfile/band_keys.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace zel::cfgfile {

namespace {

using Kind = BandKey::Kind;

constexpr char kTimeUnit[] = "// 4MS units 4=16ms";
constexpr std::size_t kFields = std::size(decltype(tsBand::UserField){});
constexpr std::size_t kKeys = std::size(decltype(BandUserField::Keybyte){});
constexpr std::size_t kLeds = std::size(decltype(tsBand::LedColor){});

struct FieldWord {
    const char* name;
    Kind kind;
    std::size_t offset;
    const char* comment;
};

constexpr FieldWord kFieldWords[] = {
    {"Enable", Kind::Flag, offsetof(BandUserField, Enable), "// 1 = User Field Enabled"},
    {"Skip", Kind::Flag, offsetof(BandUserField, Skip),
     "// 1 = Skip field, Used for OnErrorGoto (bad LRC)"},
    {"Track", Kind::Byte, offsetof(BandUserField, Track), "// Track 1,2,3"},
    {"Field", Kind::Byte, offsetof(BandUserField, Field), "// Mag Field Number"},
    {"ByteOffset", Kind::Byte, offsetof(BandUserField, ByteOffset), "// Offset within Mag Field"},
    {"Length", Kind::Byte, offsetof(BandUserField, Length), "// Length in Characters"},
    {"Termination", Kind::Byte, offsetof(BandUserField, Termination),
     "// Stop on Termination Byte"},
    {"ShowSepSen", Kind::Flag, offsetof(BandUserField, ShowSepSen),
     "// 1 = Show Separator and Sentinel Chars"},
    {"ShowLRC", Kind::Flag, offsetof(BandUserField, ShowLRC), "// 1 = Show Hex LRC Byte"},
    {"IgnoreLRC", Kind::Flag, offsetof(BandUserField, IgnoreLRC), "// 1 = Ignore Incorrect LRC"},
    {"nKeys", Kind::Byte, offsetof(BandUserField, nKeys), "// 0..N Keys Used In Array"},
};

constexpr char kKeyComment[] = "// USB [Even]=Scancode [Odd]=ShiftModifier; ASCII [n]=ASCII Char";

std::string indexed(const char* name, std::size_t index) {
    return std::string(name) + '[' + std::to_string(index) + ']';
}

void addField(std::vector<BandKey>& keys, std::size_t field) {
    const std::string name = indexed("UserField", field) + '.';
    const std::size_t offset = offsetof(tsBand, UserField) + field * sizeof(BandUserField);
    for (const FieldWord& word : kFieldWords)
        keys.push_back({name + word.name, word.kind, offset + word.offset, word.comment});
    for (std::size_t key = 0; key < kKeys; ++key)
        keys.push_back({name + indexed("Keybyte", key), Kind::Byte,
                        offset + offsetof(BandUserField, Keybyte) + key, kKeyComment});
}

unsigned char* bytesOf(tsDevDat& record, const BandKey& key) {
    return reinterpret_cast<unsigned char*>(&record.Band) + key.offset;
}

} // namespace

std::vector<BandKey> bandKeys() {
    std::vector<BandKey> keys = {
        {"LUID", Kind::Luid, 0, "// Logical Unit ID"},
        {"HaltKBSend", Kind::Flag, offsetof(tsBand, HaltKBSend),
         "// 1 = Quiet API Mode No keystrokes, 0=Send Keystrokes"},
        {"UseNumKP", Kind::Flag, offsetof(tsBand, UseNumKP),
         "// 1 = Use Numeric Keypad for digits 0-9"},
        {"TrackEnables", Kind::Byte, offsetof(tsBand, TrackEnables),
         "// Bits 0..3 = Enable Tracks 1..3"},
        {"Beeper", Kind::Byte, offsetof(tsBand, Beeper),
         "// 1 = Beeper Nybble Upper=Good Lower=Bad; Long:1.Count:3.Long:1.Count:3"}};
    for (std::size_t led = 0; led < kLeds; ++led)
        keys.push_back({indexed("LedColor", led), Kind::Byte, offsetof(tsBand, LedColor) + led,
                        "// 0=Off 1=Red 2=Green 3=Amber"});
    for (std::size_t field = 0; field < kFields; ++field)
        addField(keys, field);
    keys.push_back({"KeyPressTime", Kind::Time, offsetof(tsBand, KeyPressTime), kTimeUnit});
    keys.push_back({"KeyReleaseTime", Kind::Time, offsetof(tsBand, KeyReleaseTime), kTimeUnit});
    return keys;
}

bool findNumber(const char* line, const BandKey& key, long& value) {
    const std::size_t length = key.name.size();
    if (std::strncmp(line, key.name.c_str(), length) != 0 || line[length] != ':')
        return false;
    char* end = nullptr;
    value = std::strtol(line + length + 1, &end, 10);
    return end != line + length + 1;
}

long valueOf(const BandKey& key, const tsDevDat& record) {
    const unsigned char* const bytes = bytesOf(const_cast<tsDevDat&>(record), key);
    std::uint16_t word = 0;
    switch (key.kind) {
    case Kind::Luid:
        return static_cast<std::int16_t>(record.iLUID);
    case Kind::Time:
        std::memcpy(&word, bytes, sizeof word);
        return word;
    case Kind::Flag:
        return *bytes & 1;
    case Kind::Byte:
        return *bytes;
    }
    return 0;
}

// The low bits of a number; of a flag whether it is above 0.
void store(const BandKey& key, tsDevDat& record, long value) {
    unsigned char* const bytes = bytesOf(record, key);
    const auto word = static_cast<std::uint16_t>(value);
    switch (key.kind) {
    case Kind::Luid:
        record.iLUID = word;
        break;
    case Kind::Time:
        std::memcpy(bytes, &word, sizeof word);
        break;
    case Kind::Flag:
        *bytes = value > 0 ? 1 : 0;
        break;
    case Kind::Byte:
        *bytes = static_cast<unsigned char>(value);
        break;
    }
}

} // namespace zel::cfgfile
