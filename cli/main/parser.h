// SPDX-License-Identifier: MIT
// The command line's grammar: every command with its options and its help.
#pragma once

#include "cli/command/command.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zel::cli {

// "MAJOR.MINOR.BUILD"
std::string libraryVersion();

// What takes a command line apart. Help, manual pages and completions are made from its app().
class Parser {
public:
    // Options that were given elsewhere stand where the command line names none.
    explicit Parser(const Options& given = {});
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    CLI::App& app() { return app_; }

    // What app().parse() found; null where no command was named.
    const Options& options() const { return options_; }
    Command* chosen() const { return chosen_; }

private:
    void add(Command& command);
    CLI::App& family(std::string_view name, const char* group);

    Options options_;
    CLI::App app_;
    std::map<std::string, CLI::App*> families_;
    std::vector<std::unique_ptr<Command>> commands_ = allCommands();
    Command* chosen_ = nullptr;
};

} // namespace zel::cli
