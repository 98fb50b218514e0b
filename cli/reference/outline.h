// SPDX-License-Identifier: MIT
// What a program's parser says of its commands and options, as plain text to write references from.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace zel::cli {

struct OptionOutline {
    std::vector<std::string> names; // "--yes", "-y"; none: an argument by its place
    std::string value;              // what it is given, such as "PATH"; empty: a flag
    std::string description;
    std::vector<std::string> words; // what the value may be, where that is a list
    bool isFile = false;
    bool isRequired = false;
    bool isRepeated = false;
};

struct CommandOutline {
    std::string name;  // "get"
    std::string place; // "zeltag config get"
    std::string group; // the heading it stands under in the help
    std::string summary;
    std::string footer;
    std::vector<OptionOutline> options;
    std::vector<OptionOutline> arguments;
    std::vector<CommandOutline> commands;
};

// What a value may be, by what the help calls it, such as "NAME": for completions.
using ValueWords = std::map<std::string, std::vector<std::string>>;

CommandOutline outlineOf(const CLI::App& app, const ValueWords& words);

// The command itself and all below it, each before those below it.
std::vector<const CommandOutline*> allOf(const CommandOutline& program);

// The options that `command` has beyond those of the program itself.
std::vector<OptionOutline> ownOptions(const CommandOutline& command, const CommandOutline& program);

} // namespace zel::cli
