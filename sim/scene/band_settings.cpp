// SPDX-License-Identifier: MIT
// Where a magnetic stripe reader's bytes hold each setting of the table.
#include "sim/scene/band_settings.h"

#include "sim/band/reader.h"

namespace zel::sim {

namespace {

// Some bits of a byte in one of the reader's groups, or two bytes, low one first.
struct Bits {
    char part; // of a field: '0', '1' or 'C'; of the others '0'
    std::size_t byte;
    unsigned bit = 0;
    unsigned bits = 8;
    int step = 1;
};

namespace place {

constexpr char kSystem = 'S';
constexpr Bits LUID = {'0', 3, 0, 16};
constexpr Bits HaltKBSend = {'0', 0, 7, 1};
constexpr Bits UseNumKP = {'0', 0, 6, 1};
constexpr Bits TrackEnables = {'0', 0, 0, 3};
constexpr Bits Beeper = {'0', 5};
constexpr Bits KeyPressTime = {'0', 1, 0, 8, 4};
constexpr Bits KeyReleaseTime = {'0', 2, 0, 8, 4};

constexpr Bits Enable = {'0', 0, 7, 1};
constexpr Bits Skip = {'0', 0, 6, 1};
constexpr Bits nKeys = {'0', 0, 0, 6};
constexpr Bits IgnoreLRC = {'C', 0, 7, 1};
constexpr Bits ShowLRC = {'C', 0, 6, 1};
constexpr Bits ShowSepSen = {'C', 0, 5, 1};
constexpr Bits Track = {'C', 0, 0, 2};
constexpr Bits Field = {'C', 1};
constexpr Bits ByteOffset = {'C', 2};
constexpr Bits Length = {'C', 3};
constexpr Bits Termination = {'C', 4};

// The first eight keys follow the byte of flags, the others are a part of their own.
constexpr std::size_t kKeysOfPart = 8;
Bits key(std::size_t index) {
    return index < kKeysOfPart ? Bits{'0', index + 1} : Bits{'1', index - kKeysOfPart};
}

// LED 0 has a byte of its own; the first byte has LEDs 1 to 4 from its top.
Bits led(std::size_t index) {
    return index == 0 ? Bits{'0', 1, 0, 2} : Bits{'0', 0, static_cast<unsigned>(4 - index) * 2, 2};
}

} // namespace place

constexpr std::size_t kLeds = 5;
constexpr std::size_t kKeys = 16;

std::string indexed(const std::string& name, std::size_t index) {
    return name + "[" + std::to_string(index) + "]";
}

class Collector {
public:
    explicit Collector(BandReader& reader) : reader_(reader) {}

    void add(const std::string& name, char group, const Bits& bits, int most) {
        settings_.push_back({name, bits.step, most,
                             [=, &reader = reader_] {
                                 return get(bandGroup(reader.settings(), group, bits.part), bits);
                             },
                             [=, &reader = reader_](int value) {
                                 set(bandGroup(reader.settings(), group, bits.part), bits, value);
                             }});
    }

    void addLeds(const std::string& name, int most) {
        for (std::size_t led = 0; led < kLeds; ++led)
            add(indexed(name, led), 'L', place::led(led), most);
    }

    void addKeys(const std::string& name, char group, int most) {
        for (std::size_t key = 0; key < kKeys; ++key)
            add(indexed(name, key), group, place::key(key), most);
    }

    void addFields(const std::string& name);

    Settings take() { return std::move(settings_); }

private:
    static unsigned wordAt(std::span<const std::uint8_t> group, const Bits& bits) {
        const unsigned low = group[bits.byte];
        return bits.bits > 8 ? low | unsigned{group[bits.byte + 1]} << 8 : low;
    }

    static int get(std::span<const std::uint8_t> group, const Bits& bits) {
        const unsigned mask = (1U << bits.bits) - 1;
        return static_cast<int>(wordAt(group, bits) >> bits.bit & mask) * bits.step;
    }

    static void set(std::span<std::uint8_t> group, const Bits& bits, int value) {
        const unsigned mask = ((1U << bits.bits) - 1) << bits.bit;
        const auto raw = static_cast<unsigned>(value / bits.step) << bits.bit;
        const unsigned word = (wordAt(group, bits) & ~mask) | (raw & mask);
        group[bits.byte] = static_cast<std::uint8_t>(word);
        if (bits.bits > 8)
            group[bits.byte + 1] = static_cast<std::uint8_t>(word >> 8);
    }

    BandReader& reader_;
    Settings settings_;
};

void Collector::addFields(const std::string& name) {
    for (std::size_t field = 0; field < reader_.settings().field.size(); ++field) {
        const char group = static_cast<char>('a' + field);
        const std::string head = indexed(name, field) + ".";
#define ZEL_FIELD(name, call, kind, most, comment) add(head + #name, group, place::name, most);
#define ZEL_FIELD_ARRAY(name, call, kind, most, comment) addKeys(head + #name, group, most);
#include "frame/band_settings.def"
    }
}

} // namespace

Settings bandSettings(BandReader& reader) {
    Collector all(reader);
#define ZEL_SETTING(name, member, kind, most, comment)                                             \
    all.add(#name, place::kSystem, place::name, most);
#define ZEL_ARRAY(name, kind, most, comment) all.addLeds(#name, most);
#define ZEL_FIELDS(name) all.addFields(#name);
#include "frame/band_settings.def"
    return all.take();
}

} // namespace zel::sim
