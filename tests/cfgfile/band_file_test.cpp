// SPDX-License-Identifier: MIT
// A magnetic stripe reader's file as it is written, what comes back of it, and what is refused.
#include "tests/cfgfile/band_file_test.h"

#include <algorithm>
#include <random>
#include <unistd.h>

using namespace zel::test;

namespace {

class BandFile : public BandFileTest {
protected:
    // The settings of files/band.txt; of a flag bit 0 alone counts.
    static void fill() {
        record().iLUID = 40000;
        band().HaltKBSend = 0xFF;
        band().UseNumKP = 0xFE;
        band().TrackEnables = 7;
        band().Beeper = 0x91;
        for (int led = 0; led < 5; ++led)
            band().LedColor[led] = static_cast<std::uint8_t>(led % 4);
        for (int index = 0; index < 11; ++index)
            fillField(index);
        band().KeyPressTime = 16;
        band().KeyReleaseTime = 65535;
    }

    // Any settings that a file can hold.
    static void fillAtRandom(std::mt19937& random) {
        const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
        std::generate(begin(), end(), byte);
        for (std::uint8_t* const flag : flags())
            *flag &= 1;
        record().iLUID = static_cast<std::uint16_t>(random());
    }

    static void clear() {
        std::fill(begin(), end(), std::uint8_t{0});
        record().iLUID = 0;
    }

    static std::string written() {
        EXPECT_EQ(WriteDevCfgToFile("out"), 1);
        return textOf("out");
    }

private:
    static std::uint8_t* begin() { return &band().HaltKBSend; }
    static std::uint8_t* end() {
        return reinterpret_cast<std::uint8_t*>(&band().KeyReleaseTime + 1);
    }

    static void fillField(int index) {
        const auto bit = [&](int n) { return static_cast<std::uint8_t>(0xFE | (index >> n & 1)); };
        const auto number = [&](int n) { return static_cast<std::uint8_t>(index * 20 + n); };
        BandUserField& filled = field(index);
        filled.Enable = bit(0);
        filled.Skip = bit(1);
        filled.Track = number(2);
        filled.Field = number(3);
        filled.ByteOffset = number(4);
        filled.Length = number(5);
        filled.Termination = number(6);
        filled.ShowSepSen = bit(2);
        filled.ShowLRC = bit(3);
        filled.IgnoreLRC = index == 10;
        filled.nKeys = number(10);
        for (int key = 0; key < 16; ++key)
            filled.Keybyte[key] = static_cast<std::uint8_t>(255 - index * 16 - key);
    }

    static std::vector<std::uint8_t*> flags() {
        std::vector<std::uint8_t*> all = {&band().HaltKBSend, &band().UseNumKP};
        for (BandUserField& each : band().UserField)
            all.insert(all.end(), {&each.Enable, &each.Skip, &each.ShowSepSen, &each.ShowLRC,
                                   &each.IgnoreLRC});
        return all;
    }
};

} // namespace

// The title is read twice, which a pipe doesn't allow.
TEST_F(BandFile, ThatIsAPipeIsRefused) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string text = kBandTitle + std::string("Beeper: 1\n");
    ASSERT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    ::close(ends[1]);
    const std::string before = image();
    EXPECT_EQ(ReadDevCfgFmFile(("/dev/fd/" + std::to_string(ends[0])).c_str()), 0);
    EXPECT_EQ(image(), before);
    ::close(ends[0]);
}

TEST_F(BandFile, IsWrittenToTheByte) {
    fill();
    EXPECT_EQ(written(), goldenFile("band"));
}

TEST_F(BandFile, HasALineForEachOf309Values) {
    const std::string text = written();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2 + 309 + 2);
}

TEST_F(BandFile, EndsWithALineOf32CharactersAndAnEmptyOne) {
    const std::string end = "\n//##END##: " + std::string(21, ' ') + "\n\n";
    EXPECT_EQ(end.size(), 1 + 32 + 2U);
    EXPECT_TRUE(written().ends_with(end));
}

TEST_F(BandFile, ShowsStartValuesOfARecordThatWasNeverRead) {
    const std::string text = written();
    for (const std::string line : {"\nLUID: 0      ", "\nUserField[10].Length: 0      ",
                                   "\nUserField[0].Track: 0      ", "\nKeyPressTime: 0      "})
        EXPECT_NE(text.find(line), text.npos) << line;
}

TEST_F(BandFile, ShowsTimesInTheMillisecondsOfTheRecord) {
    band().KeyPressTime = 100;
    EXPECT_NE(written().find("\nKeyPressTime: 100               // 4MS units"), std::string::npos);
}

