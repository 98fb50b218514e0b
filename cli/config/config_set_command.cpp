// SPDX-License-Identifier: MIT
// `zeltag config set`: changes settings of a reader, all of them or none.
#include "cli/command/command.h"
#include "cli/config/change.h"
#include "cli/config/stripe_change.h"
#include "cli/config/stripe_file.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
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

bool changesSomething(const Differences& changes) {
    return std::any_of(changes.begin(), changes.end(),
                       [](const Difference& change) { return change.before != change.after; });
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

Json listOf(const Changes& changes) {
    Json list = Json::array();
    for (const Change& change : changes)
        list.push_back(jsonOf(change));
    return list;
}

class ConfigSetCommand : public Command {
public:
    CommandText text() const override {
        return {"config set", "Configure", "Change settings",
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
        return meansStripe(assignments_) ? runStripe(options, output) : runTag(options, output);
    }

private:
    Outcome runTag(const Options& options, Output& output) {
        auto parsed = parseChanges(assignments_);
        if (const auto* const failure = std::get_if<Failure>(&parsed))
            return *failure;
        auto& changes = std::get<Changes>(parsed);
        const Connection connection(options, Need::Change);
        if (connection.failure())
            return connection.failure();
        if (!isTag())
            return wrongKind(changes.front().word->name);
        if (auto failure = apply(changes))
            return failure;
        options.json ? printJson(listOf(changes), isWritten(changes), output)
                     : print(changes, output);
        return {};
    }

    Outcome runStripe(const Options& options, Output& output) {
        auto parsed = parseStripeChanges(assignments_);
        if (const auto* const failure = std::get_if<Failure>(&parsed))
            return *failure;
        auto& changes = std::get<Differences>(parsed);
        const Connection connection(options, Need::Change);
        if (connection.failure())
            return connection.failure();
        if (!isStripe())
            return wrongKind(allSettings()[changes.front().setting].name);
        if (auto failure = applyStripe(changes))
            return failure;
        options.json ? printJson(toJson(changes), isWritten(changes), output)
                     : print(changes, output);
        return {};
    }

    Outcome applyStripe(Differences& changes) const {
        const ChosenConfiguration chosen(configuration_);
        if (chosen.failure())
            return chosen.failure();
        prepareStripe(changes);
        if (!isWritten(changes))
            return {};
        if (auto failure = writeAndReadBack())
            return failure;
        fillKept(changes, {activeStripeValues()});
        return {};
    }

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

    template <class AllChanges> bool isWritten(const AllChanges& changes) const {
        return !dryRun_ && changesSomething(changes);
    }

    void print(const Changes& changes, Output& output) const {
        for (const Change& change : changes)
            output.line(changeLine(change));
        printEnd(isWritten(changes), output);
    }

    void print(const Differences& changes, Output& output) const {
        cli::print(changes, false, output);
        printEnd(isWritten(changes), output);
    }

    void printEnd(bool isWritten, Output& output) const {
        if (dryRun_)
            output.line("nothing was written: --dry-run");
        else if (!isWritten)
            output.line("nothing was written: no value is new");
    }

    void printJson(const Json& changes, bool isWritten, Output& output) const {
        output.object(Json{{"device", toJson(activeDevice())},
                           {"config", configuration_.value_or(GetActConfig())},
                           {"written", isWritten},
                           {"changes", changes}});
    }

    std::vector<std::string> assignments_;
    std::optional<int> configuration_;
    bool dryRun_ = false;
};

} // namespace

std::unique_ptr<Command> command::config_set() { return std::make_unique<ConfigSetCommand>(); }

} // namespace zel::cli
