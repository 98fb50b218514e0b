// SPDX-License-Identifier: MIT
// The program: takes the command line apart, runs the command and reports how it ended.
#pragma once

#include "cli/command/failure.h"

namespace zel::cli {

ExitCode runProgram(int argc, const char* const* argv);

} // namespace zel::cli
