// SPDX-License-Identifier: MIT
// `zeltag ping`: whether a reader answers, and how fast.
#include "cli/command/command.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr std::uint64_t kLongestPing = 65535; // ms; an absent reader is told by more

Failure noAnswer(const Device& device) {
    return {ExitCode::NothingCame, "no answer from " + device.name,
            "it may have been unplugged: check its cable, then try `zeltag list`", device.name};
}

class PingCommand : public Command {
public:
    CommandText text() const override {
        return {"ping", "Readers", "Measure how fast a reader answers", "zeltag ping --device 0"};
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        const Device device = activeDevice();
        const std::uint64_t time = Ping();
        if (time > kLongestPing)
            return noAnswer(device);
        if (options.json)
            output.object(Json{{"device", toJson(device)}, {"milliseconds", time}});
        else
            output.line(fmt::format("{} answered in {} ms", device.name, time));
        return {};
    }
};

} // namespace

std::unique_ptr<Command> command::ping() { return std::make_unique<PingCommand>(); }

} // namespace zel::cli
