// SPDX-License-Identifier: MIT
// What the active reader told of itself, as texts; empty without a device.
#pragma once

#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <cstring>
#include <string>

namespace zel::firmware {

// An application may have filled a record to its last byte.
inline std::string boundedText(const char* text, std::size_t size) {
    return text ? std::string(text, strnlen(text, size)) : std::string();
}

inline std::string readerFirmware() {
    return boundedText(GetFWFilename(), sizeof tsDevDat::szFWFile);
}

inline std::string readerPartNumber() {
    return boundedText(getPartNumberString(), sizeof tsDevDat::szPartNum);
}

} // namespace zel::firmware
