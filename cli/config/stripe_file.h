// SPDX-License-Identifier: MIT
// A magnetic stripe reader's template file: lines of "KEY: NUMBER".
#pragma once

#include "cli/command/failure.h"
#include "cli/config/settings.h"

#include <optional>
#include <string>

namespace zel::cli {

// Whether a file that can be read begins as one does.
bool isStripeFile(const std::string& name);

// Whether such a file goes on to its last line.
bool isStripeFileWhole(const std::string& name);

SettingValues toldByStripeFile(const std::string& name);

// Those of the active reader, in the library's memory; and what they would be with the file there:
// nothing when it can't be read.
SettingValues activeStripeValues();
std::optional<SettingValues> importedStripeValues(const std::string& name);

// These files carry no checksum.
Failure noSealedStripeFile();

} // namespace zel::cli
