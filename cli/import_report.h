// SPDX-License-Identifier: MIT
// Tells a user what an import did.
#pragma once

#include "cli/import.h"
#include "cli/output.h"

#include <vector>

namespace zel::cli {

bool failed(const Import& import);

// On stderr: what the reader had no use for, what it refused, why it failed.
void warnOf(const Import& import, const ImportOptions& options);

// The changes and why nothing was written, if so; nothing of an import that failed.
void print(const Import& import, const ImportOptions& options, Output& output);

// NAME, RESULT, CHANGES of each.
void printTable(const std::vector<Import>& imports, const ImportOptions& options, Output& output);

Json toJson(const Import& import, const ImportOptions& options);

} // namespace zel::cli
