// SPDX-License-Identifier: MIT
// What lines a load of a sensor's file takes, and how a key finds its word.
#include "family/echo/echo.h"
#include "tests/cfgfile/echo_file_test.h"

#include <array>
#include <random>

using namespace zel::test;

namespace {

class EchoLines : public EchoFileTest {
protected:
    // What a load makes of a word that was 77.
    static int codeOf(const std::string& lines) {
        echo().sIdleParms.Key1CodeI = 77;
        EXPECT_EQ(load(lines), 1) << lines;
        return echo().sIdleParms.Key1CodeI;
    }
};

class SonarToken : public EchoFileTest {
protected:
    static int put(const char* name, int value) {
        return ProcessSonarTokenVal(name, value, reinterpret_cast<std::uint16_t*>(&area_));
    }
    // The words of the four records in order.
    static std::array<std::int16_t, 48> words() {
        std::array<std::int16_t, 48> all;
        std::memcpy(all.data(), &area_.sSonarParms, sizeof all);
        return all;
    }
    static inline tsEcho area_;

    SonarToken() { area_ = {}; }
};

constexpr int kUntouched = 77;

constexpr const char* kNames[48] = {
    "LEDFlagsS",  "PingRateS",       "Reserved1S", "MinDistS",        "MaxDistS",   "ORDBTmS",
    "IRDBTmS",    "StartDlyS",       "KeyCountWA", "InterKeyDelayWA", "Key1ModsWA", "Key2ModsWA",
    "Key3ModsWA", "Key4ModsWA",      "Key5ModsWA", "Key6ModsWA",      "Flags0WA",   "MinFltRepRate",
    "Key1CodeWA", "Key2CodeWA",      "Key3CodeWA", "Key4CodeWA",      "Key5CodeWA", "Key6CodeWA",
    "KeyCountWU", "InterKeyDelayWU", "Key1ModsWU", "Key2ModsWU",      "Key3ModsWU", "Key4ModsWU",
    "Key5ModsWU", "Key6ModsWU",      "Flags0WU",   "Reserved2WU",     "Key1CodeWU", "Key2CodeWU",
    "Key3CodeWU", "Key4CodeWU",      "Key5CodeWU", "Key6CodeWU",      "Reserved1I", "PressRateI",
    "Key1ModsI",  "Key1CodeI",       "FlagsI",     "DMTODeltaI",      "DMTOTmI",    "SNBlankTmI"};

} // namespace

TEST_F(EchoLines, AreTheSameInFourSpellings) {
    for (const char* line : {"Key1CodeI 12", "Key1CodeI,12", "Key1CodeI=12",
                             "  KEY1CODEI = 12 / text", "key1codei\t\t, = ,12", "\tKey1CodeI =12\n",
                             "=Key1CodeI 12", "\x80\xFF Key1CodeI 12", "Key1CodeI = 12 13\r\n"})
        EXPECT_EQ(codeOf(line), 12) << line;
}

TEST_F(EchoLines, WithoutAKeyOrANumberAreIgnored) {
    for (const char* line :
         {"", "\n", "   ", "Key1CodeI", "Key1CodeI =", "Key1CodeI = x", "Key1CodeI = / 5",
          "Key1CodeI: 5", "Key1CodeI;5", "Key1Code = 5", "Key1CodeII = 5", "5 = Key1CodeI"})
        EXPECT_EQ(codeOf(line), kUntouched) << line;
}

TEST_F(EchoLines, ThatBeginWithASlashOrAColonAreComments) {
    for (const char* line : {"/Key1CodeI = 5", " / Key1CodeI = 5", ":Key1CodeI = 5",
                             "\xFF:Key1CodeI = 5", "/ tsIdleParms"})
        EXPECT_EQ(codeOf(line), kUntouched) << line;
}

TEST_F(EchoLines, AreCommentsEvenWhereATableHasANameWithASlash) {
    const tsNamePair row = IdleParmsStr[3];
    IdleParmsStr[3] = {"/Code", ""};
    EXPECT_EQ(codeOf("/Code = 5\n"), kUntouched);
    EXPECT_EQ(codeOf("=/Code = 5\n"), 5);
    IdleParmsStr[3] = row;
}

TEST_F(EchoLines, HoldNumbersOf16Bits) {
    EXPECT_EQ(codeOf("Key1CodeI = 65535"), -1);
    EXPECT_EQ(codeOf("Key1CodeI = -2"), -2);
    EXPECT_EQ(codeOf("Key1CodeI = +3"), 3);
    EXPECT_EQ(codeOf("Key1CodeI = 0x10"), 0) << "the digit in front of the x";
    EXPECT_EQ(codeOf("Key1CodeI = 65540"), 4);
    EXPECT_EQ(codeOf("Key1CodeI = 12kg"), 12);
}

