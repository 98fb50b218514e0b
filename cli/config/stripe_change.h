// SPDX-License-Identifier: MIT
// Changes of a magnetic stripe reader's settings: from NAME=VALUE to the reader.
#pragma once

#include "cli/command/failure.h"
#include "cli/config/settings.h"

#include <string>
#include <variant>
#include <vector>

namespace zel::cli {

// Whether the first NAME is one of a magnetic stripe reader: no proximity reader has such a name.
bool meansStripe(const std::vector<std::string>& assignments);

// What is wanted, with no values of before. No device is needed to refuse a name, a setting that is
// set twice, or a number that isn't one or is out of range.
std::variant<Differences, Failure> parseStripeChanges(const std::vector<std::string>& assignments);

// Fills in the old values, and puts the new ones into the library's memory.
void prepareStripe(Differences& changes);

// Why a name isn't one of the active reader: it belongs to the other kind of readers.
Failure wrongKind(const std::string& name);

} // namespace zel::cli
