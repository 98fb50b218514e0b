// SPDX-License-Identifier: MIT
// What the build asks of a program that describes a parser.
#pragma once

#include "cli/reference/manual.h"
#include "cli/reference/outline.h"

#include <string>

namespace zel::cli {

// Prints one of "manual", "bash", "fish" and "zsh". False: no such form, or it can't be written.
bool printReference(const std::string& form, const CommandOutline& program, const ManualText& text);

} // namespace zel::cli
