// SPDX-License-Identifier: MIT
// Looks into files of settings that have no trailer.
#pragma once

#include "frame/zelTagFiles.h"

namespace zel {

inline bool isSettings(int kind) {
    return kind == ZELTAGAPI_FILE_BAND || kind == ZELTAGAPI_FILE_ECHO;
}

// What is wrong first with a file of these two kinds.
zelFileCheck checkSettings(const char* name, int kind);

} // namespace zel
