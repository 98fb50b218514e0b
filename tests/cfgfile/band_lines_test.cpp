// SPDX-License-Identifier: MIT
// What lines a load of a magnetic stripe reader's file takes, and as which values.
#include "tests/cfgfile/band_file_test.h"

using namespace zel::test;

namespace {

class BandLines : public BandFileTest {
protected:
    // What a load makes of a word that was 77.
    static int beeperOf(const std::string& lines) {
        band().Beeper = 77;
        EXPECT_EQ(load(lines), 1) << lines;
        return band().Beeper;
    }
    static int luidOf(const std::string& number) {
        EXPECT_EQ(load("LUID: " + number + "\n"), 1);
        return record().iLUID;
    }
    static int haltOf(const std::string& number) {
        band().HaltKBSend = 77;
        EXPECT_EQ(load("HaltKBSend: " + number), 1);
        return band().HaltKBSend;
    }
};

constexpr int kUntouched = 77;

} // namespace

TEST_F(BandLines, NeedNeitherCommentNorBlanks) {
    for (const char* line :
         {"Beeper: 5", "Beeper:5", "Beeper:5\n", "Beeper:     5   // text", "Beeper:\t\v\f\r5",
          "Beeper: 5x", "Beeper: 5.9", "Beeper: 5: 6", "Beeper: 5\r\n", "Beeper: 5//"})
        EXPECT_EQ(beeperOf(line), 5) << line;
}

TEST_F(BandLines, HoldDecimalNumbersOfEitherSign) {
    EXPECT_EQ(beeperOf("Beeper: +5"), 5);
    EXPECT_EQ(beeperOf("Beeper: -1"), 255);
    EXPECT_EQ(beeperOf("Beeper: 0005"), 5) << "not octal";
    EXPECT_EQ(beeperOf("Beeper: 010"), 10);
    EXPECT_EQ(beeperOf("Beeper: 0x10"), 0) << "the digit in front of the x";
}

TEST_F(BandLines, WithoutANumberAreIgnored) {
    for (const char* line : {"Beeper:", "Beeper: ", "Beeper: x5", "Beeper: - 5", "Beeper: --5",
                             "Beeper: // 5", "Beeper 5", "Beeper = 5", "Beeper", "Beeper:\n5"})
        EXPECT_EQ(beeperOf(line), kUntouched) << line;
}

TEST_F(BandLines, BeginWithTheKeyExactly) {
    for (const char* line : {"beeper: 5", "BEEPER: 5", "Beepers: 5", "xBeeper: 5", "Beeper : 5",
                             "//Beeper: 5", "// Beeper: 5", "Beep: 5", ": 5"})
        EXPECT_EQ(beeperOf(line), kUntouched) << line;
}

