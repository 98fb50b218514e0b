// SPDX-License-Identifier: MIT
// Reads the scenario of a command line.
#include "sim/program/own_world.h"

namespace zel::sim {

std::variant<std::unique_ptr<World>, Trouble> makeWorld(const std::string& scenario,
                                                        bool isBehindBridge) {
    if (scenario.empty())
        return World::demo(isBehindBridge);
    const auto read = readScenario(scenario);
    if (const auto* const trouble = std::get_if<Trouble>(&read))
        return *trouble;
    return std::make_unique<World>(std::get<Scenario>(read));
}

} // namespace zel::sim
