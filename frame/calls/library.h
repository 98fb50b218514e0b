// SPDX-License-Identifier: MIT
// The marker hook, for tests: nothing in the library calls it.
#pragma once

#include "frame/zelTagAPI.h"

namespace zel {

zelMarkerFunction markerFunction();

} // namespace zel
