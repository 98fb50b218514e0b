// SPDX-License-Identifier: MIT
// Tells a user what an import did.
#pragma once

#include "cli/command/output.h"
#include "cli/config/import.h"

#include <vector>

namespace zel::cli {

bool failed(const Import& import);

// On stderr: what the reader has no use for and what it refuses.
void warnOf(const Import& import, const ImportOptions& options);

// On stderr: why it failed, if so.
void warnOfFailure(const Import& import);

// What is to change.
void printPlan(const Import& import, Output& output);

// What the reader kept otherwise, and whether anything was written; nothing of one that failed.
void printOutcome(const Import& import, const ImportOptions& options, Output& output);

// NAME, RESULT, CHANGES of each.
void printTable(const std::vector<Import>& imports, const ImportOptions& options, Output& output);

Json toJson(const Import& import, const ImportOptions& options);

} // namespace zel::cli
