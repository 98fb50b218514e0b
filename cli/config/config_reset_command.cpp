// SPDX-License-Identifier: MIT
// `zeltag config reset`: a reader goes back to its defaults.
#include "cli/command/command.h"
#include "cli/command/question.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

bool hasUserDefaults() { return GetCardType() != -1; }

class ConfigResetCommand : public Command {
public:
    CommandText text() const override {
        return {"config reset", "Configure", "Return to the factory's or the user's defaults",
                "zeltag config reset --factory --yes --sim"};
    }

    void addOptions(CLI::App& app) override {
        auto* const factory =
            app.add_flag("--factory", factory_, "Return to the factory's defaults (the default)");
        app.add_flag("--user", user_, "Return to the user's defaults")->excludes(factory);
        app.add_flag("--yes,-y", yes_, "Ask nothing");
    }

    Outcome run(const Options& options, Output& output) override {
        if (!yes_ && !canAsk())
            return Failure{ExitCode::Usage,
                           "a reset overwrites the settings and nobody can be asked",
                           "add --yes to do it", ""};
        const Connection connection(options, Need::Change);
        if (connection.failure())
            return connection.failure();
        if (auto failure = reset())
            return failure;
        const Device device = activeDevice();
        if (options.json)
            output.object(Json{{"device", toJson(device)}, {"defaults", whose()}});
        else
            output.line(fmt::format("{} is back at the {}'s defaults", device.name, whose()));
        return {};
    }

private:
    const char* whose() const { return user_ ? "user" : "factory"; }

    Outcome reset() const {
        const std::string name = activeDevice().name;
        if (user_ && !hasUserDefaults())
            return Failure{ExitCode::Failed, name + " has no user's defaults", "try --factory",
                           name};
        if (!yes_ && !isConfirmed(name))
            return Failure{ExitCode::Interrupted, "nothing was changed", "", name};
        showProgress("resetting " + name + ", which takes a moment");
        if (user_ ? ResetUserDflts() != 1 : ResetFactoryDflts() != 1)
            return deviceFailed("resetting", "check its cable, then look at `zeltag config show`");
        return user_ ? readBack() : Outcome();
    }

    bool isConfirmed(const std::string& name) const {
        return cli::isConfirmed(
            fmt::format("Return {} to the {}'s defaults? Its settings are lost.", name, whose()));
    }

    bool factory_ = false;
    bool user_ = false;
    bool yes_ = false;
};

} // namespace

std::unique_ptr<Command> command::config_reset() { return std::make_unique<ConfigResetCommand>(); }

} // namespace zel::cli
