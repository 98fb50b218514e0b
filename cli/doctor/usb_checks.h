// SPDX-License-Identifier: MIT
// Whether the system lets the readers on USB be used. One file per platform.
#pragma once

#include "cli/doctor/finding.h"
#include "cli/doctor/machine.h"

namespace zel::cli {

// Nothing on platforms that tell no more than the library does.
Findings checkUsb(const Machine& machine);

} // namespace zel::cli