TEST_F(EchoLines, ComeUnderAnyHeadingAndTheLastOneOfAKeyCounts) {
    EXPECT_EQ(codeOf("/ tsSonarParms\nKey1CodeI = 1\nnonsense = 3\nStartDlyS = 6\nKEY1CODEI = 2"),
              2);
    EXPECT_EQ(echo().sSonarParms.StartDlyS, 6);
    EXPECT_EQ(echo().sSonarParms.PingRateS, 400) << "a word without a line stays";
}

TEST_F(EchoLines, WithAWordThatIsMendedLaterAreAccepted) {
    EXPECT_EQ(load("PingRateS = 1500\nPingRateS = 1000\n"), 1);
    EXPECT_EQ(echo().sSonarParms.PingRateS, 1000);
}

TEST_F(EchoLines, Of128CharactersAndMoreAreCut) {
    const std::string filling(126, 'x');
    EXPECT_EQ(codeOf(filling + "yKey1CodeI = 5\n"), 5);
    EXPECT_EQ(codeOf(filling + "Key1CodeI = 5\n"), kUntouched);
    EXPECT_EQ(codeOf("Key1CodeI = " + std::string(114, ' ') + "5\n"), 5) << "127 characters";
    EXPECT_EQ(codeOf("Key1CodeI = " + std::string(114, ' ') + "56\n"), 5) << "128 characters";
    EXPECT_EQ(codeOf("/" + filling + "Key1CodeI = 5\n"), 5) << "the rest is no comment";
}

TEST_F(EchoLines, EndAtAZeroByte) {
    EXPECT_EQ(codeOf(std::string("Key1CodeI = 1\0002\nStartDlyS = 3\n", 30)), 1);
    EXPECT_EQ(echo().sSonarParms.StartDlyS, 3);
    EXPECT_EQ(codeOf(std::string("\0Key1CodeI = 1\n", 15)), kUntouched);
}

TEST_F(EchoLines, OfRandomTextTouchTheFourRecordsAlone) {
    constexpr char kLetters[] = "=,\t /:\n\n0123456789 -x\xFF";
    std::mt19937 random(1);
    const auto any = [&](std::size_t count) { return static_cast<std::size_t>(random()) % count; };
    for (int round = 0; round < 200; ++round) {
        std::string text;
        while (text.size() < 600)
            if (any(6) == 0)
                text += kNames[any(48)] + std::string("=");
            else
                text += kLetters[any(std::size(kLetters))];
        tsEcho before = echo();
        EXPECT_EQ(load(text), 1);
        std::memcpy(&before.bDirtySonar, &echo().bDirtySonar,
                    offsetof(tsEcho, reserved) - offsetof(tsEcho, bDirtySonar));
        ASSERT_TRUE(isSame(echo(), before)) << text;
        ASSERT_TRUE(CheckSonarParms(&echo().sSonarParms, 0)) << "what was refused stayed out";
        ASSERT_TRUE(CheckWalkAwayParms(&echo().sWalkAwayParms, 0));
        ASSERT_TRUE(CheckWalkUpParms(&echo().sWalkUpParms, 0));
    }
}

TEST_F(SonarToken, GoesToTheWordOfItsName) {
    std::array<std::int16_t, 48> expected = {};
    for (std::size_t word = 0; word < expected.size(); ++word) {
        expected[word] = static_cast<std::int16_t>(word + 1);
        EXPECT_EQ(put(kNames[word], static_cast<int>(word + 1)), 1);
        ASSERT_EQ(words(), expected) << kNames[word];
    }
}

TEST_F(SonarToken, IsComparedWithoutCaseAndAsAWhole) {
    EXPECT_EQ(put("pingRATEs", -1), 1);
    EXPECT_EQ(area_.sSonarParms.PingRateS, -1);
    for (const char* name : {"PingRate", "PingRateSS", " PingRateS", "", "iLeadParityBitCnt"})
        EXPECT_EQ(put(name, 5), 0) << name;
    EXPECT_EQ(area_.sSonarParms.PingRateS, -1);
}

TEST_F(SonarToken, StoresTheLow16BitsWithoutARange) {
    EXPECT_EQ(put("PingRateS", 0x12345), 1);
    EXPECT_EQ(area_.sSonarParms.PingRateS, 0x2345);
}

TEST_F(SonarToken, OfTwoRowsOfOneNameGoesToTheFirst) {
    const tsNamePair row = SonarParmsStr[7];
    SonarParmsStr[7] = {"FlagsI", ""};
    EXPECT_EQ(put("FlagsI", 5), 1);
    SonarParmsStr[7] = row;
    EXPECT_EQ(area_.sSonarParms.StartDlyS, 5);
    EXPECT_EQ(area_.sIdleParms.FlagsI, 0);
}

TEST_F(SonarToken, NeedsANameAndRecords) {
    EXPECT_EQ(put(nullptr, 5), 0);
    EXPECT_EQ(ProcessSonarTokenVal("PingRateS", 5, nullptr), 0);
}
