// SPDX-License-Identifier: MIT
// Whether the user sits at this machine: `uaccess` lets in who does.
#pragma once

#include "cli/doctor/machine.h"

#include <optional>
#include <string>

namespace zel::cli {

struct Seat {
    std::string seat; // such as "seat0"; empty: no session of the user has one
    bool isActive = false;
};

// Nothing where the machine keeps no sessions.
std::optional<Seat> seatOf(const Machine& machine);

} // namespace zel::cli
