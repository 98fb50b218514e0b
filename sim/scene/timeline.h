// SPDX-License-Identifier: MIT
// What is to happen when, on the simulated devices' clock.
#pragma once

#include "sim/scene/action.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zel::sim {

class Timeline {
public:
    struct Event {
        std::uint64_t at; // microseconds since the start
        std::size_t device;
        Action action;
    };

    // The events in the order of their times; `turn` microseconds from one start to the next, 0:
    // the events happen once. The time starts now.
    void start(std::vector<Event> events, std::uint64_t turn);

    // Something that happens once, so many microseconds from now on; and what isn't to happen then
    // any more, of a device.
    void add(std::uint64_t in, std::size_t device, Action action);
    void forget(std::size_t device);

    // The next event that is due; nothing when none is. An event that is told is over.
    std::optional<Event> takeDue();

    // Microseconds until one is due; nothing when none will be.
    std::optional<std::uint64_t> untilNext() const;

private:
    std::uint64_t now() const;
    std::uint64_t nextOfScript() const;

    std::vector<Event> script_;
    std::vector<Event> added_; // times since the start, too
    std::uint64_t turn_ = 0;
    std::uint64_t started_ = 0;
    std::uint64_t turns_ = 0; // that are over
    std::size_t next_ = 0;    // of the script
};

} // namespace zel::sim
