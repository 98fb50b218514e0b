// SPDX-License-Identifier: MIT
// What the simulator tells programs.
#pragma once

#include "sim/scene/device_state.h"
#include "sim/scene/trouble.h"

#include <nlohmann/json.hpp>
#include <string>

namespace zel::sim {

using Json = nlohmann::ordered_json;

// {"error":{"code":...,"exit":...,"message":...,"hint":...}}
Json toJson(const Trouble& trouble);

Json toJson(const DeviceState& state);

// One line; a byte that isn't UTF-8 becomes the replacement character.
std::string toLine(const Json& object);

} // namespace zel::sim
