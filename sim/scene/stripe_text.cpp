// SPDX-License-Identifier: MIT
// Refuses what a track can't hold.
#include "sim/scene/stripe_text.h"

namespace zel::sim {

namespace {

constexpr std::size_t kLongest[kBandTracks] = {79, 40, 107}; // characters

Trouble wrong(std::size_t track, const std::string& what, const std::string& hint) {
    return {Exit::Usage, "track " + std::to_string(track + 1) + " " + what, hint};
}

Outcome whyNot(std::size_t track, const std::string& text) {
    if (text.size() > kLongest[track])
        return wrong(track, "is too long",
                     std::to_string(kLongest[track]) + " characters find room on it");
    for (const char character : text)
        if (bandTrack(static_cast<int>(track) + 1, {&character, 1}).empty())
            return wrong(track, std::string("can't hold '") + character + "'",
                         track == 0 ? "write capitals, digits and signs, as %B0000^NAME?"
                                    : "write digits between ; and ?, as ;0000=0?");
    return {};
}

} // namespace

std::variant<BandCard, Trouble> stripeOf(const std::vector<std::string>& tracks) {
    if (tracks.empty() || tracks.size() > kBandTracks)
        return Trouble{Exit::Usage, "a card has one to three tracks",
                       "write the first track first, and \"\" for one that is missing"};
    BandCard card;
    for (std::size_t track = 0; track < tracks.size(); ++track) {
        if (auto trouble = whyNot(track, tracks[track]))
            return *trouble;
        card.track[track] = bandTrack(static_cast<int>(track) + 1, tracks[track]);
    }
    return card;
}

} // namespace zel::sim
