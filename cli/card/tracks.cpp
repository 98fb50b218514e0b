// SPDX-License-Identifier: MIT
// Fetches tracks, cuts them at their sentinels, hides what is secret in them.
#include "cli/card/tracks.h"

#include "frame/zelTagAPI.h"

#include <algorithm>

namespace zel::cli {

namespace {

constexpr int kTracks = 3;
constexpr int kLengthBits = 0x7F;
constexpr std::size_t kShown = 4;
constexpr std::size_t kShortestRow = 4;
constexpr char kEndSentinel = '?';

bool isDigit(char character) { return character >= '0' && character <= '9'; }

// A reader may tell track 1's start sentinel by the code that its alphabet has for the digit 5.
std::string startOf(int number, const std::string& characters) {
    if (characters.empty())
        return "";
    const char first = characters.front();
    if (number == 1)
        return first == '%' || first == '5' ? "%" : "";
    return first == ';' ? ";" : "";
}

std::string withoutRows(std::string text) {
    for (auto at = text.begin(); at != text.end();) {
        const auto first = std::find_if(at, text.end(), isDigit);
        at = std::find_if_not(first, text.end(), isDigit);
        if (at - first >= static_cast<std::ptrdiff_t>(kShortestRow))
            std::fill(first, at, '*');
    }
    return text;
}

std::string lastFour(std::string text) {
    const std::size_t hidden = text.size() - std::min(text.size(), kShown);
    return text.replace(0, hidden, hidden, '*');
}

} // namespace

Track trackOf(int number, const std::string& characters) {
    Track track{number, startOf(number, characters), "", ""};
    const std::size_t end =
        std::min(characters.find(kEndSentinel, track.start.size()), characters.size());
    track.text = characters.substr(track.start.size(), end - track.start.size());
    track.end = characters.substr(end);
    return track;
}

std::optional<std::vector<Track>> fetchTracks(unsigned bits) {
    std::vector<Track> tracks;
    for (int number = 1; number <= kTracks; ++number) {
        if ((bits >> (number - 1) & 1) == 0)
            continue;
        const char* const data = zelBandGetTrackData(static_cast<unsigned short>(number), 1);
        const auto length = static_cast<std::size_t>(data ? data[0] & kLengthBits : 0);
        if (length == 0)
            return std::nullopt;
        tracks.push_back(trackOf(number, std::string(data + 1, length)));
    }
    return tracks;
}

// The LRC tells of the hidden characters.
Track masked(Track track) {
    track.text = track.number == 2 ? lastFour(track.text) : withoutRows(track.text);
    if (track.end.size() > 1)
        std::fill(track.end.begin() + 1, track.end.end(), '*');
    return track;
}

std::string withSentinels(const Track& track) { return track.start + track.text + track.end; }

} // namespace zel::cli
