// SPDX-License-Identifier: MIT
// Cards and tracks as a user of the simulator writes them.
#include "sim/scene/card_text.h"
#include "sim/scene/stripe_text.h"

#include <gtest/gtest.h>

namespace zel::sim {

namespace {

TEST(CardText, OfFacilityAndNumberIsACardOf26Bits) {
    const auto card = cardIn("26:3512");
    ASSERT_TRUE(card);
    EXPECT_EQ(card->bits, 26);
    EXPECT_EQ(cardText(*card), "0x02341B70/26");
}

TEST(CardText, OfAnIdentifierHasAsManyBitsAsItTells) {
    const auto card = cardIn("0x123456789/37");
    ASSERT_TRUE(card);
    EXPECT_EQ(card->bits, 37);
    EXPECT_EQ(cardText(*card), "0x0123456789/37");
}

TEST(CardText, MayHave255Bits) {
    const std::string digits = "7" + std::string(63, 'f');
    const auto card = cardIn("0x" + digits + "/255");
    ASSERT_TRUE(card);
    EXPECT_EQ(card->id[31], 0x7F);
    EXPECT_EQ(card->id[0], 0xFF);
}

TEST(CardText, IsNoCardWhereANumberDoesNotFit) {
    for (const char* const text :
         {"", "26", "26:", ":1", "256:1", "1:65536", "-1:1", "1:2:3", "0x1", "0x1/", "0x/8", "1/8",
          "0x1/0", "0x1/256", "0x2/1", "0x100/8", "0xG/8", "staff"})
        EXPECT_FALSE(cardIn(text)) << text;
}

TEST(StripeText, IsTheTracksInTheirOrder) {
    const auto card = stripeOf({"%B0?", "", ";1?"});
    ASSERT_TRUE(std::holds_alternative<BandCard>(card));
    EXPECT_EQ(std::get<BandCard>(card).track[0], bandTrack(1, "%B0?"));
    EXPECT_TRUE(std::get<BandCard>(card).track[1].empty());
    EXPECT_EQ(std::get<BandCard>(card).track[2], bandTrack(3, ";1?"));
}

std::string refusalOf(const std::vector<std::string>& tracks) {
    const auto card = stripeOf(tracks);
    const auto* const trouble = std::get_if<Trouble>(&card);
    return trouble ? trouble->message : "";
}

TEST(StripeText, IsRefusedWhereATrackCannotHoldIt) {
    EXPECT_EQ(refusalOf({"", ";A?"}), "track 2 can't hold 'A'");
    EXPECT_EQ(refusalOf({"%b?"}), "track 1 can't hold 'b'");
    EXPECT_EQ(refusalOf({"", std::string(41, '0')}), "track 2 is too long");
    EXPECT_EQ(refusalOf({}), "a card has one to three tracks");
    EXPECT_EQ(refusalOf({"", "", "", ""}), "a card has one to three tracks");
}

} // namespace

} // namespace zel::sim
