// SPDX-License-Identifier: MIT
// The table of a stripe reader's settings and the library's calls behind each.
#include "cli/config/stripe_settings.h"

#include "cli/config/word_search.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <iterator>

namespace zel::cli {

namespace {

using Kind = StripeSetting::Kind;

constexpr int kByte = UINT8_MAX;
constexpr int kMostTime = 255 * kStripeTimeUnit;
constexpr unsigned short kFields = std::size(decltype(tsBand::UserField){});
constexpr unsigned short kKeys = std::size(decltype(BandUserField::Keybyte){});
constexpr unsigned short kLeds = std::size(decltype(tsBand::LedColor){});

// What no call sets without loss or traffic: calls on LEDs send at once, those on the beeper know
// four beeps where the reader has seven, and the key times have none.
tsBand& area() { return DevDat[GetActDev()].Band; }

template <auto member> int getArea(const StripeSetting&) { return area().*member; }

template <auto member> void setArea(const StripeSetting&, int value) {
    auto& place = area().*member;
    place = static_cast<std::remove_reference_t<decltype(place)>>(value);
}

int getLed(const StripeSetting& setting) { return area().LedColor[setting.index]; }

void setLed(const StripeSetting& setting, int value) {
    area().LedColor[setting.index] = static_cast<std::uint8_t>(value);
}

template <class Value> Value valueOf(int (*)(unsigned short, Value));

template <auto call> int getField(const StripeSetting& setting) { return call(setting.field); }

template <auto call> void setField(const StripeSetting& setting, int value) {
    call(setting.field, static_cast<decltype(valueOf(call))>(value));
}

int getKey(const StripeSetting& setting) {
    return zelBandGetFieldKeydata(setting.field, setting.index);
}

void setKey(const StripeSetting& setting, int value) {
    zelBandSetFieldKeydata(setting.field, setting.index, static_cast<unsigned short>(value));
}

int getLuid(const StripeSetting&) { return static_cast<std::uint16_t>(GetLUID()); }

void setLuid(const StripeSetting&, int value) { SetLUID(static_cast<std::uint16_t>(value)); }

int getQuiet(const StripeSetting&) {
    sCfgFlags flags = {};
    GetFlags(&flags);
    return flags.bHaltKBSnd & 1;
}

void setQuiet(const StripeSetting&, int value) {
    sCfgFlags flags = {};
    flags.bHaltKBSnd = static_cast<std::int16_t>(value);
    SetFlags(&flags);
}

int getKeypad(const StripeSetting&) {
    sCfgFlags3 flags = {};
    GetFlags3(&flags);
    return flags.bUseNumKP & 1;
}

void setKeypad(const StripeSetting&, int value) {
    sCfgFlags3 flags = {};
    flags.bUseNumKP = static_cast<std::int16_t>(value);
    SetFlags3(&flags);
}

int getTracks(const StripeSetting&) { return zelBandGetTrackEnables(); }

void setTracks(const StripeSetting&, int value) {
    zelBandSetTrackEnables(static_cast<unsigned short>(value));
}

struct FieldWord {
    const char* name;
    Kind kind;
    int most;
    int (*get)(const StripeSetting&);
    void (*set)(const StripeSetting&, int);
};

#define ZEL_FIELD(name, call, kind, most)                                                          \
    { name, kind, most, getField<zelBandGetField##call>, setField<zelBandSetField##call> }

constexpr FieldWord kFieldWords[] = {
    ZEL_FIELD("Enable", Enable, Kind::Flag, 1),
    ZEL_FIELD("Skip", Skip, Kind::Flag, 1),
    ZEL_FIELD("Track", Track, Kind::Number, 3),
    ZEL_FIELD("Field", MagField, Kind::Number, kByte),
    ZEL_FIELD("ByteOffset", Offset, Kind::Number, kByte),
    ZEL_FIELD("Length", Length, Kind::Number, kByte),
    ZEL_FIELD("Termination", Term, Kind::Number, kByte),
    ZEL_FIELD("ShowSepSen", ShowSepSen, Kind::Flag, 1),
    ZEL_FIELD("ShowLRC", ShowLRC, Kind::Flag, 1),
    ZEL_FIELD("IgnoreLRC", IgnoreLRC, Kind::Flag, 1),
    ZEL_FIELD("nKeys", KeyCount, Kind::Number, kKeys),
};

#undef ZEL_FIELD

void addField(std::vector<StripeSetting>& all, unsigned short field) {
    const auto number = static_cast<unsigned short>(field + 1);
    for (const FieldWord& word : kFieldWords)
        all.push_back({fmt::format("UserField[{}].{}", field, word.name), word.kind, word.most,
                       number, 0, word.get, word.set});
    for (unsigned short key = 0; key < kKeys; ++key)
        all.push_back({fmt::format("UserField[{}].Keybyte[{}]", field, key), Kind::Number, kByte,
                       number, key, getKey, setKey});
}

std::vector<StripeSetting> makeSettings() {
    std::vector<StripeSetting> all = {
        {"LUID", Kind::Number, UINT16_MAX, 0, 0, getLuid, setLuid},
        {"HaltKBSend", Kind::Flag, 1, 0, 0, getQuiet, setQuiet},
        {"UseNumKP", Kind::Flag, 1, 0, 0, getKeypad, setKeypad},
        {"TrackEnables", Kind::Number, 7, 0, 0, getTracks, setTracks},
        {"Beeper", Kind::Number, kByte, 0, 0, getArea<&tsBand::Beeper>, setArea<&tsBand::Beeper>}};
    for (unsigned short led = 0; led < kLeds; ++led)
        all.push_back({fmt::format("LedColor[{}]", led), Kind::Number, 3, 0, led, getLed, setLed});
    for (unsigned short field = 0; field < kFields; ++field)
        addField(all, field);
    all.push_back({"KeyPressTime", Kind::Time, kMostTime, 0, 0, getArea<&tsBand::KeyPressTime>,
                   setArea<&tsBand::KeyPressTime>});
    all.push_back({"KeyReleaseTime", Kind::Time, kMostTime, 0, 0, getArea<&tsBand::KeyReleaseTime>,
                   setArea<&tsBand::KeyReleaseTime>});
    return all;
}

bool isSame(std::string_view a, std::string_view b) {
    return a.size() == b.size() && distance(a, b) == 0;
}

} // namespace

const std::vector<StripeSetting>& allStripeSettings() {
    static const std::vector<StripeSetting> all = makeSettings();
    return all;
}

const StripeSetting* findStripeSetting(std::string_view name) {
    const auto& all = allStripeSettings();
    const auto found = std::find_if(all.begin(), all.end(), [name](const StripeSetting& setting) {
        return isSame(name, setting.name);
    });
    return found == all.end() ? nullptr : &*found;
}

Failure noStripeSetting(std::string_view name) {
    const auto& all = allStripeSettings();
    const auto nearest = std::min_element(
        all.begin(), all.end(), [name](const StripeSetting& a, const StripeSetting& b) {
            return distance(name, a.name) < distance(name, b.name);
        });
    const bool isNear = distance(name, nearest->name) <= 3;
    return {
        ExitCode::Usage, fmt::format("there is no setting {} of a magnetic stripe reader", name),
        isNear ? fmt::format("did you mean {}?", nearest->name) : "`zeltag config show` lists them",
        ""};
}

const char* kindText(const StripeSetting& setting) {
    return setting.kind == Kind::Flag ? "flag" : setting.kind == Kind::Time ? "time" : "number";
}

std::string valueText(const StripeSetting& setting, int value) {
    return setting.kind == Kind::Time ? fmt::format("{} ms", value) : std::to_string(value);
}

int asStored(const StripeSetting& setting, long number) {
    if (setting.kind == Kind::Flag)
        return number > 0 ? 1 : 0;
    const bool isWord = setting.kind == Kind::Time || setting.most > kByte;
    return static_cast<int>(number & (isWord ? UINT16_MAX : kByte));
}

} // namespace zel::cli
