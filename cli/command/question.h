// SPDX-License-Identifier: MIT
// Questions to the user.
#pragma once

#include <string>

namespace zel::cli {

// Whether somebody at a terminal can answer.
bool canAsk();

// Asks on stderr; everything but an answer that begins with y is no.
bool isConfirmed(const std::string& question);

} // namespace zel::cli
