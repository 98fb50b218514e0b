// SPDX-License-Identifier: MIT
// Finds the word that a user means, and the nearest ones when there is none.
#pragma once

#include "cli/command/failure.h"
#include "cli/config/words.h"

#include <string>
#include <string_view>
#include <variant>

namespace zel::cli {

// A word by NAME or RECORD.NAME, upper and lower case alike; a failure names what may be meant.
std::variant<const Word*, Failure> findWord(std::string_view name);

// Changes of one letter that lead from one text to the other, case left aside.
std::size_t distance(std::string_view a, std::string_view b);

} // namespace zel::cli
