// SPDX-License-Identifier: MIT
// The library's devices, open for as long as this object lives.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/options.h"

namespace zel::cli {

// What a command needs of the device it works on.
enum class Need {
    Presence, // goes on when a configuration can't be read, with a warning
    Choice,   // the same, and the user chose the device when there are several
    Settings, // the whole configuration must have been read
    Change,   // both: the settings and the user's choice
    Each,     // every device in turn: the command asks for the settings of each
};

// Why the active device's settings can't be worked on: it has none, or they can't be read.
Outcome checkSettings();

class Connection {
public:
    // Connects, and makes the chosen device the active one.
    explicit Connection(const Options& options, Need need = Need::Presence);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Why there is no device to work on; nothing when there is one.
    const Outcome& failure() const { return failure_; }

private:
    Outcome failure_;
};

} // namespace zel::cli
