// SPDX-License-Identifier: MIT
// The identifier that a reader queued for the host.
#pragma once

#include "cli/device.h"
#include "cli/failure.h"
#include "cli/options.h"
#include "cli/output.h"

namespace zel::cli {

// Fetches it from the active reader and prints it.
Outcome readQueuedId(const Device& device, const Options& options, Output& output);

} // namespace zel::cli
