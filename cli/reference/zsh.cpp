// SPDX-License-Identifier: MIT
// The completion for zsh: a function a command, each hands on to those below it.
#include "cli/reference/completion.h"

#include <fmt/format.h>

namespace zel::cli {

namespace {

// As text in the brackets of a word that _arguments takes; those of its own end it.
std::string inBrackets(const std::string& text) {
    return replaced(replaced(text, "[", "\\["), "]", "\\]");
}

std::string withoutColons(const std::string& text) { return replaced(text, ":", "\\:"); }

std::string actionOf(const OptionOutline& option) {
    if (option.isFile)
        return "_files";
    return option.words.empty() ? " " : "(" + joined(option.words, " ") + ")";
}

std::string valueOf(const OptionOutline& option) {
    if (option.value.empty())
        return "";
    return fmt::format(":{}:{}", withoutColons(option.value), actionOf(option));
}

std::string specifications(const CommandOutline& command) {
    std::string out;
    for (const OptionOutline& option : command.options)
        for (const std::string& name : option.names)
            out += fmt::format(" \\\n        {}",
                               quoted(fmt::format("{}[{}]{}", name, inBrackets(option.description),
                                                  valueOf(option))));
    for (const OptionOutline& argument : command.arguments)
        out += fmt::format(" \\\n        {}",
                           quoted((argument.isRepeated ? "*" : "") + valueOf(argument)));
    return out;
}

// What _describe takes: a name and its meaning, a line each.
std::string choices(const CommandOutline& command) {
    std::string out;
    for (const CommandOutline& below : command.commands)
        out += fmt::format("        {}\n", quoted(below.name + ":" + below.summary));
    return out;
}

constexpr char kHandOn[] = R"(    local state line
    local -a commands=(
{0}    )
    _arguments -C -S{1} \
        '1: :->command' '*:: :->rest'
    case $state in
    command) _describe command commands ;;
    rest) (( $+functions[_{2}_${{line[1]//-/_}}] )) && _{2}_${{line[1]//-/_}} ;;
    esac
)";

std::string functionOf(const CommandOutline& command) {
    const std::string name = asFunctionName(command.place);
    const std::string body =
        command.commands.empty()
            ? fmt::format("    _arguments -S{}\n", specifications(command))
            : fmt::format(kHandOn, choices(command), specifications(command), name);
    return fmt::format("_{}() {{\n{}}}\n\n", name, body);
}

} // namespace

std::string zshCompletionOf(const CommandOutline& program) {
    std::string out =
        fmt::format("#compdef {}\n# zsh completion for {}\n\n", program.name, program.name);
    for (const CommandOutline* const command : allOf(program))
        out += functionOf(*command);
    return out + fmt::format("_{} \"$@\"\n", asFunctionName(program.name));
}

} // namespace zel::cli
