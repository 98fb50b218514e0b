// SPDX-License-Identifier: MIT
// The lines of a magnetic stripe reader's file: key, where the value stands, comment.
#pragma once

#include "frame/zelTagState.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zel::cfgfile {

struct BandKey {
    enum class Kind { Luid, Time, Byte, Flag };

    std::string name; // such as "UserField[0].Keybyte[15]"
    Kind kind;
    std::size_t offset; // in tsBand; no meaning for the LUID, which stands in the device's record
    const char* comment;
};

// All of them, in the order of the file.
std::vector<BandKey> bandKeys();

// Takes the number of a line that begins with the key and a colon; false when there is none.
bool findNumber(const char* line, const BandKey& key, long& value);

// A key's number as the file tells it, and a number of the file put in its place.
long valueOf(const BandKey& key, const tsDevDat& record);
void store(const BandKey& key, tsDevDat& record, long value);

} // namespace zel::cfgfile
