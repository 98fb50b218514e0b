// SPDX-License-Identifier: MIT
// What every command is: its text for the help, its own options, and its run.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/options.h"
#include "cli/command/output.h"

#include <memory>
#include <vector>

namespace zel::cli {

struct CommandText {
    const char* name;
    const char* group; // the heading it stands under in the help
    const char* summary;
    const char* example; // a line to type
};

class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    virtual CommandText text() const = 0;
    virtual void addOptions(CLI::App&) {}
    virtual Outcome run(const Options& options, Output& output) = 0;
};

// All commands, in the order of commands.def.
std::vector<std::unique_ptr<Command>> allCommands();

namespace command {
#define COMMAND(name) std::unique_ptr<Command> name();
#include "cli/command/commands.def"
#undef COMMAND
} // namespace command

} // namespace zel::cli
