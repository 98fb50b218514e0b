// SPDX-License-Identifier: MIT
// Takes over the texts that the library read from the active device.
#include "cli/device/description.h"

#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>

namespace zel::cli {

namespace {

std::string textOf(const char* text) { return printable(text ? text : ""); }

bool isPrintable(char character) { return character >= ' ' && character <= '~'; }

// A magnetic stripe reader's part number ends at a carriage return that the library makes a blank;
// zeros fill up the frame behind it, and its last character is another carriage return.
std::string_view withoutFilling(std::string_view text) {
    const std::string_view filled = text.substr(0, text.find('\r'));
    const std::size_t end = filled.find_last_not_of('0');
    const bool isFilling = end != filled.npos && filled[end] == ' ';
    return isFilling ? filled.substr(0, end) : filled;
}

} // namespace

Firmware activeFirmware() {
    if (isStripe())
        return {fmt::format("{:04X}/{:04X}", GetFirmwareVersion(0, 0), GetFirmwareVersion(0, 1)),
                ""};
    return {textOf(GetFullFWVersion()), textOf(GetFWFilename())};
}

std::string partNumber() {
    const char* const text = getPartNumberString();
    return isStripe() && text ? printable(withoutFilling(text)) : textOf(text);
}

std::string printable(std::string_view text) {
    std::string shown(text.substr(0, text.find('\0')));
    std::replace_if(
        shown.begin(), shown.end(), [](char character) { return !isPrintable(character); }, '?');
    return shown;
}

std::string asText(const Firmware& firmware) {
    const bool both = !firmware.version.empty() && !firmware.file.empty();
    const std::string text = firmware.version + (both ? " " : "") + firmware.file;
    return text.empty() ? "-" : text;
}

} // namespace zel::cli
