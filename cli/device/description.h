// SPDX-License-Identifier: MIT
// What the active device tells of itself in words.
#pragma once

#include <string>
#include <string_view>

namespace zel::cli {

struct Firmware {
    std::string version; // both may be empty; of a stripe reader "DEVICEID/VERSION"
    std::string file;
};

Firmware activeFirmware();

std::string partNumber();

// A device's text up to its end, fit for a terminal: other characters become question marks.
std::string printable(std::string_view text);

// "VERSION FILE", or a dash for neither.
std::string asText(const Firmware& firmware);

} // namespace zel::cli