TEST_F(BandLines, WithABlankInFrontOfTheKeyAreIgnoredWithNoComplaint) {
    EXPECT_EQ(beeperOf(" Beeper: 5\n"), kUntouched);
    EXPECT_EQ(beeperOf("\tBeeper: 5\n"), kUntouched);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(BandLines, ComeInAnyOrderAndTheLastOneOfAKeyCounts) {
    EXPECT_EQ(load("KeyReleaseTime: 8\nBeeper: 1\n\nnonsense\nLUID: 9\nBeeper: 2\n"), 1);
    EXPECT_EQ(band().KeyReleaseTime, 8);
    EXPECT_EQ(record().iLUID, 9);
    EXPECT_EQ(band().Beeper, 2);
}

TEST_F(BandLines, AreTakenBehindTheEndLineAndWithoutOne) {
    EXPECT_EQ(beeperOf("//##END##: \n\nBeeper: 5\n"), 5);
    EXPECT_EQ(beeperOf("Beeper: 6\n"), 6);
}

TEST_F(BandLines, OfOneFieldDontReachAnotherWhoseNumberBeginsAlike) {
    EXPECT_EQ(load("UserField[1].Length: 11\n"), 1);
    EXPECT_EQ(field(1).Length, 11);
    EXPECT_EQ(field(10).Length, 0);
    EXPECT_EQ(load("UserField[10].Length: 22\nUserField[10].Keybyte[1]: 3\n"), 1);
    EXPECT_EQ(field(10).Length, 22);
    EXPECT_EQ(field(1).Length, 11);
    EXPECT_EQ(field(10).Keybyte[1], 3);
    EXPECT_EQ(field(10).Keybyte[10], 0);
}

TEST_F(BandLines, OfFieldsThatDontExistAreIgnored) {
    const std::string before = image();
    EXPECT_EQ(load("UserField[11].Length: 1\nUserField[-1].Length: 1\nUserField[01].Length: 1\n"
                   "UserField[1].Keybyte[16]: 1\nLedColor[5]: 1\nUserField[1].length: 1\n"),
              1);
    EXPECT_EQ(image(), before);
}

TEST_F(BandLines, MakeAFlag1ForANumberAbove0) {
    EXPECT_EQ(haltOf("-1"), 0);
    EXPECT_EQ(haltOf("0"), 0);
    EXPECT_EQ(haltOf("2"), 1);
    EXPECT_EQ(haltOf("256"), 1) << "not by its low bits";
    EXPECT_EQ(haltOf("-255"), 0);
    EXPECT_EQ(load("UserField[0].Enable: 2\nUserField[0].Skip: 4\nUserField[0].ShowSepSen: 8\n"
                   "UserField[0].ShowLRC: 99\nUserField[0].IgnoreLRC: 256\nUseNumKP: 512\n"),
              1);
    EXPECT_EQ(field(0).Enable + field(0).Skip + field(0).ShowSepSen, 3);
    EXPECT_EQ(field(0).ShowLRC + field(0).IgnoreLRC + band().UseNumKP, 3);
}

TEST_F(BandLines, StoreTheLowBitsOfOtherNumbers) {
    EXPECT_EQ(load("TrackEnables: 300\nLedColor[4]: 258\nUserField[3].Keybyte[15]: -2\n"), 1);
    EXPECT_EQ(band().TrackEnables, 44);
    EXPECT_EQ(band().LedColor[4], 2);
    EXPECT_EQ(field(3).Keybyte[15], 254);
    EXPECT_EQ(load("KeyPressTime: 65537\nKeyReleaseTime: -1\n"), 1);
    EXPECT_EQ(band().KeyPressTime, 1);
    EXPECT_EQ(band().KeyReleaseTime, 65535);
}

TEST_F(BandLines, TakeTheLuidByItsLow16Bits) {
    EXPECT_EQ(luidOf("40000"), 40000);
    EXPECT_EQ(luidOf("-25536"), 40000);
    EXPECT_EQ(luidOf("65541"), 5);
}

TEST_F(BandLines, TestNoRange) {
    EXPECT_EQ(load("UserField[0].Track: 200\nUserField[0].nKeys: 255\nLedColor[0]: 9\n"), 1);
    EXPECT_EQ(field(0).Track, 200);
    EXPECT_EQ(field(0).nKeys, 255);
    EXPECT_EQ(band().LedColor[0], 9);
}

TEST_F(BandLines, LongerThan256CharactersGoOnAsALineOfTheirOwn) {
    const std::string filling(255, 'x');
    EXPECT_EQ(beeperOf(filling + "yBeeper: 5\n"), 5);
    EXPECT_EQ(beeperOf(filling + "Beeper: 5\n"), kUntouched) << "cut behind the first letter";
    EXPECT_EQ(beeperOf("Beeper: " + std::string(247, ' ') + "5\n"), 5) << "256 characters";
    EXPECT_EQ(beeperOf("Beeper: " + std::string(247, ' ') + "56\n"), 5) << "257 characters";
    EXPECT_EQ(beeperOf("Beeper: " + std::string(248, ' ') + "5\n"), kUntouched);
}

TEST_F(BandLines, EndAtAZeroByte) {
    EXPECT_EQ(beeperOf(std::string("Bee\0per: 5\n", 11)), kUntouched);
    EXPECT_EQ(beeperOf(std::string("Beeper: 5\0006\nLUID: 3\n", 20)), 5);
    EXPECT_EQ(record().iLUID, 3) << "the next line is whole";
}

TEST_F(BandLines, ChangeNothingElseAndMarkNothing) {
    std::fill_n(reinterpret_cast<char*>(&record().Cfg), sizeof record().Cfg, '\x5A');
    band().iBandLUID = 123;
    band().iActTrack = 3;
    band().bBandOpen = 1;
    field(4).Length = 44;
    const std::string before = image();
    EXPECT_EQ(load("UserField[4].Length: 5\n"), 1);
    EXPECT_EQ(field(4).Length, 5);
    field(4).Length = 44;
    EXPECT_EQ(image(), before);
    EXPECT_EQ(load("LUID: 6\n"), 1);
    EXPECT_EQ(record().bLUIDDirty, 0U);
    EXPECT_EQ(band().bBandCfgDirty, 0U);
    EXPECT_EQ(band().iBandLUID, 123) << "follows with the next write to the reader";
}
