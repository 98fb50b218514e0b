// SPDX-License-Identifier: MIT
// Reads and writes the two forms of a card.
#include "sim/scene/card_text.h"

#include <charconv>

namespace zel::sim {

namespace {

constexpr std::size_t kMostBits = 255;
constexpr std::string_view kDigits = "0123456789ABCDEF";

// A whole decimal number up to a limit.
std::optional<unsigned> numberIn(std::string_view text, unsigned most) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number > most)
        return {};
    return number;
}

std::optional<unsigned> digitOf(char letter) {
    const char upper =
        letter >= 'a' && letter <= 'f' ? static_cast<char>(letter - 'a' + 'A') : letter;
    const std::size_t value = kDigits.find(upper);
    return value == std::string_view::npos ? std::nullopt
                                           : std::optional(static_cast<unsigned>(value));
}

bool isClearFrom(const Card& card, std::size_t bit) {
    for (; bit < card.id.size() * 8; ++bit)
        if ((card.id[bit / 8] >> bit % 8 & 1) != 0)
            return false;
    return true;
}

// The digits stand for the number from its end.
bool takeDigits(std::string_view digits, Card& card) {
    if (digits.empty() || digits.size() > card.id.size() * 2)
        return false;
    for (std::size_t place = 0; place < digits.size(); ++place) {
        const auto value = digitOf(digits[digits.size() - 1 - place]);
        if (!value)
            return false;
        card.id[place / 2] =
            static_cast<std::uint8_t>(card.id[place / 2] | *value << place % 2 * 4);
    }
    return true;
}

std::optional<Card> cardOfNumbers(std::string_view facility, std::string_view number) {
    const auto code = numberIn(facility, UINT8_MAX);
    const auto its = numberIn(number, UINT16_MAX);
    if (!code || !its)
        return {};
    return card26(static_cast<std::uint8_t>(*code), static_cast<std::uint16_t>(*its));
}

std::optional<Card> cardOfBits(std::string_view id, std::string_view count) {
    const auto bits = numberIn(count, kMostBits);
    Card card;
    if (!bits || *bits == 0 || !id.starts_with("0x") || !takeDigits(id.substr(2), card) ||
        !isClearFrom(card, *bits))
        return {};
    card.bits = static_cast<std::uint8_t>(*bits);
    return card;
}

} // namespace

std::optional<Card> cardIn(std::string_view text) {
    if (const std::size_t colon = text.find(':'); colon != std::string_view::npos)
        return cardOfNumbers(text.substr(0, colon), text.substr(colon + 1));
    if (const std::size_t slash = text.find('/'); slash != std::string_view::npos)
        return cardOfBits(text.substr(0, slash), text.substr(slash + 1));
    return {};
}

std::string cardText(const Card& card) {
    std::string digits;
    for (std::size_t byte = (card.bits + 7U) / 8; byte-- > 0;)
        (digits += kDigits[card.id[byte] >> 4]) += kDigits[card.id[byte] & 0x0F];
    return "0x" + digits + "/" + std::to_string(card.bits);
}

} // namespace zel::sim
