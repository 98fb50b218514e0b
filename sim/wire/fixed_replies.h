// SPDX-License-Identifier: MIT
// Replies that a test puts in place of a device's own.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace zel::sim {

// A `Start` is what commands begin with: a string, or bytes.
template <class Start, class Reply> class FixedReplies {
public:
    void add(Start start, Reply reply) { rows_.emplace_back(std::move(start), std::move(reply)); }

    // The reply that was set last for a command's beginning; null: the device's own one is right.
    template <class Command> const Reply* find(const Command& command) const {
        const auto row = std::find_if(rows_.rbegin(), rows_.rend(), [&](const auto& each) {
            return each.first.size() <= command.size() &&
                   std::equal(each.first.begin(), each.first.end(), command.begin());
        });
        return row == rows_.rend() ? nullptr : &row->second;
    }

private:
    std::vector<std::pair<Start, Reply>> rows_;
};

} // namespace zel::sim
