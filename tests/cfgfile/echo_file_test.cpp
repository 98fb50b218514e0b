// SPDX-License-Identifier: MIT
// A sensor's file as it is written, and what a load makes of a whole one.
#include "tests/cfgfile/echo_file_test.h"

#include <array>
#include <bit>
#include <random>

using namespace zel::test;

namespace {

class EchoFile : public EchoFileTest {
protected:
    // The words of files/echo.txt.
    static void fill() {
        record().iDID = 0x04AB;
        echo().sSonarParms = std::bit_cast<sSonarParms>(counted<8>(100));
        echo().sWalkAwayParms = std::bit_cast<sWalkAwayParms>(counted<16>(200));
        echo().sWalkUpParms = std::bit_cast<sWalkUpParms>(counted<16>(300));
        echo().sIdleParms = std::bit_cast<sIdleParms>(counted<8>(-3));
    }

    // Any words that the checks accept.
    static void fillAtRandom(std::mt19937& random) {
        const auto any = [&](int least, int most) {
            return static_cast<std::int16_t>(std::uniform_int_distribution(least, most)(random));
        };
        for (std::int16_t* word = &echo().sSonarParms.LEDFlagsS; word != end(); ++word)
            *word = any(INT16_MIN, INT16_MAX);
        echo().sSonarParms.PingRateS = any(200, 1020);
        echo().sSonarParms.MinDistS = any(1, 59);
        echo().sSonarParms.MaxDistS = any(15, 72);
        echo().sWalkAwayParms.KeyCountWA = any(INT16_MIN, 6);
        echo().sWalkAwayParms.InterKeyDelayWA = any(64, 16320);
        echo().sWalkUpParms.KeyCountWU = any(INT16_MIN, 6);
        echo().sWalkUpParms.InterKeyDelayWU = any(64, 16320);
    }

    static std::string written() {
        EXPECT_EQ(WriteDevCfgToFile("out"), 1);
        return textOf("out");
    }

private:
    template <std::size_t Count> static std::array<std::int16_t, Count> counted(int first) {
        std::array<std::int16_t, Count> words;
        for (std::int16_t& word : words)
            word = static_cast<std::int16_t>(first++);
        return words;
    }
    static std::int16_t* end() { return reinterpret_cast<std::int16_t*>(&echo().sIdleParms + 1); }
};

} // namespace

TEST_F(EchoFile, IsWrittenToTheByte) {
    fill();
    EXPECT_EQ(written(), goldenFile("echo"));
}

TEST_F(EchoFile, IsWrittenOfSettingsThatWereNeverRead) {
    fill();
    const std::string before = image();
    EXPECT_EQ(echo().bEchoCfgValid, 0U);
    EXPECT_EQ(written(), goldenFile("echo"));
    EXPECT_EQ(image(), before) << "and changes nothing";
}

TEST_F(EchoFile, ShowsTheDeviceIdByItsNibbles) {
    record().iDID = 0xABCD;
    record().iFWVer = 0x1234;
    EXPECT_NE(written().find("\n:Device FW Version: 1011.1213 \n\n"), std::string::npos);
}

TEST_F(EchoFile, TakesItsTextsFromTheExportedTables) {
    const tsNamePair row = SonarParmsStr[0];
    SonarParmsStr[0] = {"Renamed", "100 %s of it"};
    EXPECT_NE(written().find("\nRenamed = 1     / 100 %s of it\n"), std::string::npos);
    EXPECT_EQ(load("Renamed = 8\nLEDFlagsS = 9\n"), 1);
    EXPECT_EQ(echo().sSonarParms.LEDFlagsS, 8);
    SonarParmsStr[0] = row;
}

TEST_F(EchoFile, ShowsNothingForANullTextOfATable) {
    const tsNamePair row = IdleParmsStr[1];
    IdleParmsStr[1] = {nullptr, nullptr};
    EXPECT_NE(written().find("\n = 60     / \nKey1ModsI = 2     / "), std::string::npos);
    EXPECT_EQ(load("PressRateI = 3\nKey1CodeI = 4\n"), 1);
    EXPECT_EQ(echo().sIdleParms.PressRateI, 60);
    EXPECT_EQ(echo().sIdleParms.Key1CodeI, 4);
    IdleParmsStr[1] = row;
}

