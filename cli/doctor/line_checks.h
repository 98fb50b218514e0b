// SPDX-License-Identifier: MIT
// Whether a serial line can be used, without opening it.
#pragma once

#include "cli/doctor/finding.h"
#include "cli/doctor/machine.h"

namespace zel::cli {

Findings checkLine(const std::string& path, const Machine& machine);

} // namespace zel::cli
