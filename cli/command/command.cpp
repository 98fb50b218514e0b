// SPDX-License-Identifier: MIT
// The table of commands.
#include "cli/command/command.h"

namespace zel::cli {

std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> all;
#define COMMAND(name) all.push_back(command::name());
#include "cli/command/commands.def"
#undef COMMAND
    return all;
}

} // namespace zel::cli
