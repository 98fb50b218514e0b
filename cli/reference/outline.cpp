// SPDX-License-Identifier: MIT
// Walks through a parser.
#include "cli/reference/outline.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace zel::cli {

namespace {

// "KIND:{template,keys}", as a parser calls a value of a list, is KIND and its words.
void takeType(const std::string& type, OptionOutline& outline) {
    const std::size_t end = type.find(':');
    outline.value = type.substr(0, end);
    const std::size_t open = type.find('{');
    if (end == type.npos || open == type.npos)
        return;
    const std::string list = type.substr(open + 1, type.rfind('}') - open - 1);
    outline.words = CLI::detail::split(list, ',');
}

// A value is called by its type where the parser was given a name for it, "HOST[:PORT]" whole.
void takeValue(const CLI::Option& option, OptionOutline& outline) {
    if (!option.nonpositional()) {
        outline.value = option.get_name(true);
        return;
    }
    if (option.get_type_size_max() == 0) // a flag
        return;
    takeType(option.get_type_name(), outline);
    if (outline.words.empty())
        outline.value = option.get_type_name().substr(0, option.get_type_name().find(":INT "));
}

OptionOutline outlineOf(const CLI::Option& option, const ValueWords& words) {
    OptionOutline outline;
    for (const std::string& name : option.get_lnames())
        outline.names.push_back("--" + name);
    for (const std::string& name : option.get_snames())
        outline.names.push_back("-" + name);
    outline.description = option.get_description();
    takeValue(option, outline);
    if (const auto found = words.find(outline.value); found != words.end())
        outline.words = found->second;
    outline.isFile = outline.value.starts_with("FILE") || outline.value == "PATH";
    outline.isRequired = option.get_required();
    outline.isRepeated = option.get_items_expected_max() > 1;
    return outline;
}

void takeOptions(const CLI::App& app, const ValueWords& words, CommandOutline& outline) {
    for (const CLI::Option* const option : app.get_options()) {
        if (option->get_group().empty()) // kept out of the help
            continue;
        auto& list = option->nonpositional() ? outline.options : outline.arguments;
        list.push_back(outlineOf(*option, words));
    }
}

CommandOutline outlineAt(const std::string& above, const CLI::App& app, const ValueWords& words) {
    CommandOutline outline;
    outline.name = app.get_name();
    outline.place = above + app.get_name();
    outline.group = app.get_group();
    outline.summary = app.get_description();
    outline.footer = app.get_footer();
    takeOptions(app, words, outline);
    for (const CLI::App* const command : app.get_subcommands({}))
        outline.commands.push_back(outlineAt(outline.place + " ", *command, words));
    return outline;
}

void append(const CommandOutline& command, std::vector<const CommandOutline*>& all) {
    all.push_back(&command);
    for (const CommandOutline& below : command.commands)
        append(below, all);
}

} // namespace

CommandOutline outlineOf(const CLI::App& app, const ValueWords& words) {
    return outlineAt("", app, words);
}

std::vector<const CommandOutline*> allOf(const CommandOutline& program) {
    std::vector<const CommandOutline*> all;
    append(program, all);
    return all;
}

std::vector<OptionOutline> ownOptions(const CommandOutline& command,
                                      const CommandOutline& program) {
    const auto isCommon = [&program](const OptionOutline& option) {
        return std::ranges::any_of(program.options, [&option](const OptionOutline& common) {
            return common.names == option.names;
        });
    };
    std::vector<OptionOutline> own = command.options;
    std::erase_if(own, isCommon);
    return own;
}

} // namespace zel::cli
