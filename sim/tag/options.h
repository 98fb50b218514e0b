// SPDX-License-Identifier: MIT
// What a simulated proximity reader is: its kind, what it is fitted with and what it tells of
// itself.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zel::sim {

struct TagOptions {
    int tagPlusConfigurations = 0;           // 1 to 11; 0: a plain reader
    std::optional<std::uint8_t> volume = {}; // none: a reader that knows no volume
    std::optional<std::uint8_t> radio = {};  // configuration 0 to 3; none: no radio
    std::uint8_t features = 0;               // the feature bits, byte 7 of block 1
    std::uint8_t fieldPages = 0;             // pages in the new form; 0: the old form
    std::string partNumber = {};
    std::string firmwareVersion = {};
    std::string fileName = {};                      // of the firmware
    std::array<std::uint8_t, 32> serialNumber = {}; // electronic serial number
    std::vector<std::uint16_t> cardTypes = {};      // those that a TagPlus reader can tell apart
    std::array<std::array<std::uint32_t, 6>, 3> versions = {}; // by unit and slot

    bool isTagPlus() const { return tagPlusConfigurations > 0; }
    bool writesFast() const { return isTagPlus() || volume; }
};

} // namespace zel::sim
