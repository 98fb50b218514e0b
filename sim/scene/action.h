// SPDX-License-Identifier: MIT
// What can be done to a device of a scene, by an event of a scenario or by a control command.
#pragma once

#include "sim/band/tracks.h"
#include "sim/scene/faults.h"
#include "sim/tag/card.h"

#include <optional>
#include <variant>

namespace zel::sim {

struct Tap {
    Card card;
    std::optional<double> seconds = {}; // in the field; nothing: until it is removed
};
struct Remove {};
struct Swipe {
    BandCard card;
};
struct Approach {
    int inches; // 0: the object goes away
};
struct Unplug {};
struct Plug {};

using Action = std::variant<Tap, Remove, Swipe, Approach, Unplug, Plug, FaultOrder>;

} // namespace zel::sim
