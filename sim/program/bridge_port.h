// SPDX-License-Identifier: MIT
// The ports of a bridge, and what is told when they can't be had.
#pragma once

#include "sim/program/arguments.h"
#include "sim/scene/place.h"

namespace zel::sim {

// Opens them; without discovery, and with a warning, where only its ports are taken.
Outcome openBridge(BridgePlace& bridge, const Arguments& arguments);

// "listening on ADDRESS port N, found by discovery; try: COMMAND", and the same as JSON.
std::string bridgeLine(BridgePlace& bridge);
Json bridgeObject(BridgePlace& bridge);

} // namespace zel::sim
