// SPDX-License-Identifier: MIT
// The completion for fish: a line a choice, each with the place on the command line it is for.
#include "cli/reference/completion.h"

#include <fmt/format.h>

namespace zel::cli {

namespace {

// True where the words so far lead to the place that is asked for.
constexpr char kPlace[] = R"(function __{0}_at
    set -l place {1}
    for word in (commandline -opc)[2..-1]
        contains -- "$place $word" {2}; and set place "$place $word"
    end
    test "$place" = "$argv"
end
complete -c {1} -f
)";

std::string fishQuoted(const std::string& text) {
    return "'" + replaced(replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
}

std::string placesOf(const CommandOutline& program) {
    std::vector<std::string> places;
    for (const CommandOutline* const command : allOf(program))
        if (command != &program)
            places.push_back(fishQuoted(command->place));
    return joined(places, " ");
}

std::string lineFor(const CommandOutline& program, const std::string& place) {
    const std::string condition =
        place.empty()
            ? ""
            : fmt::format(" -n {}",
                          fishQuoted("__" + asFunctionName(program.name) + "_at " + place));
    return fmt::format("complete -c {}{}", program.name, condition);
}

std::string valueOf(const OptionOutline& option) {
    if (option.isFile)
        return " -r -F";
    if (!option.words.empty())
        return " -x -a " + fishQuoted(joined(option.words, " "));
    return option.value.empty() ? "" : " -x";
}

std::string nameOf(const std::string& name) {
    return name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
}

std::string optionLine(const std::string& line, const OptionOutline& option) {
    std::string out = line;
    for (const std::string& name : option.names)
        out += nameOf(name);
    return out + valueOf(option) + fmt::format(" -d {}\n", fishQuoted(option.description));
}

std::string argumentLine(const std::string& line, const OptionOutline& argument) {
    if (argument.isFile)
        return line + " -F\n";
    if (argument.words.empty())
        return "";
    return line + fmt::format(" -a {} -d {}\n", fishQuoted(joined(argument.words, " ")),
                              fishQuoted(argument.value));
}

std::string linesAt(const CommandOutline& command, const CommandOutline& program) {
    const std::string line = lineFor(program, command.place);
    std::string out;
    for (const CommandOutline& below : command.commands)
        out += line + fmt::format(" -a {} -d {}\n", below.name, fishQuoted(below.summary));
    for (const OptionOutline& argument : command.arguments)
        out += argumentLine(line, argument);
    for (const OptionOutline& option : ownOptions(command, program))
        out += optionLine(line, option);
    return out;
}

} // namespace

std::string fishCompletionOf(const CommandOutline& program) {
    std::string out =
        fmt::format("# fish completion for {}\n", program.name) +
        fmt::format(kPlace, asFunctionName(program.name), program.name, placesOf(program));
    for (const CommandOutline* const command : allOf(program))
        out += linesAt(*command, program);
    for (const OptionOutline& option : program.options)
        out += optionLine(lineFor(program, ""), option);
    return out;
}

} // namespace zel::cli
