// SPDX-License-Identifier: MIT
// LED colours as one frame, the beeper's two nibbles, beeps.
#include "frame/zelTagBand.h"
#include "tests/family/band/band_device.h"

#include <array>

using namespace zel::test;

namespace {

class BandLeds : public BandLineTest {
protected:
    using Colours = std::array<int, 5>;
    static void colour(const Colours& colours) {
        std::copy(colours.begin(), colours.end(), settings().LedColor);
    }
    static Colours colours() {
        Colours all;
        std::copy_n(settings().LedColor, all.size(), all.begin());
        return all;
    }
};
using Words = std::vector<unsigned short>;

struct Beeps {
    unsigned char asked;
    std::string sent;
};

class BandBeeper : public BandLineTest {};
class BandBeep : public BandLineTest {};
class BandBeepOnUsb : public BandUsbTest {};

} // namespace

TEST_F(BandLeds, GoOutTogetherTheFirstOneLast) {
    colour({1, 3, 2, 1, 0});
    EXPECT_EQ(zelband_SetLED(4, 2), 1);
    EXPECT_EQ(told(), traced("SL0E601", "RL0"));
    EXPECT_EQ(colours(), (Colours{1, 3, 2, 1, 2}));
    EXPECT_EQ(reader->ledColor(1), 3);
    EXPECT_EQ(reader->ledColor(4), 2);
}

TEST_F(BandLeds, TakeEachIndexAndColour) {
    const std::array<std::string, 5> frames = {"SL00003", "SL0C000", "SL03000", "SL00C00",
                                               "SL00300"};
    for (unsigned short led = 0; led < 5; ++led) {
        EXPECT_EQ(zelBandSetLED(led, 3), 1);
        EXPECT_EQ(told(), traced(frames[led], "RL0"));
        EXPECT_EQ(zelBandGetLED(led), 3);
        EXPECT_EQ(zelBandSetLED(led, 0), 1);
        told();
    }
}

TEST_F(BandLeds, RefuseAnotherIndexOrColour) {
    colour({1, 1, 1, 1, 1});
    EXPECT_EQ(zelband_SetLED(5, 0), 0);
    EXPECT_EQ(zelband_SetLED(65535, 0), 0);
    EXPECT_EQ(zelband_SetLED(0, 4), 0);
    EXPECT_EQ(zelband_SetLED(0, -1), 0);
    EXPECT_EQ(zelband_GetLED(5), 0);
    EXPECT_EQ(colours(), (Colours{1, 1, 1, 1, 1}));
    EXPECT_EQ(told(), "");
}

TEST_F(BandLeds, KeepAColourThatTheReaderRefused) {
    failAt(0);
    EXPECT_EQ(zelband_SetLED(2, 3), 0);
    EXPECT_EQ(zelband_GetLED(2), 3);
}

TEST_F(BandLeds, SendTwoBitsOfAColour) {
    colour({0xFD, 0xFE, 4, 5, 0});
    EXPECT_EQ(zelband_SetLED(4, 0), 1);
    EXPECT_EQ(told(), traced("SL08401", "RL0"));
    EXPECT_EQ(zelband_GetLED(1), 0xFE);
}

TEST_F(BandLeds, AreTheReadersOwnWhenTheApplicationDoesNotControlThem) {
    sLEDCtrl record = {};
    record.iRedLEDState = record.iGrnLEDState = 1;
    EXPECT_EQ(zelband_SetLEDCtrl(&record), 1);
    EXPECT_EQ(told(), traced("SL02701", "RL0"));
    EXPECT_EQ(colours(), (Colours{1, 0, 2, 1, 3}));
}

TEST_F(BandLeds, AreAllOfOneColourWhenTheApplicationControlsThem) {
    struct Case {
        std::int16_t red, green;
        std::string frame;
    };
    for (const Case& each : {Case{0, 0, "SL00000"}, Case{-1, 0, "SL05501"}, Case{0, 2, "SL0AA02"},
                             Case{1, 1, "SL0FF03"}}) {
        sLEDCtrl record = {};
        record.bAppCtrlsLED = 2;
        record.iRedLEDState = each.red;
        record.iGrnLEDState = each.green;
        EXPECT_EQ(SetLEDCtrl(&record), 1);
        EXPECT_EQ(told(), traced(each.frame, "RL0"));
    }
}

TEST_F(BandLeds, FailWithTheCommandOfTheRecord) {
    sLEDCtrl record = {};
    failAt(0);
    EXPECT_EQ(zelband_SetLEDCtrl(&record), 0);
    EXPECT_EQ(colours(), (Colours{1, 0, 2, 1, 3}));
}

