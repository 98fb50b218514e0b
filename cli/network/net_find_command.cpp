// SPDX-License-Identifier: MIT
// `zeltag net find`: looks for network bridges, one host after the other.
#include "cli/command/address.h"
#include "cli/command/command.h"
#include "cli/command/interrupt.h"
#include "cli/network/bridge_mac.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr int kSecondsAHost = 2; // that doesn't answer

struct Bridge {
    Ipv4 address;
    std::optional<Mac> mac;
};

// Which number the call tells depends on the probe that was answered; one host was asked.
bool isBridge(const Ipv4& host) {
    return FindXport(host[0], host[1], host[2], host[3], host[3]) != 0;
}

Failure noBridge(const std::string& range) {
    return {ExitCode::NoDevice, "no bridge answers at " + range,
            "check that it is on and on this network; one that is set not to be found can be used "
            "all the same: `zeltag list --tcp ADDRESS`",
            ""};
}

Json toJson(const std::vector<Bridge>& bridges) {
    Json list = Json::array();
    for (const Bridge& bridge : bridges)
        list.push_back({{"address", asText(bridge.address)},
                        {"mac", bridge.mac ? Json(asText(*bridge.mac)) : Json()}});
    return list;
}

class NetFindCommand : public Command {
public:
    CommandText text() const override {
        return {"net find", "Network", "Find network bridges, two seconds a host",
                "zeltag net find 10.0.0.1-20"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("HOSTS", hosts_, "The hosts, as A.B.C.FIRST-LAST or A.B.C.D")
            ->option_text(" ")
            ->required()
            ->check(CLI::Validator(checkHosts, ""));
    }

    Outcome run(const Options& options, Output& output) override {
        catchInterrupts();
        const auto hosts = hostsIn(hosts_);
        const auto bridges = hosts ? find(*hosts, options, output) : std::vector<Bridge>();
        const Outcome outcome = interrupted()     ? Outcome(interruption())
                                : bridges.empty() ? Outcome(noBridge(hosts_))
                                                  : Outcome();
        return options.json ? tellJson(bridges, outcome, output) : outcome;
    }

private:
    static std::vector<Bridge> find(const HostRange& hosts, const Options& options,
                                    Output& output) {
        std::vector<Bridge> bridges;
        for (int index = 0; index < hosts.count() && !interrupted() && output.isOpen(); ++index) {
            const Ipv4 host = hosts.at(index);
            tellProgress(host, index, hosts.count());
            if (!isBridge(host))
                continue;
            bridges.push_back({host, macOf(host)});
            endProgress();
            if (!options.json)
                tell(bridges.back(), output);
        }
        endProgress();
        return bridges;
    }

    static void tellProgress(const Ipv4& host, int index, int count) {
        showProgressInPlace(fmt::format("host {}, {} of {}, about {} s left", asText(host),
                                        index + 1, count, (count - index) * kSecondsAHost));
    }

    static void tell(const Bridge& bridge, Output& output) {
        const std::string address = asText(bridge.address);
        output.line(fmt::format("{:15}  MAC {:17}  try: zeltag list --tcp {}", address,
                                bridge.mac ? asText(*bridge.mac) : "unknown", address));
    }

    // The failure is told here: one object holds all.
    static Outcome tellJson(const std::vector<Bridge>& bridges, const Outcome& outcome,
                            Output& output) {
        Json object = {{"bridges", toJson(bridges)}};
        const bool hasFailed = outcome && !outcome->message.empty();
        if (hasFailed) {
            warn(asLine(*outcome));
            object.update(Json::parse(asJson(*outcome)));
        }
        output.object(object);
        return hasFailed ? alreadyTold(outcome->exit) : outcome;
    }

    std::string hosts_;
};

} // namespace

std::unique_ptr<Command> command::net_find() { return std::make_unique<NetFindCommand>(); }

} // namespace zel::cli
