// SPDX-License-Identifier: MIT
// One configuration of a proximity reader's file: parsed, and held against the live one.
#pragma once

#include "frame/zelTagState.h"

#include <cstdio>

namespace zel::cfgfile {

// Reads up to the end of the field data, or of the file, and stores what the lines tell. Whether
// they told anything: a known key, or field data.
bool parseBody(std::FILE* file, tsTagCfg& config);

// Takes back what a reader with these settings has no use for.
void keepForm(const tsTagCfg& live, tsTagCfg& file);

} // namespace zel::cfgfile