TEST_F(BandFile, ReplacesALongerFile) {
    fill();
    writeText("out", std::string(100'000, 'x'));
    EXPECT_EQ(written(), goldenFile("band"));
}

TEST_F(BandFile, LuidAbove32767IsWrittenAsANegativeNumberAndReadBack) {
    record().iLUID = 40000;
    EXPECT_NE(written().find("\nLUID: -25536 "), std::string::npos);
    record().iLUID = 0;
    EXPECT_EQ(ReadDevCfgFmFile("out"), 1);
    EXPECT_EQ(record().iLUID, 40000);
}

TEST_F(BandFile, BringsBackWhateverItWasWrittenFrom) {
    std::mt19937 random(1);
    for (int round = 0; round < 100; ++round) {
        fillAtRandom(random);
        const std::string before = image();
        written();
        EXPECT_EQ(image(), before) << "a write changes nothing";
        clear();
        EXPECT_EQ(ReadDevCfgFmFile("out"), 1);
        ASSERT_EQ(image(), before) << round;
    }
}

TEST_F(BandFile, SaysNothingToTheReaderAndSetsNoErrorWord) {
    iDevsFnd = 0;
    connectReader();
    record().iProduct = ZELTAGAPI_ZELBAND;
    record().lLastErr = 0x5A5A;
    EXPECT_EQ(ReadDevCfgFmFile((written(), "out")), 1);
    EXPECT_EQ(ReadDevCfgFmFile("missing"), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(record().lLastErr, 0x5A5A);
}

TEST_F(BandFile, IsThatOfTheActiveDevice) {
    iDevsFnd = 2;
    DevDat[1] = DevDat[0];
    DevDat[1].iLUID = 11;
    iActDev = 1;
    EXPECT_NE(written().find("\nLUID: 11 "), std::string::npos);
    EXPECT_EQ(load("Beeper: 3\n"), 1);
    EXPECT_EQ(DevDat[0].Band.Beeper, 0);
    EXPECT_EQ(DevDat[1].Band.Beeper, 3);
}

TEST_F(BandFile, IsNotCreatedWhereNoFileCanBe) {
    const auto files = openDescriptors();
    for (const char* name : {"", "/", ".", "no/such/folder"})
        EXPECT_EQ(WriteDevCfgToFile(name), 0) << name;
    EXPECT_EQ(WriteDevCfgToFile(nullptr), 0);
    EXPECT_EQ(openDescriptors(), files);
}

TEST_F(BandFile, IsRefusedWhenItCannotBeReadOrHasAnotherTitle) {
    const std::string before = image();
    const auto files = openDescriptors();
    for (const char* name : {"", "missing", "/", "."})
        EXPECT_EQ(ReadDevCfgFmFile(name), 0) << name;
    EXPECT_EQ(ReadDevCfgFmFile(nullptr), 0);
    for (const std::string title :
         {"", "/--- zelTag and OEM Reader Configuration Template File ---",
          "/--- Sonar Configuration Template File ---",
          "//--- ZELBAND Configuration Template File ---",
          "//--- zelBand Configuration Template File --"})
        EXPECT_EQ(loadWhole(title + "\nBeeper: 7\n"), 0) << title;
    EXPECT_EQ(image(), before);
    EXPECT_EQ(openDescriptors(), files);
}

TEST_F(BandFile, HasItsTitleWithinTheFirst257Bytes) {
    const std::string title = "--- zelBand Configuration Template File ---";
    const std::string rest = "\nBeeper: 7\n";
    EXPECT_EQ(loadWhole(std::string(257 - title.size(), 'x') + title + rest), 1);
    EXPECT_EQ(loadWhole(std::string(258 - title.size(), 'x') + title + rest), 0);
    EXPECT_EQ(loadWhole("Beeper: 9\n" + std::string(3, '\0') + title), 1) << "behind a zero byte";
    EXPECT_EQ(band().Beeper, 9) << "lines in front of the title are taken too";
}

TEST_F(BandFile, IsServedByTheCharacterCallsTheWrongWayRound) {
    const auto name = [](int (*call)(short, short)) {
        call(0, 'f');
        return call(255, 0);
    };
    EXPECT_EQ(name(writeDevCfgToFile_char), 0) << "reads a file that isn't there";
    EXPECT_EQ(name(readDevCfgFmFile_char), 1);
    EXPECT_TRUE(textOf("f").starts_with(kBandTitle));
    EXPECT_EQ(name(writeDevCfgToFile_char), 1);
}
