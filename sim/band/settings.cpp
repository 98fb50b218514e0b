// SPDX-License-Identifier: MIT
// Factory values, and how commands name the groups.
#include "sim/band/settings.h"

namespace zel::sim {

namespace {

constexpr BandField kField = {{}, {}, {2, 0, 0, 32, 0xFF}}; // of track 2
constexpr std::uint8_t kEnabled = 0x80;

std::span<std::uint8_t> partOf(BandField& field, char part) {
    switch (part) {
    case '0':
        return field.first;
    case '1':
        return field.second;
    case 'C':
        return field.control;
    default:
        return {};
    }
}

} // namespace

BandSettings bandFactorySettings() {
    BandSettings made = {{}, {0x07, 2, 2, 0, 0, 0x19}, {0x27, 0x01}};
    made.field.fill(kField);
    made.field[0].first[0] = kEnabled;
    return made;
}

std::span<std::uint8_t> bandGroup(BandSettings& settings, char group, char part) {
    if (group == 'S' && part == '0')
        return settings.system;
    if (group == 'L' && part == '0')
        return settings.leds;
    const auto number = static_cast<std::size_t>(group - 'a');
    if (group < 'a' || number >= settings.field.size())
        return {};
    return partOf(settings.field[number], part);
}

} // namespace zel::sim
