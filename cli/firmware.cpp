// SPDX-License-Identifier: MIT
// Takes over the texts that the library read from the active device.
#include "cli/firmware.h"

#include "frame/zelTagAPI.h"

#include <algorithm>

namespace zel::cli {

namespace {

std::string textOf(const char* text) { return printable(text ? text : ""); }

bool isPrintable(char character) { return character >= ' ' && character <= '~'; }

} // namespace

Firmware activeFirmware() { return {textOf(GetFullFWVersion()), textOf(GetFWFilename())}; }

std::string partNumber() { return textOf(getPartNumberString()); }

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
