// SPDX-License-Identifier: MIT
// What a simulated proximity reader can be set to, and the sets of it that the reader stores.
#pragma once

#include "sim/tag/options.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel::sim {

using TagBlock = std::array<std::uint8_t, 8>; // the payload of a report

struct TagConfiguration {
    std::array<TagBlock, 4> block;
    std::array<TagBlock, 18> page;              // separator and field data
    std::array<std::array<TagBlock, 2>, 2> key; // two key values of two pages each
    std::uint16_t cardType;
    bool cardPriority;
};

// The LUID is the reader's own: no set of defaults and no factory reset changes it.
struct TagSettings {
    std::uint16_t luid;
    std::array<TagConfiguration, 11> configuration;
};

TagSettings tagFactorySettings(const TagOptions& options);

class TagMemory {
public:
    explicit TagMemory(const TagOptions& options);

    // In force now, kept over a loss of power, and the user's defaults.
    TagSettings current;
    TagSettings stored;
    TagSettings user;
    std::size_t active = 0; // the configuration in use

    TagConfiguration& configuration() { return current.configuration.at(active); }
    const TagConfiguration& configuration() const { return current.configuration.at(active); }

    void commit() { stored = current; }
    void powerUp();
    void resetToFactory();

    // Copies a set over another: 1 current, 2 user defaults, 3 factory defaults, which can't be
    // overwritten. What becomes current is kept without a commit. False: there is no such move.
    bool move(unsigned source, unsigned target);

private:
    void makeCurrent(const TagSettings& settings);

    TagSettings factory_;
};

} // namespace zel::sim
