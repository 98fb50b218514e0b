// SPDX-License-Identifier: MIT
// The one part of a reader's configuration that also goes out on its own.
#pragma once

#include "frame/zelTagState.h"

namespace zel::band {

// Sends the five LED colours at once.
bool sendLeds(const tsBand& settings);

} // namespace zel::band
