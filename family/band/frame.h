// SPDX-License-Identifier: MIT
// Commands of a magnetic stripe reader: 24 bytes of text out, 24 bytes of text in, on a serial line
// or as feature reports.
#pragma once

#include "frame/zelTagExport.h"

#include <array>
#include <cstddef>

namespace zel::band {

constexpr std::size_t kFrameSize = 24;
using Frame = std::array<char, kFrameSize>;

// The frame of a command: its text, zeros as digits, a carriage return. A text is cut at 23
// characters.
Frame frameOf(const char* text);

} // namespace zel::band

ZELTAGAPI_BEGIN

// Sends a command and takes the 24 bytes of its reply. 1 when the reply says success, which is an
// "R" in front; else 0, after 2 ms.
ZELTAGAPI_EXPORT int SendBandCmd(const char* text, char* reply);

ZELTAGAPI_END
