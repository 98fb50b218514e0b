// SPDX-License-Identifier: MIT
// Cards and tracks of the simulated magnetic stripe reader.
#include "sim/wire/byte_text.h"
#include "tests/sim/spoken_band.h"

using namespace zel::sim;

namespace {

class StripeTrack : public zel::test::SpokenBand {};
class StripeSwipe : public zel::test::SpokenBand {};

} // namespace

TEST_F(StripeTrack, OneIsSixBitsAndAnOddNumberOfOnes) {
    // B 0x22, blank 0x00, 5 0x15, A 0x21: their place behind the blank
    EXPECT_EQ(hexOf(bandTrack(1, "%B 5^A?")), "15 62 40 15 3E 61 5F");
}

TEST_F(StripeTrack, TwoAndThreeAreFourBitsAndAnOddNumberOfOnes) {
    EXPECT_EQ(hexOf(bandTrack(2, ";0013=79?")), "0B 10 10 01 13 0D 07 19 0F");
    EXPECT_EQ(hexOf(bandTrack(3, ";:<>?")), "0B 1A 1C 0E 0F");
}

TEST_F(StripeTrack, HasNoCharacterOutsideItsAlphabet) {
    EXPECT_EQ(hexOf(bandTrack(1, "a\x1F`_\xE4")), "7F");
    EXPECT_EQ(hexOf(bandTrack(2, "A/@ 0%^")), "10");
}

TEST_F(StripeTrack, IsItsLengthThenItsCodes) {
    reader_.swipe(bandCard("%A?", ";0000=1?"));
    EXPECT_EQ(say("G2000"), "R20080B101010100D010F00\r");
    EXPECT_EQ(say("G1000"), "R100315615F000000000000\r");
    EXPECT_EQ(say("G3000"), frame("R30"));
}

TEST_F(StripeTrack, ComesInChunksOfTen) {
    BandCard card;
    for (std::uint8_t code = 1; code <= 15; ++code)
        card.track[2].push_back(code);
    reader_.swipe(card);
    EXPECT_EQ(say("G3000"), "R300F010203040506070809\r");
    EXPECT_EQ(say("G3100"), "R310A0B0C0D0E0F00000000\r");
    EXPECT_EQ(say("G3200"), frame("R32"));
}

TEST_F(StripeTrack, HasAsManyChunksAsItsKind) {
    BandCard card;
    for (TrackCodes& codes : card.track)
        codes.assign(109, 0x11);
    reader_.swipe(card);
    const std::string ones = "11111111111111111111";
    EXPECT_EQ(say("G1800"), frame("R18" + ones));
    EXPECT_EQ(say("G1900"), frame("E19"));
    EXPECT_EQ(say("G2400"), frame("R24" + ones));
    EXPECT_EQ(say("G2500"), frame("E25"));
    EXPECT_EQ(say("G3A00"), frame("R3A" + ones));
    EXPECT_EQ(say("G3B00"), frame("E3B"));
    EXPECT_EQ(say("G3000").substr(3, 4), "6D11");
}

TEST_F(StripeSwipe, FlagsTheTracksThatTheCardHas) {
    EXPECT_EQ(say("QS0"), frame("RS000"));
    reader_.swipe(bandCard("%A?", "", ";1?"));
    EXPECT_EQ(say("QS0"), frame("RS005"));
    reader_.swipe(bandCard("", ";1?"));
    EXPECT_EQ(say("QS0"), frame("RS002"));
}

TEST_F(StripeSwipe, ReadsNoTrackThatIsSwitchedOff) {
    reader_.settings().system[0] = 0x85;
    reader_.swipe(bandCard("%A?", ";1?", ";2?"));
    EXPECT_EQ(say("QS0"), frame("RS005"));
    EXPECT_EQ(say("G2000"), frame("R20"));
}

TEST_F(StripeSwipe, IsForgottenWhenItIsCleared) {
    reader_.swipe(bandCard("%A?", ";1?", ";2?"));
    EXPECT_EQ(say("CD0"), frame("RD0"));
    EXPECT_EQ(say("QS0"), frame("RS000"));
    EXPECT_EQ(say("G1000"), frame("R10"));
}

TEST_F(StripeSwipe, HasAnAgeInMilliseconds) {
    EXPECT_EQ(say("GQ0"), frame("RQ0"));
    reader_.swipe(bandCard("", ";1?"));
    usleep(0x1234 * 1'000);
    EXPECT_EQ(say("GQ0"), frame("RQ0034120000"));
    usleep(70'000'000);
    EXPECT_EQ(say("GQ0"), frame("RQ00FFFF0000"));
}

TEST_F(StripeSwipe, OverwritesTheOneThatNobodyTook) {
    reader_.swipe(bandCard("", ";1?"));
    reader_.swipe(bandCard("", ";2?"));
    EXPECT_EQ(say("G2000"), frame("R20030B020F"));
    EXPECT_EQ(say("GQ0"), frame("RQ0000000100"));
    say("CD0");
    reader_.swipe(bandCard("", ";4?"));
    EXPECT_EQ(say("GQ0"), frame("RQ0000000100")) << "this one overwrote none";
    EXPECT_EQ(say("CQ"), frame("RQ0"));
    EXPECT_EQ(say("GQ0"), frame("RQ0"));
}

TEST_F(StripeSwipe, CountsCardsWithSomethingToRead) {
    reader_.powerUp();
    reader_.swipe(bandCard("", ";1?"));
    reader_.swipe({});
    reader_.swipe(bandCard("", ";1?"));
    EXPECT_EQ(say("QUP"), frame("RUP0000000002000000"));
}

TEST_F(StripeSwipe, IsGoneAfterALossOfPower) {
    reader_.swipe(bandCard("", ";1?"));
    reader_.swipe(bandCard("", ";1?"));
    reader_.powerUp();
    EXPECT_EQ(say("QS0"), frame("RS0"));
    EXPECT_EQ(say("GQ0"), frame("RQ0"));
    EXPECT_EQ(say("QUP"), frame("RUP"));
}
