// SPDX-License-Identifier: MIT
// From the command line to a command, and from its outcome to an exit code.
#include "cli/main/program.h"

#include "cli/command/command.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <map>

namespace zel::cli {

namespace {

std::string versionText() {
    short major = 0;
    short minor = 0;
    short build = 0;
    GetLibVersion(&major, &minor, &build);
    return fmt::format("zeltag {}.{}.{}", major, minor, build);
}

Failure cannotWrite(int error) {
    return {ExitCode::CannotWrite,
            fmt::format("the results can't be written: {}", std::strerror(error)),
            "check where stdout goes", ""};
}

void report(const Failure& failure, bool json, Output& output) {
    if (failure.message.empty())
        return;
    warn(asLine(failure));
    if (json)
        output.line(asJson(failure));
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

class Program {
public:
    Program() : app_("Finds zelTag card readers and reads the card in their field.", "zeltag") {
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

    Outcome run(int argc, const char* const* argv, Output& output) {
        try {
            app_.parse(argc, argv);
        } catch (const CLI::ParseError& stop) {
            return end(stop, output);
        }
        demandProgress(options_.progress);
        if (auto failure = contradictionIn(options_))
            return failure;
        return chosen_ ? chosen_->run(options_, output) : noCommand();
    }

private:
    static constexpr std::size_t kHelpColumn = 24;

    void add(Command& command) {
        const CommandText text = command.text();
        const std::string_view name = text.name;
        const std::size_t space = name.find(' ');
        CLI::App& parent = space == name.npos ? app_ : family(name.substr(0, space), text.group);
        CLI::App* const app =
            parent.add_subcommand(std::string(name.substr(space + 1)), text.summary);
        app->group(space == name.npos ? text.group : "Commands");
        app->footer(fmt::format("Example:\n  {}", text.example));
        command.addOptions(*app);
        addCommonOptions(*app, options_);
        app->callback([this, &command] { chosen_ = &command; });
    }

    // What stands in front of commands of two words, such as `config`.
    CLI::App& family(std::string_view name, const char* group) {
        CLI::App*& made = families_[std::string(name)];
        if (!made) {
            made = app_.add_subcommand(std::string(name), summaryOf(name));
            made->group(group)->require_subcommand(0, 1);
            addCommonOptions(*made, options_);
        }
        return *made;
    }

    static bool is(const CLI::ParseError& stop, CLI::ExitCodes code) {
        return stop.get_exit_code() == static_cast<int>(code);
    }

    // Help and version are asked for and go to stdout; everything else is wrong usage.
    Outcome end(const CLI::ParseError& stop, Output& output) {
        if (!is(stop, CLI::ExitCodes::Success))
            return wrongUsage(stop);
        std::ostringstream text;
        app_.exit(stop, text, text);
        std::string lines = text.str();
        lines.erase(lines.find_last_not_of('\n') + 1);
        output.line(lines);
        return {};
    }

    Failure wrongUsage(const CLI::ParseError& stop) {
        const std::string command = parsedCommand();
        const bool unknown = command.empty() && is(stop, CLI::ExitCodes::ExtrasError);
        const std::string message = unknown ? "unknown command or option" + rest() : stop.what();
        return {ExitCode::Usage, message, fmt::format("`zeltag{} --help` shows how", command), ""};
    }

    // " config set", or nothing.
    std::string parsedCommand() const {
        std::string words;
        for (auto parsed = app_.get_subcommands(); !parsed.empty();
             parsed = parsed.front()->get_subcommands())
            words += " " + parsed.front()->get_name();
        return words;
    }

    // What the parser could make no sense of.
    std::string rest() const {
        std::string words;
        for (const std::string& word : app_.remaining())
            words += " " + word;
        return words;
    }

    Failure noCommand() const {
        return {ExitCode::Usage, "no command given",
                fmt::format("`zeltag{} --help` lists them", parsedCommand()), ""};
    }

    Options options_;
    CLI::App app_;
    std::map<std::string, CLI::App*> families_;
    std::vector<std::unique_ptr<Command>> commands_ = allCommands();
    Command* chosen_ = nullptr;
};

// Also answers for a command line that can't be parsed.
bool asksForJson(int argc, const char* const* argv) {
    return std::any_of(argv, argv + argc,
                       [](const char* word) { return std::string_view(word) == "--json"; });
}

} // namespace

ExitCode runProgram(int argc, const char* const* argv) {
    Output output(stdout);
    Program program;
    Outcome outcome = program.run(argc, argv, output);
    if (!outcome && output.error() != 0)
        outcome = cannotWrite(output.error());
    if (!outcome)
        return ExitCode::Done;
    report(*outcome, asksForJson(argc, argv), output);
    return outcome->exit;
}

} // namespace zel::cli
