// SPDX-License-Identifier: MIT
// `zeltag beep`: lets a reader beep at once.
#include "cli/command/command.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr int kMostBeeps = 5;
constexpr int kMostLongBeeps = 2;

class BeepCommand : public Command {
public:
    CommandText text() const override {
        return {"beep", "Look", "Make a reader beep", "zeltag beep 2 --long --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("COUNT", count_, "The number of beeps, 1 to 5; of long ones 1 or 2")
            ->option_text(" ")
            ->check(CLI::Range(1, kMostBeeps));
        app.add_flag("--long", long_, "Beep long");
    }

    Outcome run(const Options& options, Output& output) override {
        if (long_ && count_ > kMostLongBeeps)
            return Failure{ExitCode::Usage, "a reader beeps long twice at most",
                           "give 1 or 2 with --long", ""};
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        if (BeepNow(static_cast<unsigned char>(count_), long_ ? 1 : 0) != 1)
            return deviceFailed("the beep of", "check its cable, then try `zeltag list`");
        const Device device = activeDevice();
        if (options.json)
            output.object(Json{{"device", toJson(device)}, {"beeps", count_}, {"long", long_}});
        else
            output.line(fmt::format("{} beeped: {}{}", device.name, count_, long_ ? " long" : ""));
        return {};
    }

private:
    int count_ = 1;
    bool long_ = false;
};

} // namespace

std::unique_ptr<Command> command::beep() { return std::make_unique<BeepCommand>(); }

} // namespace zel::cli
