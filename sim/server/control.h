// SPDX-License-Identifier: MIT
// The commands of a control connection: one JSON object a line in, one out.
#pragma once

#include "sim/server/json.h"

#include <string>
#include <utility>

namespace zel::sim {

class World;

class Control {
public:
    explicit Control(World& world) : world_(world) {}

    // What a line asks for is done; the answer tells what was done, or an error.
    Json answer(const std::string& line);

    // Whether it was told to stop since the last call.
    bool takeStop() { return std::exchange(isStopWanted_, false); }

private:
    Json run(const Json& request);
    Json act(const Json& request);

    World& world_;
    bool isStopWanted_ = false;
};

} // namespace zel::sim
