// SPDX-License-Identifier: MIT
// Tracks cut at their sentinels, and what a mask leaves of them.
#include "cli/card/tracks.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

std::string textOf(int number, const std::string& characters) {
    return cli::trackOf(number, characters).text;
}

std::string maskedText(int number, const std::string& characters) {
    return cli::masked(cli::trackOf(number, characters)).text;
}

TEST(Track, EndsAtItsEndSentinel) {
    EXPECT_EQ(textOf(1, "%B00^A?X"), "B00^A");
    EXPECT_EQ(textOf(2, ";00=1?7"), "00=1");
}

TEST(Track, WithoutSentinelsIsWhole) {
    EXPECT_EQ(textOf(1, "B00"), "B00");
    EXPECT_EQ(textOf(2, "500"), "500");
    EXPECT_EQ(textOf(3, ""), "");
}

TEST(Track, FiveBeginsTrack1AsItsSentinel) {
    const cli::Track track = cli::trackOf(1, "5B5?");
    EXPECT_EQ(track.text, "B5");
    EXPECT_EQ(cli::withSentinels(track), "%B5?");
}

TEST(MaskedTrack, Track2ShowsItsLastFourCharacters) {
    EXPECT_EQ(maskedText(2, ";0000=1111?"), "*****1111");
    EXPECT_EQ(maskedText(2, ";11110?"), "*1110");
    EXPECT_EQ(maskedText(2, ";1111?"), "1111");
    EXPECT_EQ(maskedText(2, ";?"), "");
}

TEST(MaskedTrack, OtherTracksShowShortRowsOfDigitsAlone) {
    EXPECT_EQ(maskedText(1, "%B0000^A1/B222^33334?"), "B****^A1/B222^*****");
    EXPECT_EQ(maskedText(3, ";0000=111=22222?"), "****=111=*****");
}

TEST(MaskedTrack, HidesTheChecksum) {
    EXPECT_EQ(cli::withSentinels(cli::masked(cli::trackOf(2, ";000000?5"))), ";**0000?*");
    EXPECT_EQ(cli::withSentinels(cli::masked(cli::trackOf(2, ";0000"))), ";0000");
}

} // namespace

} // namespace zel::test
