// SPDX-License-Identifier: MIT
// Signals as something that poll() waits for.
#pragma once

#include "sim/link/descriptor.h"

#include <optional>
#include <span>

namespace zel::sim {

// Catches signals from its making to its end; a process has one at a time.
class Signals {
public:
    explicit Signals(std::span<const int> caught);
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    int descriptor() const { return reading_.number(); }

    // The next one that came; nothing when none did.
    std::optional<int> take() const;

private:
    std::span<const int> caught_;
    Descriptor reading_;
    Descriptor writing_;
};

} // namespace zel::sim
