// SPDX-License-Identifier: MIT
// The tracks of a swiped card as text.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zel::cli {

struct Track {
    int number;        // 1 to 3
    std::string start; // its start sentinel; empty where the reader doesn't tell it
    std::string text;
    std::string end; // the end sentinel and what follows: the LRC
};

// Cuts the characters of a track.
Track trackOf(int number, const std::string& characters);

// Fetches those that the bits name from the active reader; nothing when one of them can't be read.
std::optional<std::vector<Track>> fetchTracks(unsigned bits);

// With asterisks for all but the last four characters of track 2. On the other tracks, which repeat
// its number and dates, they stand for each row of four or more digits, so that the number stays
// hidden where track 2 wasn't read.
Track masked(Track track);

std::string withSentinels(const Track& track);

} // namespace zel::cli
