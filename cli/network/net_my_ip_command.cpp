// SPDX-License-Identifier: MIT
// `zeltag net my-ip`: this machine's address as the library sees it.
#include "cli/command/address.h"
#include "cli/command/command.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr unsigned kBitsPerByte = 8;

// The first byte of the address is the lowest of the number.
Ipv4 addressOf(std::int64_t number) {
    Ipv4 address;
    for (unsigned byte = 0; byte < address.size(); ++byte)
        address[byte] = static_cast<std::uint8_t>(number >> kBitsPerByte * byte);
    return address;
}

Failure noAddress() {
    return {ExitCode::Failed, "this machine has no IPv4 address that the library looks at",
            "it looks at the interfaces eth0, wlan0, eth1, wlan1, eth2 and wlan2 alone; "
            "`ip address` shows all of them",
            ""};
}

class NetMyIpCommand : public Command {
public:
    CommandText text() const override {
        return {"net my-ip", "Network", "Print this machine's IPv4 address", "zeltag net my-ip"};
    }

    Outcome run(const Options& options, Output& output) override {
        const std::int64_t number = GetMyIpAddress();
        if (number == 0)
            return noAddress();
        const std::string address = asText(addressOf(number));
        if (options.json)
            output.object(Json{{"address", address}});
        else
            output.line(address);
        return {};
    }
};

} // namespace

std::unique_ptr<Command> command::net_my_ip() { return std::make_unique<NetMyIpCommand>(); }

} // namespace zel::cli
