// SPDX-License-Identifier: MIT
// zelsim bridge: a reader behind a network bridge, for who develops against one.
#include "sim/program/bridge_port.h"
#include "sim/program/own_world.h"
#include "sim/program/report.h"
#include "sim/server/server.h"

#include <climits>
#include <csignal>

namespace zel::sim {

namespace {

constexpr int kEndSignals[] = {SIGINT, SIGTERM};

int serve(World& world, const Arguments& arguments) {
    BridgePlace* const bridge = world.demandBridge();
    if (!bridge)
        return fail({Exit::Usage, arguments.scenario + " has no reader that can be behind a bridge",
                     "let a device be at = \"bridge\""},
                    arguments.json);
    if (const auto trouble = openBridge(*bridge, arguments))
        return fail(*trouble, arguments.json);
    if (arguments.fault)
        world.failBridge({arguments.fault->kind, INT_MAX});
    const Signals signals(kEndSignals);
    const std::string line =
        arguments.json ? toLine({{"listening", bridgeObject(*bridge)}}) : bridgeLine(*bridge);
    if (const int exit = print(line, arguments.json))
        return exit;
    world.start();
    Server(world, signals).serve();
    return 0;
}

} // namespace

int bridgeCommand(const Arguments& arguments) {
    const auto world = makeWorld(arguments.scenario, true);
    if (const auto* const trouble = std::get_if<Trouble>(&world))
        return fail(*trouble, arguments.json);
    return serve(*std::get<std::unique_ptr<World>>(world), arguments);
}

} // namespace zel::sim
