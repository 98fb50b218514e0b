// SPDX-License-Identifier: MIT
// What a scene tells of one of its devices.
#pragma once

#include "sim/tag/card.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zel::sim {

struct DeviceState {
    std::string name;
    std::string kind;
    std::string place;
    bool isPlugged = true;
    std::optional<Card> card = {};                              // in the field
    std::optional<int> inches = {};                             // of a sensor's object
    std::vector<std::pair<std::string, std::string>> leds = {}; // "red", "on"
    std::optional<bool> relay = {};
    std::optional<int> beeps = {};
    std::vector<std::pair<std::string, int>> settings = {};
    int exchanges = 0;
    int violations = 0;
    std::string lastViolation = {};
};

} // namespace zel::sim
