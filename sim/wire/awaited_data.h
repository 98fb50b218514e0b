// SPDX-License-Identifier: MIT
// The second report of a write: its data, which follows the command with no fetch in between.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace zel::sim {

class AwaitedData {
public:
    // Whether the next report may be data; what was lost before is forgotten.
    void expect(bool isExpected) {
        isExpected_ = isExpected;
        lost_.reset();
    }

    // A host whose data was lost sends the same again, or gives up and comes with another command.
    bool isIn(std::span<const std::uint8_t> payload) const {
        return isExpected_ &&
               (!lost_ || std::equal(payload.begin(), payload.end(), lost_->begin(), lost_->end()));
    }

    // A report was lost on the way.
    void lose(std::span<const std::uint8_t> payload) {
        if (!isIn(payload) || payload.size() != kReportSize)
            return;
        std::copy(payload.begin(), payload.end(), lost_.emplace().begin());
    }

private:
    static constexpr std::size_t kReportSize = 8;

    bool isExpected_ = false;
    std::optional<std::array<std::uint8_t, kReportSize>> lost_;
};

} // namespace zel::sim
