// SPDX-License-Identifier: MIT
// What a simulated magnetic stripe reader holds, and its commands as text.
#pragma once

#include "sim/band/settings.h"
#include "sim/band/tracks.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace zel::sim {

struct BandBeep {
    int count;
    bool isLong;
    bool operator==(const BandBeep&) const = default;
};

class BandModel {
public:
    explicit BandModel(BandOptions options);

    // What follows the three characters of the reply to a command, which is the text of its frame;
    // nothing where the reader refuses it.
    std::optional<std::string> run(std::string_view command);

    // A card passes; the tracks that are switched off aren't read. One that nobody has taken yet is
    // overwritten.
    void swipe(const BandCard& card);

    // Settings that weren't committed, the card and what is counted since the start are gone.
    void powerUp();

    BandOptions options;
    BandSettings current = bandFactorySettings(); // in force now
    BandSettings stored = current;                // kept over a loss of power
    std::array<std::uint16_t, 4> counters = {};
    std::uint32_t cardsRead = 0;

    void setUptime(std::uint32_t seconds);
    std::vector<BandBeep> takeBeeps() { return std::exchange(beeps_, {}); }

private:
    using Reply = std::optional<std::string>;

    Reply query(std::string_view command);
    Reply get(std::string_view command);
    Reply getQueue() const;
    Reply getTrack(std::string_view command) const;
    Reply set(std::string_view command);
    Reply flash(char what);
    Reply clear(std::string_view command);
    Reply beep(std::string_view command);
    std::uint8_t tracksRead() const;
    std::uint32_t uptime() const;
    std::uint16_t age() const;

    BandCard card_;
    std::vector<BandBeep> beeps_;
    std::uint64_t startedAt_; // microseconds
    std::uint64_t readAt_ = 0;
    std::uint8_t overruns_ = 0;
    bool takesSettings_ = false;
};

} // namespace zel::sim
