// SPDX-License-Identifier: MIT
// `zeltag config get`: one setting of a reader.
#include "cli/command/command.h"
#include "cli/config/stripe_change.h"
#include "cli/config/word_search.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

class ConfigGetCommand : public Command {
public:
    CommandText text() const override {
        return {"config get", "Configure", "Print one setting",
                "zeltag config get iIDHoldTO --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("NAME", name_, "The setting, such as iIDHoldTO or LEDCtrl.bVolatile")
            ->option_text(" ")
            ->required();
        addConfigurationOption(app, configuration_);
    }

    Outcome run(const Options& options, Output& output) override {
        const StripeSetting* const setting = findStripeSetting(name_);
        return setting ? runStripe(*setting, options, output) : runTag(options, output);
    }

private:
    Outcome runTag(const Options& options, Output& output) const {
        const auto found = findWord(name_);
        if (const auto* const failure = std::get_if<Failure>(&found))
            return *failure;
        const Connection connection(options, Need::Settings);
        if (connection.failure())
            return connection.failure();
        if (!isTag())
            return wrongKind(name_);
        const ChosenConfiguration chosen(configuration_);
        if (chosen.failure())
            return chosen.failure();
        return print(*std::get<const Word*>(found), options, output);
    }

    Outcome runStripe(const StripeSetting& setting, const Options& options, Output& output) const {
        const Connection connection(options, Need::Settings);
        if (connection.failure())
            return connection.failure();
        if (!isStripe())
            return wrongKind(setting.name);
        const ChosenConfiguration chosen(configuration_);
        if (chosen.failure())
            return chosen.failure();
        const int value = setting.get(setting);
        if (!options.json)
            output.line(std::to_string(value));
        else
            output.object(Json{{"device", toJson(activeDevice())},
                               {"config", GetActConfig()},
                               {"name", setting.name},
                               {"value", value}});
        return {};
    }

    // The bare number: made for programs.
    static Outcome print(const Word& word, const Options& options, Output& output) {
        Values values = {};
        if (!readRecord(word.record, values))
            return deviceFailed("showing", "");
        const int value = values[word.index];
        if (!options.json)
            output.line(std::to_string(value));
        else
            output.object(Json{{"device", toJson(activeDevice())},
                               {"config", GetActConfig()},
                               {"record", recordName(word.record)},
                               {"name", word.name},
                               {"value", value}});
        return {};
    }

    std::string name_;
    std::optional<int> configuration_;
};

} // namespace

std::unique_ptr<Command> command::config_get() { return std::make_unique<ConfigGetCommand>(); }

} // namespace zel::cli
