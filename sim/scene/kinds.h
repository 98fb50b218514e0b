// SPDX-License-Identifier: MIT
// The kinds of devices that a scene may have.
#pragma once

#include "sim/scene/apparatus.h"

#include <cstdint>
#include <span>
#include <string>

namespace zel::sim {

// What a device is to be; what is left out is as its model has it.
struct DeviceMake {
    std::optional<std::uint16_t> luid = {};
    std::string firmware = {}; // a version; of a zelBand and a zelEcho four digits
    std::string partNumber = {};
    std::string serialNumber = {}; // of a proximity reader, 32 characters at most
    int configurations = 0;        // of a TagPlus
};

enum class Sort {
    Proximity, // on USB, on a serial line or behind a bridge
    Stripe,    // on USB or on a serial line
    Sensor,    // on USB
};

struct Kind {
    const char* name;
    Sort sort;
    std::unique_ptr<Apparatus> (*make)(const DeviceMake&);
};

std::span<const Kind> allKinds();
const Kind* findKind(std::string_view name);

// The reader of the demonstration, whose cards take turns until it is tapped.
std::unique_ptr<Apparatus> demoApparatus();

} // namespace zel::sim
