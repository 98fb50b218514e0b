// SPDX-License-Identifier: MIT
// The data that a reader read from the card in its field.
#pragma once

#include "cli/device.h"
#include "cli/failure.h"
#include "cli/options.h"
#include "cli/output.h"

namespace zel::cli {

// Fetches it from the active reader and prints it.
Outcome readCardData(const Device& device, const Options& options, Output& output);

} // namespace zel::cli
