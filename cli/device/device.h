// SPDX-License-Identifier: MIT
// A device of the library's table as the user sees it.
#pragma once

#include "cli/command/output.h"

#include <cstdint>
#include <optional>
#include <string>

namespace zel::cli {

// Where a device is that isn't on USB.
struct Place {
    std::string key = {}; // in JSON: "port" or "address"; empty: on USB
    std::string text = {};
};

struct Device {
    int index = 0;
    std::string name;
    Place place = {};
};

// The place of all devices that are asked for from now on.
void setDevicePlace(const Place& place);

Device activeDevice();

// The name, and the path of a line, which the library knows by a number.
std::string nameAndPath(const Device& device);

// The active device's product, such as "zelTag".
std::string activeProduct();

// Whether the active device is a proximity reader, and whether it is a magnetic stripe reader.
bool isTag();
bool isStripe();

// Milliseconds until the active device answered; nothing when it didn't.
std::optional<std::uint64_t> pingTime();

// {"index":...,"name":...}, with the place when it isn't on USB.
Json toJson(const Device& device);

} // namespace zel::cli
