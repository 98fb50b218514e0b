// SPDX-License-Identifier: MIT
// What is to happen when, on the simulated devices' clock.
#pragma once

#include "sim/scene/action.h"

#include <cstdint>
#include <map>
#include <optional>

namespace zel::sim {

class Timeline {
public:
    struct Event {
        std::size_t device;
        Action action;
    };

    // Adds an event to the script, so many microseconds behind the start.
    void script(std::uint64_t at, std::size_t device, Action action);

    // The time starts now; `turn` microseconds from one start of the script to the next, 0: it
    // happens once.
    void start(std::uint64_t turn);

    // Something that happens once, so many microseconds from now on; and what isn't to happen then
    // any more, of a device.
    void add(std::uint64_t in, std::size_t device, Action action);
    void forget(std::size_t device);

    // The next event that is due; nothing when none is. An event that is told is over.
    std::optional<Event> takeDue();

    // Microseconds until one is due; nothing when none will be.
    std::optional<std::uint64_t> untilNext() const;

private:
    struct Entry {
        std::size_t device;
        Action action;
        bool isScript; // happens again with the next turn
    };

    std::uint64_t now() const;

    std::multimap<std::uint64_t, Entry> entries_; // by microseconds since the start
    std::uint64_t turn_ = 0;
    std::uint64_t started_ = 0;
};

} // namespace zel::sim
