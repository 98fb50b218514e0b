// SPDX-License-Identifier: MIT
// From the command line to a command, and from its outcome to an exit code.
#include "cli/main/program.h"

#include "cli/main/parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

using Words = Parser::Words;

Failure cannotWrite(int error) {
    return {ExitCode::CannotWrite,
            fmt::format("the results can't be written: {}", std::strerror(error)),
            "check where stdout goes", ""};
}

void report(const Failure& failure, bool json, Output& output) {
    if (failure.message.empty())
        return;
    warnOfEnd(asLine(failure));
    if (json)
        output.line(asJson(failure));
}

// Also answers for a command line that can't be parsed.
bool asksForJson(Words words) {
    return std::any_of(words.begin(), words.end(),
                       [](const char* word) { return std::string_view(word) == "--json"; });
}

class Program {
public:
    explicit Program(Words words, const Options& given = {})
        : words_(words), parser_(words, given) {}

    Outcome run(Output& output) {
        asksForJson_ = asksForJson(words_); // the parser stops at --version
        try {
            parser_.app().parse(static_cast<int>(words_.size()), words_.data());
        } catch (const CLI::ParseError& stop) {
            return end(stop, output);
        }
        const Options& options = parser_.options();
        demandProgress(options.progress);
        if (auto failure = contradictionIn(options))
            return failure;
        Command* const command = parser_.chosen();
        return command ? command->run(options, output) : noCommand();
    }

private:
    static bool is(const CLI::ParseError& stop, CLI::ExitCodes code) {
        return stop.get_exit_code() == static_cast<int>(code);
    }

    // Help and version are asked for and go to stdout; everything else is wrong usage.
    Outcome end(const CLI::ParseError& stop, Output& output) {
        if (!is(stop, CLI::ExitCodes::Success))
            return wrongUsage(stop);
        if (stop.get_name() == "CallForVersion" && asksForJson_)
            return tellVersion(output);
        std::ostringstream text;
        parser_.app().exit(stop, text, text);
        std::string lines = text.str();
        lines.erase(lines.find_last_not_of('\n') + 1);
        output.line(lines);
        return {};
    }

    static Outcome tellVersion(Output& output) {
        output.object(Json{{"version", libraryVersion()}});
        return {};
    }

    Failure wrongUsage(const CLI::ParseError& stop) {
        const std::string command = parsedCommand();
        const std::string message =
            is(stop, CLI::ExitCodes::ExtrasError)
                ? std::string(awaitsCommand() ? "unknown command or option"
                                              : "unknown argument or option") +
                      rest()
                : stop.what();
        return {ExitCode::Usage, message, fmt::format("`zeltag{} --help` shows how", command), ""};
    }

    // " config set", or nothing.
    std::string parsedCommand() {
        std::string words;
        for (auto parsed = parser_.app().get_subcommands(); !parsed.empty();
             parsed = parsed.front()->get_subcommands())
            words += " " + parsed.front()->get_name();
        return words;
    }

    // Whether the last word understood has commands behind it.
    bool awaitsCommand() {
        const CLI::App* last = &parser_.app();
        while (!last->get_subcommands().empty())
            last = last->get_subcommands().front();
        return !last->get_subcommands([](const CLI::App*) { return true; }).empty();
    }

    // What the parser could make no sense of.
    std::string rest() {
        std::string words;
        for (const std::string& word : parser_.app().remaining(true))
            words += " " + word;
        return words;
    }

    Failure noCommand() {
        return {ExitCode::Usage, "no command given",
                fmt::format("`zeltag{} --help` lists them", parsedCommand()), ""};
    }

    Words words_;
    Parser parser_;
    bool asksForJson_ = false;
};

Outcome runGuarded(Program& program, Output& output) {
    try {
        return program.run(output);
    } catch (const std::exception& error) {
        return Failure{ExitCode::Failed,
                       std::string("stopped by an internal failure: ") + error.what(), "", ""};
    }
}

} // namespace

Outcome runWords(const std::vector<std::string>& words, const Options& options, Output& output) {
    std::vector<const char*> argv = {"zeltag"};
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    return Program(argv, options).run(output);
}

ExitCode runProgram(int argc, const char* const* argv) {
    const Words words(argv, static_cast<std::size_t>(argc));
    Output output(stdout);
    Program program(words);
    Outcome outcome = runGuarded(program, output);
    if (!outcome && output.error() != 0)
        outcome = cannotWrite(output.error());
    if (!outcome)
        return ExitCode::Done;
    report(*outcome, asksForJson(words), output);
    return outcome->exit;
}

} // namespace zel::cli
