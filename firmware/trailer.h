// SPDX-License-Identifier: MIT
// What the readers of the three trailers find. The operations of class CRC give the verdict alone.
#pragma once

#include "firmware/crc.h"
#include "frame/zelTagFiles.h"

#include <string>
#include <string_view>

namespace zel::firmware {

zelFileCheck checkTemplateTrailer(CRC& crc, const char* name);
zelFileCheck checkFirmwareTrailer(CRC& crc, const char* name);
zelFileCheck checkIniTrailer(CRC& crc, const char* name);

// By kind: 0, 1, any other an INI file.
zelFileCheck checkTrailer(CRC& crc, const char* name, int kind);

// Two lines of a firmware file's and an INI file's form, for a piece up to its first zero byte.
bool isFirmwareText(std::string_view piece);
bool endsInCrLf(std::string_view piece);

inline bool holds(const zelFileCheck& check) { return check.fault == ZELTAGAPI_FAULT_NONE; }

// A finding without a comparison of checksums.
zelFileCheck finding(zelFileFault fault, int line);

// A finding by comparison. What differs without being eight upper-case digits is another form.
zelFileCheck comparison(bool isEqual, std::string_view told, std::string_view computed, int line);

// One computation: the status.
unsigned long compute(CRC& crc, std::string_view text, unsigned long& checksum);

// The low 32 bits as eight upper-case digits.
std::string digitsOf(unsigned long checksum);

} // namespace zel::firmware
