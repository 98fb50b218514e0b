// SPDX-License-Identifier: MIT
// The reader's configuration as a whole.
#pragma once

#include "frame/zelTagState.h"

namespace zel::band {

// Sends the five LED colours at once.
bool sendLeds(const tsBand& settings);

} // namespace zel::band
