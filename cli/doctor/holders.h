// SPDX-License-Identifier: MIT
// Which other programs have a device node open.
#pragma once

#include "cli/doctor/machine.h"

#include <string>
#include <vector>

namespace zel::cli {

struct Holder {
    int process;
    std::string name;
};

// Of the processes that this user may look at.
std::vector<Holder> holdersOf(const std::string& node, const Machine& machine);

// "picocom (412), screen (97)"
std::string asText(const std::vector<Holder>& holders);

// The owner, the group and the mode of a node: "root:dialout, mode 0660"; empty: it isn't there.
std::string ownersOf(const std::string& node, const Machine& machine);

} // namespace zel::cli
