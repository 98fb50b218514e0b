// SPDX-License-Identifier: MIT
// One look into the active reader's field.
#pragma once

#include "cli/card/identifier.h"
#include "cli/command/failure.h"
#include "cli/command/output.h"
#include "cli/device/device.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace zel::cli {

// Between two looks. A device that left answers at once, so a loop without a pause would spin.
constexpr std::chrono::milliseconds kLookEvery{100};

struct Reading {
    std::int64_t error = 0;         // the library's error word
    std::optional<Identifier> card; // nothing: an empty field, or an error
};

enum class Width {
    AsNeeded, // the short read where it delivers all bits
    Whole,    // all 32 bytes always
};

Reading readField(Width width);

Failure readFailed(const Device& device, const Reading& reading);

// `card   26 bits  0x0...  NAME`
std::string cardLine(const Identifier& card, const Device& device);

// {"device":{...},"bits":...,"id":...,"decimal":...,"bytes":[...]}
Json cardJson(const Identifier& card, const Device& device);

} // namespace zel::cli
