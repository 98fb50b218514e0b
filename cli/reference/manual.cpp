// SPDX-License-Identifier: MIT
// Writes the page: what the program is, its options, its commands by their groups, the tables.
#include "cli/reference/manual.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>

namespace zel::cli {

namespace {

std::string upper(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

// What would be a request, an escape or a typographer's sign stands as typed.
std::string escaped(char c) {
    switch (c) {
    case '\\':
        return "\\e";
    case '-':
        return "\\-";
    case '\'':
        return "\\(aq";
    case '^':
        return "\\(ha";
    case '~':
        return "\\(ti";
    default:
        return {c};
    }
}

// A text with what stands in `backquotes` in bold.
std::string prose(const std::string& text) {
    std::string out = text.starts_with('.') ? "\\&" : "";
    bool bold = false;
    for (const char c : text) {
        if (c == '`') {
            bold = !bold;
            out += bold ? "\\fB" : "\\fR";
        } else {
            out += escaped(c);
        }
    }
    return out;
}

std::string bold(const std::string& text) { return "\\fB" + prose(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + prose(text) + "\\fR"; }

std::string headOf(const OptionOutline& option) {
    std::string head;
    for (const std::string& name : option.names)
        head += (head.empty() ? "" : ", ") + bold(name);
    if (option.value.empty())
        return head;
    return head + (head.empty() ? "" : " ") + italic(option.value);
}

std::string item(const std::string& head, const std::string& text) {
    return fmt::format(".TP\n{}\n{}\n", head, prose(text));
}

std::string itemOf(const OptionOutline& option) { return item(headOf(option), option.description); }

std::string items(const std::vector<OptionOutline>& options) {
    std::string out;
    for (const OptionOutline& option : options)
        out += itemOf(option);
    return out;
}

// "[NAME=VALUE]..."
std::string argumentText(const OptionOutline& argument) {
    const std::string name = italic(argument.value) + (argument.isRepeated ? "..." : "");
    return argument.isRequired ? name : "[" + name + "]";
}

std::string synopsisOf(const CommandOutline& command) {
    std::string line = bold(command.place);
    if (!command.commands.empty())
        line += " " + italic("COMMAND");
    line += " [" + italic("OPTION") + "]...";
    for (const OptionOutline& argument : command.arguments)
        line += " " + argumentText(argument);
    return line;
}

// The footer of the help: its headings, and its indented lines as typed.
std::string footerOf(const CommandOutline& command) {
    std::string out;
    for (std::size_t at = 0; at < command.footer.size();) {
        const std::size_t end = std::min(command.footer.find('\n', at), command.footer.size());
        std::string line = command.footer.substr(at, end - at);
        at = end + 1;
        if (line.starts_with("  "))
            out += fmt::format(".IP\n.EX\n{}\n.EE\n", prose(line.substr(2)));
        else if (!line.empty())
            out += fmt::format(".IP\n{}\n", prose(line));
    }
    return out;
}

std::string entryOf(const CommandOutline& command, const CommandOutline& program) {
    std::vector<OptionOutline> own = command.arguments;
    for (const OptionOutline& option : ownOptions(command, program))
        own.push_back(option);
    std::string out = fmt::format(".TP\n{}\n{}\n", synopsisOf(command), prose(command.summary));
    if (!own.empty())
        out += ".RS\n" + items(own) + ".RE\n";
    return out + footerOf(command);
}

// Those that do something; a family of commands stands for those below it.
std::vector<const CommandOutline*> commandsOf(const CommandOutline& program) {
    std::vector<const CommandOutline*> all = allOf(program);
    std::erase_if(all, [&program](const CommandOutline* command) {
        return command == &program || !command->commands.empty();
    });
    return all;
}

// The heading of the first word of a command's name.
std::string groupOf(const CommandOutline& command, const CommandOutline& program) {
    const auto owner = std::ranges::find_if(program.commands, [&](const CommandOutline& first) {
        return (command.place + " ").starts_with(first.place + " ");
    });
    return owner->group;
}

std::string commandsByGroup(const CommandOutline& program) {
    std::vector<std::string> groups;
    for (const CommandOutline& command : program.commands)
        if (std::ranges::find(groups, command.group) == groups.end())
            groups.push_back(command.group);
    std::string out = groups.empty() ? "" : ".SH COMMANDS\n";
    for (const std::string& group : groups) {
        out += fmt::format(".SS {}\n", prose(group));
        for (const CommandOutline* const command : commandsOf(program))
            if (groupOf(*command, program) == group)
                out += entryOf(*command, program);
    }
    return out;
}

std::string tableOf(const std::string& heading, const ManualText::Table& rows) {
    std::string out = fmt::format(".SH {}\n", prose(upper(heading)));
    for (const auto& [term, meaning] : rows)
        out += item(bold(term), meaning);
    return out;
}

// "zelsim(1)" is a name in bold and its section.
std::string seeAlsoOf(const std::vector<std::string>& pages) {
    std::string out = pages.empty() ? "" : ".SH SEE ALSO\n";
    for (const std::string& page : pages) {
        const std::size_t section = page.find('(');
        out += fmt::format(".BR {} {}{}\n", prose(page.substr(0, section)), page.substr(section),
                           &page == &pages.back() ? "" : ",");
    }
    return out;
}

// The first sentence of a page begins in lower case and has no point.
std::string shortSummary(std::string summary) {
    summary.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(summary.front())));
    return summary.substr(0, summary.find_last_not_of('.') + 1);
}

} // namespace

std::string manualOf(const CommandOutline& program, const ManualText& text) {
    std::string out = fmt::format(
        ".TH {} 1 {} \"libzelTagAPI {}\" \"User Commands\"\n"
        ".SH NAME\n{} \\- {}\n.SH SYNOPSIS\n{}\n.SH DESCRIPTION\n{}\n.SH OPTIONS\n",
        upper(program.name), text.date, text.version, prose(program.name),
        prose(shortSummary(program.summary)), synopsisOf(program), prose(program.summary));
    out += items(program.arguments) + items(program.options) + commandsByGroup(program);
    if (program.commands.empty())
        out += footerOf(program);
    for (const auto& [heading, rows] : text.tables)
        out += tableOf(heading, rows);
    return out + seeAlsoOf(text.seeAlso);
}

} // namespace zel::cli
