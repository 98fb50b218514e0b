// SPDX-License-Identifier: MIT
// The serial line that a user names: whether it can be one, and why nobody answers on it.
//
// Nothing here opens the line: to open one can already make its device restart.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/options.h"

#include <string>

namespace zel::cli {

// Makes the line the only one that the library's next scan opens. A failure where the path is that
// of something else, which must not receive a byte.
Outcome useLine(const Options& options);

// Why no reader answered on it.
Failure explainNoLine(const Options& options);

// "/dev/ttyUSB0 at 9600 baud"
std::string lineText(const Options& options);

} // namespace zel::cli
