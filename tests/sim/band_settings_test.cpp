// SPDX-License-Identifier: MIT
// Settings, outputs and counters of the simulated magnetic stripe reader.
#include "tests/sim/spoken_band.h"

using namespace zel::sim;

namespace {

class StripeConfiguration : public zel::test::SpokenBand {};
class StripeOutput : public zel::test::SpokenBand {};
class StripeCounter : public zel::test::SpokenBand {};

} // namespace

TEST_F(StripeConfiguration, BeginsWithTheFactoryValues) {
    EXPECT_EQ(say("GS0"), frame("RS0070202000019"));
    EXPECT_EQ(say("GL0"), frame("RL02701"));
    EXPECT_EQ(say("Ga0"), frame("Ra080"));
    EXPECT_EQ(say("Gb0"), frame("Rb0"));
    EXPECT_EQ(say("Gk1"), frame("Rk1"));
    EXPECT_EQ(say("GkC"), frame("RkC02000020FF"));
}

TEST_F(StripeConfiguration, OfAFieldComesInThreePieces) {
    EXPECT_EQ(say("FR"), frame("RR0"));
    EXPECT_EQ(say("Sk0C5010203040506070800"), frame("Rk0"));
    EXPECT_EQ(say("Sk11112131415161718FFFF"), frame("Rk1"));
    EXPECT_EQ(say("SkCE302040810"), frame("RkC"));
    EXPECT_EQ(say("Gk0"), frame("Rk0C50102030405060708"));
    EXPECT_EQ(say("Gk1"), frame("Rk11112131415161718")) << "only eight bytes are kept";
    EXPECT_EQ(say("GkC"), frame("RkCE302040810"));
    EXPECT_EQ(say("Gj0"), frame("Rj0"));
    EXPECT_EQ(reader_.settings().field[10].control,
              (std::array<std::uint8_t, 5>{0xE3, 2, 4, 8, 0x10}));
}

TEST_F(StripeConfiguration, OfTheSystemIsSixBytes) {
    say("FR");
    EXPECT_EQ(say("SS0C50A0B3412A9"), frame("RS0"));
    EXPECT_EQ(say("GS0"), frame("RS0C50A0B3412A9"));
    EXPECT_EQ(reader_.settings().system,
              (std::array<std::uint8_t, 6>{0xC5, 0x0A, 0x0B, 0x34, 0x12, 0xA9}));
}

TEST_F(StripeConfiguration, IsTakenBehindItsOpeningAlone) {
    EXPECT_EQ(say("Sb081"), frame("Eb0"));
    EXPECT_EQ(say("SS000"), frame("ES0"));
    EXPECT_EQ(say("FR"), frame("RR0"));
    EXPECT_EQ(say("Sb081"), frame("Rb0"));
    EXPECT_EQ(say("FW"), frame("RW0"));
    EXPECT_EQ(say("SS000"), frame("ES0"));
    EXPECT_EQ(say("Gb0"), frame("Rb081"));
    EXPECT_EQ(say("GS0"), frame("RS0070202000019"));
}

TEST_F(StripeConfiguration, OfWrongDigitsChangesNothing) {
    say("FR");
    EXPECT_EQ(say("SS00G"), frame("ES0"));
    EXPECT_EQ(say("SS0C50A0B3412a9"), frame("ES0")) << "digits are capitals";
    EXPECT_EQ(say("GS0"), frame("RS0070202000019"));
}

TEST_F(StripeConfiguration, OutlivesALossOfPowerWhenItWasCommitted) {
    say("FR");
    say("SS0010203040506");
    say("FW");
    usleep(kFlash);
    say("FR");
    say("SS0111213141516");
    reader_.powerUp();
    EXPECT_EQ(say("GS0"), frame("RS0010203040506"));
    EXPECT_EQ(say("SS000"), frame("ES0")) << "the opening is forgotten";
}

TEST_F(StripeConfiguration, ReturnsToTheFactoryValuesForGood) {
    say("FR");
    say("Sa0");
    say("SS0");
    say("SL0");
    say("FW");
    usleep(kFlash);
    EXPECT_EQ(say("FD"), frame("RD0"));
    EXPECT_EQ(reader_.committed().system, bandFactorySettings().system);
    usleep(kFlash);
    EXPECT_EQ(say("Ga0"), frame("Ra080"));
    EXPECT_EQ(say("GS0"), frame("RS0070202000019"));
    EXPECT_EQ(say("GL0"), frame("RL02701"));
}

TEST_F(StripeOutput, LightsAtOnceButIsKeptByACommitOnly) {
    EXPECT_EQ(say("SL0D802"), frame("RL0"));
    // D8 = 11 01 10 00: LED 1 amber, 2 red, 3 green, 4 off
    const int expected[] = {2, 3, 1, 2, 0};
    for (unsigned led = 0; led < 5; ++led)
        EXPECT_EQ(reader_.ledColor(led), expected[led]) << led;
    reader_.powerUp();
    EXPECT_EQ(say("GL0"), frame("RL02701"));
}

TEST_F(StripeOutput, BeepsFiveTimesAtMostAndLongTwice) {
    EXPECT_EQ(say("BS1"), frame("RS1"));
    EXPECT_EQ(say("BS5"), frame("RS5"));
    EXPECT_EQ(say("BL2"), frame("RL2"));
    EXPECT_EQ(say("BS6"), frame("ES6"));
    EXPECT_EQ(say("BL3"), frame("EL3"));
    EXPECT_EQ(say("BS0"), frame("ES0"));
    EXPECT_EQ(reader_.takeBeeps(), (std::vector<BandBeep>{{1, false}, {5, false}, {2, true}}));
    EXPECT_TRUE(reader_.takeBeeps().empty());
}

TEST_F(StripeCounter, OfSecondsAndCardsIsToldLowByteFirst) {
    reader_.powerUp();
    usleep(258'900'000);
    reader_.setCardsRead(0x80000003);
    EXPECT_EQ(say("QUP"), frame("RUP0201000003000080"));
    reader_.setUptime(0x89ABCDEF);
    EXPECT_EQ(say("QUP"), frame("RUPEFCDAB8903000080"));
    reader_.powerUp();
    EXPECT_EQ(say("QUP"), frame("RUP"));
}

TEST_F(StripeCounter, OfItsOwnIsOneOfFour) {
    reader_.counters() = {1, 0x0203, 0, 0xFFFE};
    EXPECT_EQ(say("QDD"), frame("RDD010003020000FEFF"));
}
