// SPDX-License-Identifier: MIT
// `zeltag config set`: changes settings of a reader, all of them or none.
#include "cli/change.h"
#include "cli/command.h"
#include "cli/configuration.h"
#include "cli/connection.h"
#include "cli/device.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

bool changesSomething(const Changes& changes) {
    return std::any_of(changes.begin(), changes.end(),
                       [](const Change& change) { return change.old != change.wanted; });
}

Json jsonOf(const Change& change) {
    Json json = {{"record", recordName(change.word->record)},
                 {"name", change.word->name},
                 {"old", change.old},
                 {"new", change.wanted}};
    if (change.kept)
        json["kept"] = *change.kept;
    return json;
}

class ConfigSetCommand : public Command {
public:
    CommandText text() const override {
        return {"config set", "Settings", "Change settings",
                "zeltag config set iIDHoldTO=2000 bBeepID=1 --dry-run --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("NAME=VALUE", assignments_, "The settings and their new values")
            ->option_text("...")
            ->required();
        app.add_flag("--dry-run", dryRun_, "Show what would change and write nothing");
        addConfigurationOption(app, configuration_);
    }

    Outcome run(const Options& options, Output& output) override {
        auto parsed = parseChanges(assignments_);
        if (const auto* const failure = std::get_if<Failure>(&parsed))
            return *failure;
        auto& changes = std::get<Changes>(parsed);
        const Connection connection(options, Need::Change);
        if (connection.failure())
            return connection.failure();
        if (auto failure = apply(changes))
            return failure;
        options.json ? printJson(changes, output) : print(changes, output);
        return {};
    }

private:
    // A value is refused before the first one is sent.
    Outcome apply(Changes& changes) const {
        if (auto failure = set(changes))
            return failure;
        if (dryRun_ || !changesSomething(changes))
            return {};
        if (auto failure = isVolatile(changes) ? readBack() : writeAndReadBack())
            return failure;
        const ChosenConfiguration chosen(configuration_);
        fillKept(changes);
        return {};
    }

    Outcome set(Changes& changes) const {
        const ChosenConfiguration chosen(configuration_);
        if (chosen.failure())
            return chosen.failure();
        if (auto failure = prepare(changes))
            return failure;
        if (!dryRun_)
            actNow(changes);
        return {};
    }

    void print(const Changes& changes, Output& output) const {
        for (const Change& change : changes)
            output.line(changeLine(change));
        if (dryRun_)
            output.line("nothing was written: --dry-run");
        else if (!changesSomething(changes))
            output.line("nothing was written: no value is new");
    }

    void printJson(const Changes& changes, Output& output) const {
        Json list = Json::array();
        for (const Change& change : changes)
            list.push_back(jsonOf(change));
        output.object(Json{{"device", toJson(activeDevice())},
                           {"config", configuration_.value_or(GetActConfig())},
                           {"written", !dryRun_ && changesSomething(changes)},
                           {"changes", list}});
    }

    std::vector<std::string> assignments_;
    std::optional<int> configuration_;
    bool dryRun_ = false;
};

} // namespace

std::unique_ptr<Command> command::config_set() { return std::make_unique<ConfigSetCommand>(); }

} // namespace zel::cli
