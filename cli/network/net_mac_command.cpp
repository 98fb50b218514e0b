// SPDX-License-Identifier: MIT
// `zeltag net mac`: the MAC address of a network bridge.
#include "cli/command/command.h"
#include "cli/network/bridge.h"
#include "cli/network/bridge_mac.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

Failure noAnswer(const std::string& host) {
    return {ExitCode::NothingCame, fmt::format("no bridge at {} tells its MAC address", host),
            "check the address and the bridge's power; `zeltag net find` looks for bridges", ""};
}

class NetMacCommand : public Command {
public:
    CommandText text() const override {
        return {"net mac", "Network", "Ask a network bridge for its MAC address",
                "zeltag net mac 10.0.0.17"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("HOST", host_, "The bridge's address or name")->option_text(" ")->required();
    }

    Outcome run(const Options& options, Output& output) override {
        const auto found = addressOf(host_);
        if (const auto* const failure = std::get_if<Failure>(&found))
            return *failure;
        const Ipv4& address = std::get<Ipv4>(found);
        const auto mac = macOf(address);
        if (!mac)
            return noAnswer(host_);
        if (options.json)
            output.object(Json{{"address", asText(address)}, {"mac", asText(*mac)}});
        else
            output.line(asText(*mac));
        return {};
    }

private:
    std::string host_;
};

} // namespace

std::unique_ptr<Command> command::net_mac() { return std::make_unique<NetMacCommand>(); }

} // namespace zel::cli
