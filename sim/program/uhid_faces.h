// SPDX-License-Identifier: MIT
// The devices of the simulated bus as HID devices of this system.
#pragma once

#include "sim/scene/world.h"
#include "sim/server/face.h"

#include <memory>
#include <vector>

namespace zel::sim {

// One for each device on USB. A trouble where this system lets none be made.
std::variant<std::vector<std::unique_ptr<Face>>, Trouble> makeUhidFaces(const World& world);

} // namespace zel::sim
