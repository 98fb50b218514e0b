// SPDX-License-Identifier: MIT
// How subcommands are added to the command line.
#pragma once

#include "sim/program/arguments.h"

namespace zel::sim {

using Command = int (*)(const Arguments&);

CLI::App& addCommand(CLI::App& app, Arguments& arguments, const std::string& name,
                     const std::string& help, Command command);

void addSocket(CLI::App& sub, Arguments& arguments, const std::string& help);

// Those that speak with a simulator that runs.
void addControlCommands(CLI::App& app, Arguments& arguments);

} // namespace zel::sim
