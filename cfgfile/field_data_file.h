// SPDX-License-Identifier: MIT
// The field and separator data of a configuration as groups of hexadecimal rows.
#pragma once

#include "frame/zelTagState.h"

#include <cstdint>
#include <cstdio>

namespace zel::cfgfile {

// How the 128 bytes are cut: what the header's own bytes say of themselves.
struct FieldDataShape {
    int header = 0;
    int fields = 0;
    int fieldWidth = 0;
    int separators = 0;
    int separatorWidth = 0;
};

FieldDataShape shapeOf(const uSFD& data);

// A byte of the field data, or of what follows it in the configuration: counts beyond 128 bytes
// reach into the key values behind. Zero past the configuration.
std::uint8_t byteFrom(const tsTagCfg& config, int index);

// Whether the rows show what follows the field data: the key values.
bool showsKeys(const tsTagCfg& config);

// Writes the four groups with their headings.
void writeFieldData(std::FILE* file, const tsTagCfg& config);

} // namespace zel::cfgfile
