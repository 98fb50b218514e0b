// SPDX-License-Identifier: MIT
// Follows the cards in a reader's field.
#pragma once

#include "cli/card/reading.h"
#include "cli/command/failure.h"
#include "cli/command/options.h"
#include "cli/command/output.h"
#include "cli/device/device.h"

namespace zel::cli {

// A line for each card that comes and that goes, until an interrupt, a reader that stays silent, or
// results that can't be delivered.
Outcome watchField(Width width, const Device& device, const Options& options, Output& output);

} // namespace zel::cli
