// SPDX-License-Identifier: MIT
// Opens the ports of a bridge.
#include "sim/program/bridge_port.h"

#include "sim/bridge/address_text.h"
#include "sim/program/report.h"

#include <cerrno>
#include <cstring>

namespace zel::sim {

namespace {

std::string failedPort(BridgePlace& bridge) {
    return "port " + std::to_string(bridge.bridge().failedPort()) + " of " +
           toText(bridge.options().address);
}

// The options by which a command chooses the port.
struct Options {
    const char* port;
    const char* address;
    const char* noDiscovery;
};

Options optionsOf(const Arguments& arguments) {
    if (arguments.command == runCommand)
        return {"--bridge", "--bridge", "end what holds the port"};
    return {"--port", "--listen",
            "end what holds the port, or leave discovery out with --no-discovery"};
}

Trouble noPort(BridgePlace& bridge, int error, const Arguments& arguments) {
    const std::string message = failedPort(bridge) + ": " + std::strerror(error);
    const auto [port, address, noDiscovery] = optionsOf(arguments);
    const std::string with = std::string(" with ") + port;
    switch (error) {
    case EADDRINUSE:
        return {Exit::Failed, message, "choose another one" + with + ", or " + port + " 0 for any"};
    case EADDRNOTAVAIL:
        return {Exit::Failed, message,
                std::string("give an address of this machine with ") + address};
    case EACCES:
        return {Exit::NoPermission, message, "choose one above 1023" + with};
    default:
        return {Exit::Failed, message, "choose another one" + with};
    }
}

std::string commandToTry(BridgePlace& bridge) {
    return "zeltag list --tcp " + toText(bridge.options().address) + ":" +
           std::to_string(bridge.bridge().port());
}

} // namespace

Outcome openBridge(BridgePlace& bridge, const Arguments& arguments) {
    if (bridge.start(arguments.bridge))
        return {};
    int error = errno;
    if (!bridge.bridge().failedAtDiscovery())
        return noPort(bridge, error, arguments);
    warn({Exit::Failed,
          "UDP " + failedPort(bridge) + ": " + std::strerror(error) + ": discovery isn't served",
          optionsOf(arguments).noDiscovery},
         arguments.json);
    BridgeOptions without = arguments.bridge;
    without.servesDiscovery = without.servesMacQuery = false;
    if (bridge.start(without))
        return {};
    error = errno;
    return noPort(bridge, error, arguments);
}

std::string bridgeLine(BridgePlace& bridge) {
    return "listening on " + toText(bridge.options().address) + " port " +
           std::to_string(bridge.bridge().port()) +
           (bridge.options().servesDiscovery ? ", found by discovery" : ", without discovery") +
           "; try: " + commandToTry(bridge);
}

Json bridgeObject(BridgePlace& bridge) {
    return {{"address", toText(bridge.options().address)},
            {"port", bridge.bridge().port()},
            {"mac", toText(bridge.options().mac)},
            {"discovery", bridge.options().servesDiscovery},
            {"try", commandToTry(bridge)}};
}

} // namespace zel::sim
