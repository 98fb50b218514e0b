// SPDX-License-Identifier: MIT
// Makes the grammar of the commands' own texts and options.
#include "cli/main/parser.h"

#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>

namespace zel::cli {

namespace {

constexpr std::size_t kHelpColumn = 24;

std::string versionText() {
    short major = 0;
    short minor = 0;
    short build = 0;
    GetLibVersion(&major, &minor, &build);
    return fmt::format("zeltag {}.{}.{}", major, minor, build);
}

struct FamilyText {
    std::string_view name;
    const char* summary;
};

constexpr FamilyText kFamilies[] = {{"config", "Show and change a reader's settings"},
                                    {"file", "Check the files that readers are given"},
                                    {"keys", "Give keys to a reader"},
                                    {"firmware", "Check and load a reader's firmware"},
                                    {"net", "Look for network bridges"}};

const char* summaryOf(std::string_view name) {
    const auto* const family =
        std::find_if(std::begin(kFamilies), std::end(kFamilies),
                     [name](const FamilyText& text) { return text.name == name; });
    return family == std::end(kFamilies) ? "" : family->summary;
}

} // namespace

Parser::Parser(const Options& given)
    : options_(given),
      app_("Finds zelTag card readers and reads the card in their field.", "zeltag") {
    app_.set_version_flag("--version", versionText, "Print the version of the library");
    app_.set_help_flag("--help,-h", "Print this help");
    app_.get_formatter()->column_width(kHelpColumn);
    app_.require_subcommand(0, 1);
    addCommonOptions(app_, options_);
    std::string examples = "Examples:";
    for (const auto& command : commands_) {
        add(*command);
        examples += fmt::format("\n  {}", command->text().example);
    }
    app_.footer(examples + "\n\n`zeltag COMMAND --help` tells more of a command.");
}

void Parser::add(Command& command) {
    const CommandText text = command.text();
    const std::string_view name = text.name;
    const std::size_t space = name.find(' ');
    CLI::App& parent = space == name.npos ? app_ : family(name.substr(0, space), text.group);
    CLI::App* const app = parent.add_subcommand(std::string(name.substr(space + 1)), text.summary);
    app->group(space == name.npos ? text.group : "Commands");
    app->footer(fmt::format("Example:\n  {}", text.example));
    command.addOptions(*app);
    addCommonOptions(*app, options_);
    app->callback([this, &command] { chosen_ = &command; });
}

// What stands in front of commands of two words, such as `config`.
CLI::App& Parser::family(std::string_view name, const char* group) {
    CLI::App*& made = families_[std::string(name)];
    if (!made) {
        made = app_.add_subcommand(std::string(name), summaryOf(name));
        made->group(group)->require_subcommand(0, 1);
        addCommonOptions(*made, options_);
    }
    return *made;
}

} // namespace zel::cli
