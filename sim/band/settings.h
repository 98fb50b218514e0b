// SPDX-License-Identifier: MIT
// What a simulated magnetic stripe reader can be set to, as the bytes of its commands.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace zel::sim {

struct BandOptions {
    std::string partNumber = "SIMULATED-STRIPE-001"; // a frame holds 21 characters
    std::uint16_t deviceId = 0x0B01;
    std::uint16_t firmwareVersion = 0x0123;
};

struct BandField {
    std::array<std::uint8_t, 9> first;   // enable, skip and key count; keys 1 to 8
    std::array<std::uint8_t, 8> second;  // keys 9 to 16
    std::array<std::uint8_t, 5> control; // LRC, separators and track; field, offset, length, end
};

struct BandSettings {
    std::array<BandField, 11> field;
    std::array<std::uint8_t, 6> system; // quiet, keypad and tracks; two key times; LUID; beeper
    std::array<std::uint8_t, 2> leds;   // colours of LEDs 1 to 4, from the top; of LED 0
};

BandSettings bandFactorySettings();

// The bytes behind the two characters that name them in a command: a field's letter with "0", "1"
// or "C", or "S0" and "L0". None where there is no such group.
std::span<std::uint8_t> bandGroup(BandSettings& settings, char group, char part);

} // namespace zel::sim
