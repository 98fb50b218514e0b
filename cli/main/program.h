// SPDX-License-Identifier: MIT
// The program: takes the command line apart, runs the command and reports how it ended.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/options.h"
#include "cli/command/output.h"

#include <string>
#include <vector>

namespace zel::cli {

ExitCode runProgram(int argc, const char* const* argv);

// Runs the command that the words behind the program's name make, with options given before them.
Outcome runWords(const std::vector<std::string>& words, const Options& options, Output& output);

} // namespace zel::cli
