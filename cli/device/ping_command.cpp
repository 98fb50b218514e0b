// SPDX-License-Identifier: MIT
// `zeltag ping`: whether a reader answers, and how fast.
#include "cli/command/command.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

Failure noAnswer(const Device& device) {
    return {ExitCode::NothingCame, "no answer from " + device.name, kMayBeUnplugged, device.name};
}

class PingCommand : public Command {
public:
    CommandText text() const override {
        return {"ping", "Look", "Measure how fast a reader answers", "zeltag ping --device 0"};
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        const Device device = activeDevice();
        const auto time = pingTime();
        if (!time)
            return noAnswer(device);
        if (options.json)
            output.object(Json{{"device", toJson(device)}, {"milliseconds", *time}});
        else
            output.line(fmt::format("{} answered in {} ms", device.name, *time));
        return {};
    }
};

} // namespace

std::unique_ptr<Command> command::ping() { return std::make_unique<PingCommand>(); }

} // namespace zel::cli
