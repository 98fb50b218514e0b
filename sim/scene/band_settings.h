// SPDX-License-Identifier: MIT
// The settings of a magnetic stripe reader by the names of its file.
#pragma once

#include "sim/scene/setting.h"

namespace zel::sim {

class BandReader;

Settings bandSettings(BandReader& reader);

} // namespace zel::sim
