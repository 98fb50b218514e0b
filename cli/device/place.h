// SPDX-License-Identifier: MIT
// Where the readers of a command are: on USB, simulated, on a serial line or behind a bridge.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/options.h"
#include "cli/device/device.h"

#include <string>

namespace zel::cli {

// Points the library's next connect at the place that the options name.
Outcome choosePlace(const Options& options);

// What that connect is doing, for a user who waits.
std::string whatIsAwaited(const Options& options);

// Why it found no reader.
Failure explainNothing(const Options& options);

// What helps where a reader answers and its configuration can't be read.
std::string unreadableHint(const Device& device);

} // namespace zel::cli
