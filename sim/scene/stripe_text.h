// SPDX-License-Identifier: MIT
// A card with a magnetic stripe as a user writes it: its tracks as texts.
#pragma once

#include "sim/band/tracks.h"
#include "sim/scene/trouble.h"

#include <string>
#include <variant>
#include <vector>

namespace zel::sim {

// One to three tracks, first track first; an empty text is a track that isn't on the card.
std::variant<BandCard, Trouble> stripeOf(const std::vector<std::string>& tracks);

} // namespace zel::sim
