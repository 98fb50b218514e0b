// SPDX-License-Identifier: MIT
// `zeltag config diff`: holds a template file against a reader, or against another file.
#include "cli/command/command.h"
#include "cli/config/stripe_file.h"
#include "cli/config/template_file.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/file/input_file.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

class ConfigDiffCommand : public Command {
public:
    CommandText text() const override {
        return {"config diff", "Configure", "Compare a file with a reader or another file",
                "zeltag config diff settings.txt --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", path_, "A file of `zeltag config export`")
            ->option_text(" ")
            ->required();
        app.add_option("FILE2", other_, "A second one; the reader when left out")->option_text(" ");
    }

    // Equal settings end with 0 and different ones with 1, as diff does.
    Outcome run(const Options& options, Output& output) override {
        Configurations first;
        if (auto failure = load(path_, first))
            return failure;
        return other_.empty() ? againstReader(first, options, output)
                              : againstFile(first, options, output);
    }

private:
    static Outcome load(const std::string& name, Configurations& configurations) {
        if (auto failure = whyUnreadable(name))
            return failure;
        auto told = configurationsIn(name);
        if (const auto* const failure = std::get_if<Failure>(&told))
            return *failure;
        configurations = std::move(std::get<Configurations>(told));
        return {};
    }

    // A file needn't tell all that a reader holds.
    Outcome againstReader(const Configurations& first, const Options& options,
                          Output& output) const {
        const Connection connection(options, Need::Settings);
        if (connection.failure())
            return connection.failure();
        if (auto failure = whyUnfit(path_))
            return failure;
        const Configurations held = activeConfigurations();
        const bool fits = first.size() <= held.size();
        return tell({activeDevice().name, compare(first, held, Untold::Passes), first.size(),
                     fits ? first.size() : held.size()},
                    options, output);
    }

    Outcome againstFile(const Configurations& first, const Options& options, Output& output) const {
        Configurations second;
        if (auto failure = load(other_, second))
            return failure;
        if (isStripeFile(path_) != isStripeFile(other_))
            return Failure{
                ExitCode::DamagedFile,
                fmt::format("{} and {} are of different kinds of readers", path_, other_),
                "compare files of one kind", ""};
        return tell({other_, compare(first, second, Untold::Differs), first.size(), second.size()},
                    options, output);
    }

    struct Comparison {
        std::string with;
        Differences differences;
        std::size_t before; // configurations
        std::size_t after;

        bool isEqual() const { return differences.empty() && before == after; }
    };

    Outcome tell(const Comparison& comparison, const Options& options, Output& output) const {
        if (options.json)
            output.object(Json{{"path", path_},
                               {"with", comparison.with},
                               {"equal", comparison.isEqual()},
                               {"configurations", {comparison.before, comparison.after}},
                               {"differences", toJson(comparison.differences)}});
        else if (!comparison.isEqual())
            print(comparison, output);
        return comparison.isEqual() ? Outcome() : alreadyTold(ExitCode::Failed);
    }

    void print(const Comparison& comparison, Output& output) const {
        output.line(fmt::format("{} -> {}", path_, comparison.with));
        if (comparison.before != comparison.after)
            output.line(
                fmt::format("configurations  {} -> {}", comparison.before, comparison.after));
        const bool several = comparison.before > 1 || comparison.after > 1;
        cli::print(comparison.differences, several, output);
    }

    std::string path_;
    std::string other_;
};

} // namespace

std::unique_ptr<Command> command::config_diff() { return std::make_unique<ConfigDiffCommand>(); }

} // namespace zel::cli
