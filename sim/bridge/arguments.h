// SPDX-License-Identifier: MIT
// What zelsim-bridge is asked for on its command line.
#pragma once

#include "sim/bridge/bridge.h"
#include "sim/tag/stream.h"

#include <optional>
#include <string>

namespace zel::sim {

struct FaultKind {
    const char* name;
    void (*apply)(Bridge& bridge, TagStream& reader);
};

struct BridgeArguments {
    BridgeOptions bridge = {};
    const FaultKind* fault = nullptr; // null: nothing goes wrong
    bool json = false;

    // The program ends at once with this exit code and text: help, or what is wrong.
    struct End {
        int exit;
        std::string text;
    };

    std::optional<End> parse(int argc, const char* const* argv);
};

std::string toText(const Ipv4Address& address);
std::string toText(const MacAddress& mac);

} // namespace zel::sim
