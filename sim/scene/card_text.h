// SPDX-License-Identifier: MIT
// A card as a user writes it.
#pragma once

#include "sim/tag/card.h"

#include <optional>
#include <string>
#include <string_view>

namespace zel::sim {

// What a text has to look like, for messages.
inline constexpr const char* kCardForms =
    "write FACILITY:NUMBER such as 26:3512 for 26 bits, or ID/BITS such as 0x123456789/37";

// A card of "26:3512", facility code and number in the common 26-bit format, or of
// "0x123456789/37", identifier and bit count. Nothing where the text is neither or the numbers
// don't fit.
std::optional<Card> cardIn(std::string_view text);

// The identifier as it is written above.
std::string cardText(const Card& card);

} // namespace zel::sim
