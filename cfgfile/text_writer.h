// SPDX-License-Identifier: MIT
// The lines that the files of proximity readers and of sensors share.
#pragma once

#include "frame/zelTagState.h"

#include <cstdint>
#include <cstdio>

namespace zel::cfgfile {

// The title and the two versions. That of the firmware shows the active device's ID, a nibble as a
// decimal number each.
void writeHead(std::FILE* file, const char* title);

// The comment that begins a section.
void writeHeading(std::FILE* file, const char* heading);

// A key, its number and what it means.
void writeRow(std::FILE* file, const tsNamePair& pair, std::uint16_t value);

} // namespace zel::cfgfile
