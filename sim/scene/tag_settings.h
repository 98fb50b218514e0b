// SPDX-License-Identifier: MIT
// The words of a proximity reader's settings that its blocks hold.
#pragma once

#include "sim/scene/setting.h"

namespace zel::sim {

class TagReader;

// Those of the active configuration.
Settings tagSettings(TagReader& reader);

} // namespace zel::sim
