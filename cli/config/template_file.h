// SPDX-License-Identifier: MIT
// What a template file tells, what a reader holds, and what becomes of the one by the other.
#pragma once

#include "cli/command/failure.h"
#include "cli/config/settings.h"

#include <string>
#include <variant>

namespace zel::cli {

// What the file tells, a configuration each; that of a magnetic stripe reader tells one.
std::variant<Configurations, Failure> configurationsIn(const std::string& name);

// Why a file isn't one for the active reader: it is of another kind of reader.
Outcome whyUnfit(const std::string& name);

// Those of the active reader, in the library's memory.
Configurations activeConfigurations();

// What they would be with the file imported, if the reader refused nothing.
std::variant<Configurations, Failure> importedConfigurations(const std::string& name);

// Whether a file tells all of these and nothing else: a full disk or a reply that was lost leave a
// part of it, or other values.
bool tellsAll(const std::string& name, const Configurations& held);

// Whether a file of the active reader's settings shows key values: counts in the field data that
// run past its 128 bytes print the keys behind them.
bool showsKeys();

} // namespace zel::cli
