// SPDX-License-Identifier: MIT
// The identifier that a reader queued for the host.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/options.h"
#include "cli/command/output.h"
#include "cli/device/device.h"

namespace zel::cli {

// Fetches it from the active reader and prints it.
Outcome readQueuedId(const Device& device, const Options& options, Output& output);

} // namespace zel::cli
