// SPDX-License-Identifier: MIT
// Makes the grammar of the commands' own texts and options.
#include "cli/main/parser.h"

#include "cli/main/help.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>

namespace zel::cli {

namespace {

std::string versionText() { return "zeltag " + libraryVersion(); }

struct FamilyText {
    std::string_view name;
    const char* summary;
};

constexpr FamilyText kFamilies[] = {{"config", "Print, change, save and load a reader's settings"},
                                    {"file", "Check a file that a reader is to be given"},
                                    {"keys", "Send keys to a reader"},
                                    {"firmware", "Check and load a reader's firmware"},
                                    {"net", "Find network bridges"}};

const char* summaryOf(std::string_view name) {
    const auto* const family =
        std::find_if(std::begin(kFamilies), std::end(kFamilies),
                     [name](const FamilyText& text) { return text.name == name; });
    return family == std::end(kFamilies) ? "" : family->summary;
}

} // namespace

std::string libraryVersion() {
    short major = 0;
    short minor = 0;
    short build = 0;
    GetLibVersion(&major, &minor, &build);
    return fmt::format("{}.{}.{}", major, minor, build);
}

Parser::Parser() { addAll(); }

Parser::Parser(Words words, const Options& given) : words_(words), options_(given) { addAll(); }

void Parser::addAll() {
    app_.set_version_flag("--version", versionText, "Print the version of the library");
    app_.set_help_flag("--help,-h", "Print this help");
    app_.formatter(screenFormatter());
    app_.require_subcommand(0, 1);
    addCommonOptions(app_, options_);
    for (const auto& command : commands_)
        add(*command);
    app_.footer("`zeltag COMMAND --help` tells more of a command and shows an example.");
}

void Parser::add(Command& command) {
    const CommandText text = command.text();
    const std::string_view name = text.name;
    const std::size_t space = name.find(' ');
    CLI::App& parent = space == name.npos ? app_ : family(name.substr(0, space), text.group);
    CLI::App* const app = parent.add_subcommand(std::string(name.substr(space + 1)), text.summary);
    app->group(space == name.npos ? text.group : "Commands");
    app->footer(fmt::format("Example:\n  {}", text.example));
    if (isNamed(app->get_name())) {
        command.addOptions(*app);
        addCommonOptions(*app, options_);
    }
    app->callback([this, &command] { chosen_ = &command; });
}

// What stands in front of commands of two words, such as `config`.
CLI::App& Parser::family(std::string_view name, const char* group) {
    CLI::App*& made = families_[std::string(name)];
    if (!made) {
        made = app_.add_subcommand(std::string(name), summaryOf(name));
        made->group(group)->require_subcommand(0, 1);
        if (isNamed(made->get_name()))
            addCommonOptions(*made, options_);
    }
    return *made;
}

bool Parser::isNamed(const std::string& name) const {
    return !words_ || std::find(words_->begin(), words_->end(), name) != words_->end();
}

} // namespace zel::cli
