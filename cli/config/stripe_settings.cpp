// SPDX-License-Identifier: MIT
// The table of a stripe reader's settings, made from their rows, and the library's calls behind
// each.
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

tsBand& area() { return DevDat[GetActDev()].Band; }

template <auto member> int getArea(const StripeSetting&) { return area().*member; }

template <auto member> void setArea(const StripeSetting&, int value) {
    auto& place = area().*member;
    place = static_cast<std::remove_reference_t<decltype(place)>>(value);
}

template <auto member> int getElement(const StripeSetting& setting) {
    return (area().*member)[setting.index];
}

template <auto member> void setElement(const StripeSetting& setting, int value) {
    (area().*member)[setting.index] = static_cast<std::uint8_t>(value);
}

int ask(int (*call)(), const StripeSetting&) { return call(); }

int ask(int (*call)(unsigned short), const StripeSetting& setting) { return call(setting.field); }

int ask(int (*call)(unsigned short, unsigned short), const StripeSetting& setting) {
    return call(setting.field, setting.index);
}

template <class Value> void tell(int (*call)(Value), const StripeSetting&, int value) {
    call(static_cast<Value>(value));
}

template <class Value>
void tell(int (*call)(unsigned short, Value), const StripeSetting& setting, int value) {
    call(setting.field, static_cast<Value>(value));
}

template <class Value>
void tell(int (*call)(unsigned short, unsigned short, Value), const StripeSetting& setting,
          int value) {
    call(setting.field, setting.index, static_cast<Value>(value));
}

template <auto call> int getByCall(const StripeSetting& setting) {
    return ask(call, setting) & (setting.kind == Kind::flag ? 1 : UINT16_MAX);
}

template <auto call> void setByCall(const StripeSetting& setting, int value) {
    tell(call, setting, value);
}

struct Access {
    int (*get)(const StripeSetting&);
    void (*set)(const StripeSetting&, int);
};

template <auto get, auto set> constexpr Access kByCalls{getByCall<get>, setByCall<set>};
template <auto member> constexpr Access kInMemory{getArea<member>, setArea<member>};

// How each setting that stands alone is reached. In memory is what no call sets without loss or
// traffic: calls on LEDs send at once, those on the beeper know four beeps where the reader has
// seven, and the key times have none.
namespace access {

constexpr Access LUID = kByCalls<GetLUID, SetLUID>;
constexpr Access HaltKBSend = kByCalls<getCfgFlags_bHaltKBSnd, setCfgFlags_bHaltKBSnd>;
constexpr Access UseNumKP = kByCalls<getCfgFlags3_bUseNumKP, setCfgFlags3_bUseNumKP>;
constexpr Access TrackEnables = kByCalls<zelBandGetTrackEnables, zelBandSetTrackEnables>;
constexpr Access Beeper = kInMemory<&tsBand::Beeper>;
constexpr Access KeyPressTime = kInMemory<&tsBand::KeyPressTime>;
constexpr Access KeyReleaseTime = kInMemory<&tsBand::KeyReleaseTime>;

} // namespace access

void addField(std::vector<StripeSetting>& all, const std::string& name, unsigned short number) {
#define ZEL_FIELD(word, call, kind, most, comment)                                                 \
    all.push_back({name + "." #word, Kind::kind, most, number, 0,                                  \
                   getByCall<zelBandGetField##call>, setByCall<zelBandSetField##call>});
#define ZEL_FIELD_ARRAY(word, call, kind, most, comment)                                           \
    for (unsigned short i = 0; i < sizeof(BandUserField::word); ++i)                               \
        all.push_back({fmt::format("{}." #word "[{}]", name, i), Kind::kind, most, number, i,      \
                       getByCall<zelBandGetField##call>, setByCall<zelBandSetField##call>});
#include "frame/band_settings.def"
}

std::vector<StripeSetting> makeSettings() {
    std::vector<StripeSetting> all;
#define ZEL_SETTING(name, member, kind, most, comment)                                             \
    all.push_back({#name, Kind::kind, most, 0, 0, access::name.get, access::name.set});
#define ZEL_ARRAY(name, kind, most, comment)                                                       \
    for (unsigned short i = 0; i < sizeof(tsBand::name); ++i)                                      \
        all.push_back({fmt::format(#name "[{}]", i), Kind::kind, most, 0, i,                       \
                       getElement<&tsBand::name>, setElement<&tsBand::name>});
#define ZEL_FIELDS(name)                                                                           \
    for (unsigned short number = 1; number <= std::size(decltype(tsBand::name){}); ++number)       \
        addField(all, fmt::format(#name "[{}]", number - 1), number);
#include "frame/band_settings.def"
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
    return setting.kind == Kind::flag ? "flag" : setting.kind == Kind::time ? "time" : "number";
}

std::string valueText(const StripeSetting& setting, int value) {
    return setting.kind == Kind::time ? fmt::format("{} ms", value) : std::to_string(value);
}

int asStored(const StripeSetting& setting, long number) {
    if (setting.kind == Kind::flag)
        return number > 0 ? 1 : 0;
    return static_cast<int>(number & (setting.kind == Kind::byte ? UINT8_MAX : UINT16_MAX));
}

} // namespace zel::cli