TEST_F(EchoFile, BringsBackWhateverItWasWrittenFrom) {
    std::mt19937 random(1);
    for (int round = 0; round < 100; ++round) {
        fillAtRandom(random);
        const std::string before = image();
        written();
        fillAccepted();
        EXPECT_EQ(ReadDevCfgFmFile("out"), 1);
        EXPECT_EQ(marks(), "1111");
        clearMarks();
        ASSERT_EQ(image(), before) << round;
    }
}

TEST_F(EchoFile, WithNothingInItMarksAllFourRecords) {
    const std::string before = image();
    EXPECT_EQ(load(""), 1);
    EXPECT_EQ(marks(), "1111");
    clearMarks();
    EXPECT_EQ(image(), before);
}

TEST_F(EchoFile, NeedsNoReadOfTheSensorFirst) {
    EXPECT_EQ(load("StartDlyS = 9\n"), 1);
    EXPECT_EQ(echo().bEchoCfgValid, 0U);
    EXPECT_EQ(echo().sSonarParms.StartDlyS, 9);
}

TEST_F(EchoFile, WithAWordOutOfRangeLeavesItsRecordEntirely) {
    const sSonarParms before = echo().sSonarParms;
    record().lLastErr = 0x5A5A;
    EXPECT_EQ(load("LEDFlagsS = 4\nPingRateS = 1500\nMinDistS = 20\nPressRateI = 7\n"), 1);
    EXPECT_TRUE(isSame(echo().sSonarParms, before));
    EXPECT_EQ(echo().sIdleParms.PressRateI, 7) << "the other records load";
    EXPECT_EQ(marks(), "0111");
    EXPECT_EQ(record().lLastErr, 0) << "the last record clears the refusal";
}

TEST_F(EchoFile, HasThreeRecordsThatMayBeRefused) {
    EXPECT_EQ(load("KeyCountWA = 7\nKey1ModsI = 99"), 1);
    EXPECT_EQ(marks(), "1011");
    clearMarks();
    EXPECT_EQ(load("InterKeyDelayWU = 63\nKey1ModsWU = 99\nKey1ModsWA = 99"), 1);
    EXPECT_EQ(marks(), "1101");
    EXPECT_EQ(echo().sWalkUpParms.Key1ModsWU, 6);
    EXPECT_EQ(echo().sWalkAwayParms.Key1ModsWA, 99);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(EchoFile, TakesDistancesBelowThoseOfTheDescriptions) {
    EXPECT_EQ(load("MinDistS = 5\nMaxDistS = 72\n"), 1);
    EXPECT_EQ(echo().sSonarParms.MinDistS, 5);
    EXPECT_EQ(echo().sSonarParms.MaxDistS, 72);
    EXPECT_EQ(marks(), "1111");
}

TEST_F(EchoFile, OfAProximityReaderPassesAndSetsWhatWas) {
    const std::string before = image();
    EXPECT_EQ(load(goldenFile("plain")), 1);
    EXPECT_EQ(marks(), "1111");
    clearMarks();
    EXPECT_EQ(image(), before);
}

TEST_F(EchoFile, TakesReservedWordsIntoMemory) {
    EXPECT_EQ(load("Reserved1S = 21\nReserved2WU = 22\nReserved1I = 23\nMinFltRepRate = 24\n"), 1);
    EXPECT_EQ(echo().sSonarParms.Reserved1S, 21);
    EXPECT_EQ(echo().sWalkUpParms.Reserved2WU, 22);
    EXPECT_EQ(echo().sIdleParms.Reserved1I, 23);
    EXPECT_EQ(echo().sWalkAwayParms.MinFltRepRate, 24);
}

TEST_F(EchoFile, SaysNothingToTheSensor) {
    iDevsFnd = 0;
    connectReader();
    fillAccepted();
    record().iProduct = ZELTAGAPI_ZELECHO;
    EXPECT_EQ(ReadDevCfgFmFile((written(), "out")), 1);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(EchoFile, ThatCannotBeOpenedOrCreatedIsRefused) {
    const std::string before = image();
    const auto files = openDescriptors();
    for (const char* name : {"", "missing", "no/such/folder"})
        EXPECT_EQ(ReadDevCfgFmFile(name), 0) << name;
    for (const char* name : {"", "/", ".", "no/such/folder"})
        EXPECT_EQ(WriteDevCfgToFile(name), 0) << name;
    EXPECT_EQ(ReadDevCfgFmFile(nullptr), 0);
    EXPECT_EQ(WriteDevCfgToFile(nullptr), 0);
    EXPECT_EQ(image(), before);
    EXPECT_EQ(openDescriptors(), files);
}
