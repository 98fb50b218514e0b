// SPDX-License-Identifier: MIT
// One queue: an event of the script that is taken comes back for the next turn.
#include "sim/scene/timeline.h"

#include "sim/wire/clock.h"

namespace zel::sim {

void Timeline::script(std::uint64_t at, std::size_t device, Action action) {
    entries_.emplace(at, Entry{device, std::move(action), true});
}

void Timeline::start(std::uint64_t turn) {
    turn_ = turn;
    started_ = microseconds();
}

void Timeline::add(std::uint64_t in, std::size_t device, Action action) {
    entries_.emplace(now() + in, Entry{device, std::move(action), false});
}

void Timeline::forget(std::size_t device) {
    std::erase_if(entries_, [device](const auto& entry) {
        return !entry.second.isScript && entry.second.device == device;
    });
}

// A clock that was set back lets the time stand still.
std::uint64_t Timeline::now() const {
    const std::uint64_t time = microseconds();
    return time > started_ ? time - started_ : 0;
}

std::optional<Timeline::Event> Timeline::takeDue() {
    if (entries_.empty() || entries_.begin()->first > now())
        return {};
    auto taken = entries_.extract(entries_.begin());
    const Event event = {taken.mapped().device, taken.mapped().action};
    if (taken.mapped().isScript && turn_ > 0) {
        taken.key() += turn_;
        entries_.insert(std::move(taken));
    }
    return event;
}

std::optional<std::uint64_t> Timeline::untilNext() const {
    if (entries_.empty())
        return {};
    const std::uint64_t next = entries_.begin()->first;
    return next > now() ? next - now() : 0;
}

} // namespace zel::sim
