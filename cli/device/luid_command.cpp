// SPDX-License-Identifier: MIT
// `zeltag luid`: gives a reader its logical unit ID.
#include "cli/command/command.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

int activeLuid() { return static_cast<std::uint16_t>(GetLUID()); }

class LuidCommand : public Command {
public:
    CommandText text() const override {
        return {"luid", "Configure", "Give a reader its logical unit ID", "zeltag luid 12 --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("LUID", luid_, "The number, 0 to 65535")
            ->option_text(" ")
            ->required()
            ->check(CLI::Range(0, UINT16_MAX));
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options, Need::Change);
        if (connection.failure())
            return connection.failure();
        const int old = activeLuid();
        SetLUID(static_cast<std::uint16_t>(luid_));
        if (auto failure = writeAndReadBack())
            return failure;
        return tell(old, options, output);
    }

private:
    Outcome tell(int old, const Options& options, Output& output) const {
        const Device device = activeDevice();
        if (activeLuid() != luid_)
            return Failure{ExitCode::Failed,
                           fmt::format("{} kept the LUID {}", device.name, activeLuid()),
                           "try again", device.name};
        if (options.json)
            output.object(Json{{"device", toJson(device)}, {"old", old}, {"new", luid_}});
        else
            output.line(fmt::format("LUID of {}  {} -> {}", device.name, old, luid_));
        return {};
    }

    int luid_ = 0;
};

} // namespace

std::unique_ptr<Command> command::luid() { return std::make_unique<LuidCommand>(); }

} // namespace zel::cli
