// SPDX-License-Identifier: MIT
// A card with a magnetic stripe: three tracks in the codes that a reader tells them in.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace zel::sim {

using TrackCodes = std::vector<std::uint8_t>;

constexpr std::size_t kBandTracks = 3;

struct BandCard {
    std::array<TrackCodes, kBandTracks> track; // an empty one isn't on the card
};

// The codes of a track, 1 to 3, that is written as text with its sentinels. The sentinels and the
// separator have codes of their own; any other character has its place in the track's alphabet with
// a bit above that makes the number of its ones odd, so no code is 0. A character outside the
// alphabet is left out.
TrackCodes bandTrack(int number, std::string_view text);

// A card of such texts: "%B0000^SIMULATED?", ";0000=0?", ";0000?".
BandCard bandCard(std::string_view first, std::string_view second, std::string_view third = {});

} // namespace zel::sim
