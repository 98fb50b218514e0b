// SPDX-License-Identifier: MIT
// Which device of several an action is meant for.
#pragma once

#include "sim/scene/action.h"
#include "sim/scene/kinds.h"
#include "sim/scene/trouble.h"

#include <span>
#include <string>
#include <variant>

namespace zel::sim {

struct Candidate {
    std::string name;
    const Kind* kind;
};

// The index of the device of that name; without a name of the only one that the action fits. A
// trouble tells which there are.
std::variant<std::size_t, Trouble> chooseDevice(std::span<const Candidate> devices,
                                                const std::string& name, const Action& action);

} // namespace zel::sim
