// SPDX-License-Identifier: MIT
// Says in words why a flash failed, in which state the reader is then, and what to do.
#pragma once

#include "cli/command/failure.h"

#include <cstdint>
#include <string>

namespace zel::cli {

// By the library's error word.
Failure explainFlash(std::int64_t word, const std::string& path, const std::string& device);

// A signal ended it: before the first line or behind the last one, or between two lines.
Failure interruptedAtAnEnd(const std::string& path, const std::string& device);
Failure interruptedFlash(const std::string& path, const std::string& device);

} // namespace zel::cli