TEST_F(BandLeds, TellTwoWordsOfTheRecordFromTheFirstOne) {
    for (const int colour : {0, 1, 2, 3}) {
        SCOPED_TRACE(colour);
        settings().LedColor[0] = static_cast<std::uint8_t>(colour);
        sLEDCtrl record = {7, 7, 7, 7, 7, 7, 7, 7};
        EXPECT_EQ(GetLEDCtrl(&record), 1);
        EXPECT_EQ(record.bAppCtrlsLED, 7);
        EXPECT_EQ(record.iRedLEDState, colour & 1);
        EXPECT_EQ(record.iGrnLEDState, colour >> 1);
        EXPECT_EQ(record.bVolatile, 7);
    }
    EXPECT_EQ(told(), "");
}

TEST_F(BandLeds, NeedARecord) {
    EXPECT_EQ(zelband_GetLEDCtrl(nullptr), 0);
    EXPECT_EQ(zelband_SetLEDCtrl(nullptr), 0);
    EXPECT_EQ(told(), "");
}

TEST_F(BandBeeper, HasANibbleForEachKindOfRead) {
    EXPECT_EQ(zelBandSetBeeper(2, 3, 1), 1);
    EXPECT_EQ(settings().Beeper, 0xB0);
    EXPECT_EQ(zelBandSetBeeper(3, 4, 0), 1);
    EXPECT_EQ(settings().Beeper, 0xB4);
    EXPECT_EQ(zelBandSetBeeper(2, 0, 0), 1);
    EXPECT_EQ(settings().Beeper, 0x04);
    EXPECT_EQ(zelBandSetBeeper(3, 1, -1), 1);
    EXPECT_EQ(settings().Beeper, 0x09);
    EXPECT_EQ(told(), "");
}

TEST_F(BandBeeper, RefusesOtherKindsAndMoreThanFourBeeps) {
    settings().Beeper = 0x5A;
    for (const unsigned short kind : Words{0, 1, 4, 258})
        EXPECT_EQ(zelband_SetBeeper(kind, 1, 0), 0) << kind;
    for (const unsigned short kind : Words{2, 3})
        for (const unsigned short count : Words{5, 65535})
            EXPECT_EQ(zelband_SetBeeper(kind, count, 0), 0) << count;
    EXPECT_EQ(settings().Beeper, 0x5A);
}

TEST_F(BandBeeper, TellsItsNibblesWithTheMarkOfLongOnes) {
    struct Case {
        std::uint8_t beeper;
        int good, bad;
    };
    for (const Case& each : {Case{0x00, 0, 0}, Case{0x32, 3, 2}, Case{0x7F, 7, 0x87},
                             Case{0x09, 0, 0x81}, Case{0xA0, 0x82, 0x80}}) {
        settings().Beeper = each.beeper;
        EXPECT_EQ(zelBandGetBeeper(2), each.good) << int{each.beeper};
        EXPECT_EQ(zelBandGetBeeper(3), each.bad) << int{each.beeper};
        EXPECT_EQ(zelBandGetBeeper(1), 0);
        EXPECT_EQ(zelBandGetBeeper(4), 0);
    }
}

TEST_F(BandBeeper, ShowsTheLongMarkOfTheGoodReadInTheBadOne) {
    settings().Beeper = 0x81;
    EXPECT_EQ(zelband_GetBeeper(3), 0x81);
}

TEST_F(BandBeep, IsOneToFiveShortOnes) {
    for (const auto& [count, digit] : {Beeps{0, "1"}, Beeps{1, "1"}, Beeps{4, "4"}, Beeps{5, "5"},
                                       Beeps{6, "5"}, Beeps{255, "5"}}) {
        EXPECT_EQ(BeepNow(count, 0), 1);
        EXPECT_EQ(told(), traced("BS" + digit, "RS" + digit));
    }
}

TEST_F(BandBeep, IsOneOrTwoLongOnes) {
    for (const auto& [count, digit] :
         {Beeps{0, "1"}, Beeps{1, "1"}, Beeps{2, "2"}, Beeps{9, "2"}}) {
        EXPECT_EQ(BeepNow(count, -1), 1);
        EXPECT_EQ(told(), traced("BL" + digit, "RL" + digit));
    }
}

TEST_F(BandBeep, FailsWithItsCommand) {
    failAt(0);
    EXPECT_EQ(BeepNow(1, 0), 0);
}

TEST_F(BandBeepOnUsb, IsOneReport) {
    EXPECT_EQ(BeepNow(9, 1), 1);
    EXPECT_EQ(toldBriefly(), "BL2 ~2");
    EXPECT_EQ(reader->takeBeeps(), (std::vector<zel::sim::BandBeep>{{2, true}}));
}
