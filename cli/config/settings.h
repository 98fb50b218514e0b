// SPDX-License-Identifier: MIT
// All that a file may tell of a reader's configurations, as lists of named numbers.
#pragma once

#include "cli/command/output.h"
#include "cli/config/stripe_settings.h"
#include "cli/config/words.h"

#include <optional>
#include <string>
#include <vector>

namespace zel::cli {

struct Setting {
    std::string name; // "TimeParms.iIDHoldTO", "AZERTYShiftLock", "uSFD[12]", "CardType"
    const Word* word; // null for what stands beside the records
    bool isByte;      // written in hexadecimal
    const StripeSetting* stripe = nullptr; // of a magnetic stripe reader
};

// What can be set of a configuration: words, the two options, field data and the card type; behind
// them the settings of a magnetic stripe reader, which has no others.
const std::vector<Setting>& allSettings();

// By setting; nothing where it isn't told.
using SettingValues = std::vector<std::optional<int>>;
using Configurations = std::vector<SettingValues>;

struct Difference {
    std::size_t configuration;
    std::size_t setting; // of allSettings()
    std::optional<int> before;
    std::optional<int> after;
    std::optional<int> kept = {}; // what the reader has after a write
};

using Differences = std::vector<Difference>;

enum class Untold { Passes, Differs };

// Compares as many configurations as both sides have. What only one side tells differs or not.
Differences compare(const Configurations& before, const Configurations& after, Untold untold);

void fillKept(Differences& differences, const Configurations& now);

// Those that the reader has kept with another value.
Differences keptOtherwise(const Differences& differences);

// A line each, under the number of its configuration where there are several.
void print(const Differences& differences, bool several, Output& output);
Json toJson(const Differences& differences);

} // namespace zel::cli
