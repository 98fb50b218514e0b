// SPDX-License-Identifier: MIT
// The world of a command that has one of its own.
#pragma once

#include "sim/scene/world.h"

#include <memory>

namespace zel::sim {

// That of a scenario; without one the demonstration's, on USB or behind a bridge.
std::variant<std::unique_ptr<World>, Trouble> makeWorld(const std::string& scenario,
                                                        bool isBehindBridge);

} // namespace zel::sim
