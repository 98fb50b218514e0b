// SPDX-License-Identifier: MIT
// The settings of the simulated reader, as a new user tries them.
#include "tests/cli/run_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace zel::test {

namespace {

using nlohmann::json;

json runJson(const Arguments& arguments) {
    const Ended run = runZeltag(arguments);
    EXPECT_EQ(run.exit, 0) << run.err;
    return json::parse(run.out);
}

TEST(SimulatedSettings, AreShownByRecord) {
    const Ended shown = runZeltag({"config", "show", "--sim"});
    EXPECT_EQ(shown.exit, 0);
    EXPECT_TRUE(shown.out.starts_with("sim:zeltag-0\nCfgFlags\n  bFixLenDsp                 1  "
                                      "flag    Send as fixed length"))
        << shown.out;
    EXPECT_NE(shown.out.find("\n  iIDHoldTO            1000 ms  time    Card ID remains valid "),
              std::string::npos);
    EXPECT_EQ(shown.out.find("iPad"), std::string::npos);
}

TEST(SimulatedSettings, AreShownAsJson) {
    const json records = runJson({"config", "show", "--sim", "--json"}).at("records");
    EXPECT_EQ(records.size(), 10U);
    const json hold = {{"value", 1000},
                       {"kind", "time"},
                       {"unit", "ms"},
                       {"description", "Card ID remains valid for this msec time (50msec gran.)"}};
    EXPECT_EQ(records.at("TimeParms").at("iIDHoldTO"), hold);
    EXPECT_EQ(records.at("TimeParms").at("ExFeatures01").at("read_only"), true);
}

TEST(SimulatedSettings, OneIsPrintedAsItsBareNumber) {
    EXPECT_EQ(runZeltag({"config", "get", "IIDHOLDTO", "--sim"}), (Ended{0, "1000\n", ""}));
}

TEST(SimulatedSettings, ValueThatTheReaderRoundsIsToldAsKept) {
    EXPECT_EQ(runZeltag({"config", "set", "iIDHoldTO=2030", "--sim"}).out,
              "TimeParms.iIDHoldTO  1000 ms -> 2030 ms, kept as 2000 ms: "
              "the reader counts in steps of 50 ms\n");
    EXPECT_EQ(runZeltag({"config", "set", "iIDBitCnt=0xC8", "--sim"}).out,
              "IDBitCnts.iIDBitCnt  16 -> 200, but the reader kept 72\n");
}

TEST(SimulatedSettings, ChangeIsAnObjectWithJson) {
    const json expected = {
        {"device", {{"index", 0}, {"name", "sim:zeltag-0"}}},
        {"config", 0},
        {"written", true},
        {"changes",
         {{{"record", "CfgFlags2"}, {"name", "bBeepID"}, {"old", 0}, {"new", 1}, {"kept", 1}}}}};
    EXPECT_EQ(runJson({"config", "set", "bbeepid=1", "--sim", "--json"}), expected);
}

TEST(SimulatedSettings, ResetWithoutATerminalNeedsYes) {
    const Ended refused{64, "",
                        "zeltag: a reset overwrites the settings and nobody can be asked; "
                        "add --yes to do it\n"};
    if (isatty(STDIN_FILENO) == 0) {
        EXPECT_EQ(runZeltag({"config", "reset", "--sim"}), refused);
    }
    EXPECT_EQ(runJson({"config", "reset", "--yes", "--sim", "--json"}).at("defaults"), "factory");
}

TEST(SimulatedSettings, ResetToDefaultsThatTheReaderDoesNotHaveFails) {
    EXPECT_EQ(runZeltag({"config", "reset", "--user", "--yes", "--sim"}),
              (Ended{1, "", "zeltag: sim:zeltag-0 has no user's defaults; try --factory\n"}));
}

TEST(SimulatedSettings, AssignmentsThatCantBeAreRefusedBeforeAConnect) {
    const auto line = [](const Arguments& assignments) {
        Arguments arguments = {"config", "set"};
        arguments.insert(arguments.end(), assignments.begin(), assignments.end());
        const Ended run = runZeltag(arguments);
        EXPECT_EQ(run.exit, 64);
        return run.err;
    };
    EXPECT_EQ(line({"bBeepID"}), "zeltag: bBeepID sets nothing; write NAME=VALUE\n");
    EXPECT_EQ(line({"bBeepID=on"}),
              "zeltag: bBeepID: on is no whole number; write a number such as 16 or 0x10\n");
    EXPECT_EQ(line({"bBeepID=1", "CfgFlags2.bbeepid=0"}),
              "zeltag: bBeepID is set twice; set it once\n");
    EXPECT_EQ(line({"iTPCfgFlg3=1"}), "zeltag: iTPCfgFlg3 is read-only; it tells what the reader "
                                      "is or follows from other settings\n");
    EXPECT_EQ(line({"LEDCtrl.iPad4=1"}), "zeltag: LEDCtrl.iPad4 is padding and can't be set; "
                                         "`zeltag config show` lists the settings\n");
    EXPECT_EQ(line({"LEDCtrl.bVolatile=1", "bBeepID=1"}),
              "zeltag: a volatile change acts at once and can't go with changes that are kept; "
              "set them in two steps\n");
}

TEST(SimulatedSettings, LuidIsToldOldAndNew) {
    EXPECT_EQ(runZeltag({"luid", "65535", "--sim"}),
              (Ended{0, "LUID of sim:zeltag-0  7 -> 65535\n", ""}));
}

TEST(SimulatedSettings, InfoTellsAllOfTheReader) {
    EXPECT_EQ(runZeltag({"info", "--sim"}), (Ended{0,
                                                   "name            sim:zeltag-0\n"
                                                   "product         zelTag\n"
                                                   "filter list     5A3E:9D23 Norvanex\n"
                                                   "LUID            7\n"
                                                   "device ID       322\n"
                                                   "part number     ZT7\n"
                                                   "firmware        3.2\n"
                                                   "firmware file   ZT7_0302\n"
                                                   "version words   -\n"
                                                   "configurations  1\n"
                                                   "card types      -\n"
                                                   "beeper volume   2\n"
                                                   "radio           -\n"
                                                   "serial number   ZT7-000-007\n",
                                                   ""}));
}

} // namespace

} // namespace zel::test
