// SPDX-License-Identifier: MIT
// The exported tables of the sensor's words: name and description, in the order of the records.
#include "frame/zelTagState.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

template <std::size_t Count> Rows rowsOf(const tsNamePair (&table)[Count]) {
    Rows rows;
    for (const tsNamePair& pair : table)
        rows.emplace_back(pair.name, pair.description);
    return rows;
}

Rows keyRows(const std::string& end, const std::string& ninth) {
    const char* const flags = "see API header File";
    return {{"KeyCount" + end, "Defined keys to follow (max 6 modifiers/keys)"},
            {"InterKeyDelay" + end, "dead time between key presses (msec) (min 64, max 16320)"},
            {"Key1Mods" + end, "Key Modifiers..."},
            {"Key2Mods" + end, ""},
            {"Key3Mods" + end, ""},
            {"Key4Mods" + end, ""},
            {"Key5Mods" + end, ""},
            {"Key6Mods" + end, ""},
            {"Flags0" + end, flags},
            {ninth, ""},
            {"Key1Code" + end, "Key Codes..."},
            {"Key2Code" + end, ""},
            {"Key3Code" + end, ""},
            {"Key4Code" + end, ""},
            {"Key5Code" + end, ""},
            {"Key6Code" + end, ""}};
}

} // namespace

TEST(EchoNames, AreThoseOfTheSonarRecord) {
    EXPECT_EQ(rowsOf(SonarParmsStr),
              (Rows{{"LEDFlagsS", "LED usage flags"},
                    {"PingRateS", "Ping rate (msec) (min 200, max 1020)"},
                    {"Reserved1S", "40KHz cycle cnt (READ ONLY)"},
                    {"MinDistS", "Minimum Distance acceptable (inches) (min 14, max 59)"},
                    {"MaxDistS", "Maximum Distance acceptable (inches) (min 15, max 60)"},
                    {"ORDBTmS", "debounce out of range time (sec/min)"},
                    {"IRDBTmS", "debounce in range time (sec/min)"},
                    {"StartDlyS", "cold start delay in seconds before joining USB"}}));
}

TEST(EchoNames, AreThoseOfTheKeysForSomebodyWhoWalksAway) {
    EXPECT_EQ(rowsOf(WalkAwayParmsStr), keyRows("WA", "MinFltRepRate"));
}

TEST(EchoNames, AreThoseOfTheKeysForSomebodyWhoWalksUp) {
    EXPECT_EQ(rowsOf(WalkUpParmsStr), keyRows("WU", "Reserved2WU"));
}

TEST(EchoNames, AreThoseOfTheIdleRecord) {
    EXPECT_EQ(
        rowsOf(IdleParmsStr),
        (Rows{{"Reserved1I", ""},
              {"PressRateI", "Periodic Press Rate (1 second units) - Zero disables (default)"},
              {"Key1ModsI", "Key 1 modifier bit flags"},
              {"Key1CodeI", "Key 1 code"},
              {"FlagsI", "see API header File"},
              {"DMTODeltaI", "DeadMan T0Delta, 3.472 * Distance (in) = DMTODelta"},
              {"DMTOTmI",
               "DeadMan Time (seconds) - Time till Declared Dead while Deltas never exceeded"},
              {"SNBlankTmI", "Sonar drive blanking time (43usec units)"}}));
}
