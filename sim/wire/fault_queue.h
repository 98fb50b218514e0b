// SPDX-License-Identifier: MIT
// What is to go wrong with a device's next commands.
#pragma once

#include <deque>
#include <utility>

namespace zel::sim {

// A `Fault{}` is none.
template <class Fault> class FaultQueue {
public:
    // Behind what was asked for before: `count` faulty commands after `after` good ones.
    void add(Fault fault, int count, int after) {
        entries_.push_back({std::move(fault), count, after});
    }

    void clear() { entries_.clear(); }

    // What goes wrong with the command that comes now.
    Fault next() {
        if (entries_.empty())
            return {};
        Entry& entry = entries_.front();
        if (entry.after > 0) {
            --entry.after;
            return {};
        }
        const Fault fault = entry.fault;
        if (--entry.count <= 0)
            entries_.pop_front();
        return fault;
    }

private:
    struct Entry {
        Fault fault;
        int count;
        int after;
    };

    std::deque<Entry> entries_;
};

} // namespace zel::sim
