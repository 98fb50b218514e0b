// SPDX-License-Identifier: MIT
// The library's devices, open for as long as this object lives.
#pragma once

#include "cli/failure.h"
#include "cli/options.h"

namespace zel::cli {

class Connection {
public:
    // Connects, and makes the chosen device the active one.
    explicit Connection(const Options& options);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Why there is no device to work on; nothing when there is one.
    const Outcome& failure() const { return failure_; }

private:
    Outcome failure_;
};

} // namespace zel::cli
