// SPDX-License-Identifier: MIT
// The readers in the library's table, as `zeltag list` and `zeltag wait` tell them.
#pragma once

#include "cli/command/options.h"
#include "cli/command/output.h"

namespace zel::cli {

// One line a reader, or one object for all; the chosen one alone where the user chose.
void printListing(const Options& options, Output& output);

} // namespace zel::cli
