// SPDX-License-Identifier: MIT
// The command line's grammar: every command with its options and its help.
#pragma once

#include "cli/command/command.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::cli {

// "MAJOR.MINOR.BUILD"
std::string libraryVersion();

// What takes a command line apart. Help, manual pages and completions are made from its app().
class Parser {
public:
    using Words = std::span<const char* const>;

    // The whole grammar.
    Parser();

    // The grammar of a command line of these words: a command that none of them names has no
    // options, as each command's take longer to declare than the program to start. Options that
    // were given elsewhere stand where the command line names none.
    Parser(Words words, const Options& given);
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    CLI::App& app() { return app_; }

    // What app().parse() found; null where no command was named.
    const Options& options() const { return options_; }
    Command* chosen() const { return chosen_; }

private:
    void addAll();
    void add(Command& command);
    bool isNamed(const std::string& name) const;
    CLI::App& family(std::string_view name, const char* group);

    std::optional<Words> words_; // null: as if they named all
    Options options_;
    CLI::App app_{"Finds zelTag card readers, reads their cards and sets them up.", "zeltag"};
    std::map<std::string, CLI::App*> families_;
    std::vector<std::unique_ptr<Command>> commands_ = allCommands();
    Command* chosen_ = nullptr;
};

} // namespace zel::cli
