// SPDX-License-Identifier: MIT
// A preloaded application's connection to the simulator's bus.
#pragma once

#include "sim/link/descriptor.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zel::sim {

class FrameWriter;

// The simulator to connect to: that of the environment, or one of the process's own that it starts
// for the scenario of the environment. Empty when that fails.
std::string simulatorSocket();

// Connects with the first exchange, and anew where the connection broke or the process forked.
class Exchange {
public:
    using Bytes = std::vector<std::uint8_t>;

    // The answer to a request; nothing where the simulator is gone.
    std::optional<Bytes> ask(FrameWriter& request);

    // Counts connections: what an earlier one opened is gone with it.
    unsigned generation() const { return generation_; }

private:
    bool connect();
    std::optional<Bytes> receive() const;

    std::mutex mutex_;
    Descriptor socket_;
    pid_t process_ = -1;
    unsigned generation_ = 0;
};

} // namespace zel::sim
