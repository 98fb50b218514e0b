// SPDX-License-Identifier: MIT
// The help of the program on one screen; that of a command is as the parser's.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>

namespace zel::cli {

std::shared_ptr<CLI::Formatter> screenFormatter();

} // namespace zel::cli
