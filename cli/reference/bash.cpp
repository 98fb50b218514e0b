// SPDX-License-Identifier: MIT
// The completion for bash: one function that needs nothing of the package bash-completion.
#include "cli/reference/completion.h"

#include <fmt/format.h>

namespace zel::cli {

namespace {

// Goes through the words so far; what isn't a command's name leads nowhere.
constexpr char kWalk[] =
    R"(    local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}}
    local place={0} i choices='' files=''
    for ((i = 1; i < COMP_CWORD; i++)); do
        case "$place ${{COMP_WORDS[i]}}" in
        {1}) place="$place ${{COMP_WORDS[i]}}" ;;
        esac
    done
)";

constexpr char kEnd[] = R"(    COMPREPLY=($(compgen -W "$choices" -- "$word"))
    if [[ $files ]]; then
        compopt -o filenames 2>/dev/null
        COMPREPLY+=($(compgen -f -- "$word"))
    elif [[ ${COMPREPLY[0]-} == *= ]]; then
        compopt -o nospace 2>/dev/null
    fi
}
)";

std::string placesOf(const CommandOutline& program) {
    std::vector<std::string> places;
    for (const CommandOutline* const command : allOf(program))
        if (command != &program)
            places.push_back(quoted(command->place));
    return joined(places, " | ");
}

// The value of the option in front of the word; no program has two options of one name.
std::string valueCases(const CommandOutline& program) {
    std::string out = "    case \"$place:$before\" in\n";
    for (const CommandOutline* const command : allOf(program))
        for (const OptionOutline& option : command->options)
            if (!option.value.empty())
                for (const std::string& name : option.names)
                    out +=
                        fmt::format("    {})\n        choices={}\n        files={}\n        ;;\n",
                                    quoted(command->place + ":" + name),
                                    quoted(joined(option.words, " ")), option.isFile ? "yes" : "");
    return out;
}

std::vector<std::string> choicesAt(const CommandOutline& command) {
    std::vector<std::string> choices;
    for (const CommandOutline& below : command.commands)
        choices.push_back(below.name);
    for (const OptionOutline& argument : command.arguments)
        choices.insert(choices.end(), argument.words.begin(), argument.words.end());
    for (const OptionOutline& option : command.options)
        choices.insert(choices.end(), option.names.begin(), option.names.end());
    return choices;
}

bool takesFile(const CommandOutline& command) {
    for (const OptionOutline& argument : command.arguments)
        if (argument.isFile)
            return true;
    return false;
}

std::string placeCases(const CommandOutline& program) {
    std::string out = "    *)\n        case \"$place\" in\n";
    for (const CommandOutline* const command : allOf(program))
        out += fmt::format("        {})\n            choices={}\n            files={}\n"
                           "            ;;\n",
                           quoted(command->place), quoted(joined(choicesAt(*command), " ")),
                           takesFile(*command) ? "yes" : "");
    return out + "        esac\n        ;;\n    esac\n";
}

} // namespace

std::string bashCompletionOf(const CommandOutline& program) {
    const std::string function = "_" + asFunctionName(program.name);
    return fmt::format("# bash completion for {}\n{}() {{\n", program.name, function) +
           fmt::format(kWalk, program.name, placesOf(program)) + valueCases(program) +
           placeCases(program) + kEnd + fmt::format("complete -F {} {}\n", function, program.name);
}

} // namespace zel::cli
