// SPDX-License-Identifier: MIT
// Two lists: the script, which may start over, and what was added to it while it runs.
#include "sim/scene/timeline.h"

#include "sim/wire/clock.h"

#include <algorithm>

namespace zel::sim {

void Timeline::start(std::vector<Event> events, std::uint64_t turn) {
    script_ = std::move(events);
    std::ranges::stable_sort(script_, {}, &Event::at);
    turn_ = turn;
    turns_ = 0;
    next_ = 0;
    added_.clear();
    started_ = microseconds();
}

void Timeline::add(std::uint64_t in, std::size_t device, Action action) {
    added_.push_back({now() + in, device, std::move(action)});
    std::ranges::stable_sort(added_, {}, &Event::at);
}

void Timeline::forget(std::size_t device) {
    std::erase_if(added_, [device](const Event& event) { return event.device == device; });
}

// A clock that was set back lets the time stand still.
std::uint64_t Timeline::now() const {
    const std::uint64_t time = microseconds();
    return time > started_ ? time - started_ : 0;
}

std::uint64_t Timeline::nextOfScript() const {
    return next_ < script_.size() ? turns_ * turn_ + script_[next_].at : UINT64_MAX;
}

std::optional<Timeline::Event> Timeline::takeDue() {
    const std::uint64_t added = added_.empty() ? UINT64_MAX : added_.front().at;
    const std::uint64_t scripted = nextOfScript();
    if (std::min(added, scripted) > now())
        return {};
    if (added <= scripted) {
        const Event event = added_.front();
        added_.erase(added_.begin());
        return event;
    }
    const Event event = script_[next_++];
    if (next_ == script_.size() && turn_ > 0) {
        next_ = 0;
        ++turns_;
    }
    return event;
}

std::optional<std::uint64_t> Timeline::untilNext() const {
    const std::uint64_t added = added_.empty() ? UINT64_MAX : added_.front().at;
    const std::uint64_t next = std::min(added, nextOfScript());
    if (next == UINT64_MAX)
        return {};
    return next > now() ? next - now() : 0;
}

} // namespace zel::sim
