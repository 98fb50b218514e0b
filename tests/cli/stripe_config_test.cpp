// SPDX-License-Identifier: MIT
// `zeltag config` on a magnetic stripe reader: show, get, set, reset.
#include "tests/cli/stripe_test.h"

#include <algorithm>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

class StripeConfig : public StripeTest {
protected:
    static std::string get(const std::string& name) {
        return run({"config", "get", name.c_str()}).out;
    }
};

TEST_F(StripeConfig, ShowListsTheKeysOfTheFile) {
    const CommandRun shown = run({"config", "show"});
    EXPECT_EQ(shown.exit, ExitCode::Done);
    EXPECT_TRUE(shown.out.starts_with("COM1:\n"
                                      "  LUID                             0  number\n"
                                      "  HaltKBSend                       0  flag\n"
                                      "  UseNumKP                         0  flag\n"
                                      "  TrackEnables                     7  number\n"
                                      "  Beeper                          25  number\n"
                                      "  LedColor[0]                      1  number\n"))
        << shown.out;
    EXPECT_TRUE(shown.out.ends_with("  UserField[10].Keybyte[15]        0  number\n"
                                    "  KeyPressTime                  8 ms  time\n"
                                    "  KeyReleaseTime                8 ms  time\n"));
    EXPECT_EQ(std::count(shown.out.begin(), shown.out.end(), '\n'), 1 + 309);
}

TEST_F(StripeConfig, ShowTellsValueAndKindInJson) {
    const json shown = runJson({"config", "show"});
    EXPECT_EQ(shown.at("configurations"), 1);
    EXPECT_EQ(shown.at("settings").size(), 309U);
    EXPECT_EQ(shown.at("settings").at("KeyPressTime"),
              (json{{"value", 8}, {"kind", "time"}, {"unit", "ms"}}));
    EXPECT_EQ(shown.at("settings").at("UserField[0].Enable"),
              (json{{"value", 1}, {"kind", "flag"}}));
}

TEST_F(StripeConfig, GetPrintsOneInAnyCase) {
    reader().settings().field[10].second[7] = 0xFE;
    EXPECT_EQ(get("userfield[10].keybyte[15]"), "254\n");
    EXPECT_EQ(runJson({"config", "get", "TrackEnables"}),
              (json{{"device", device()}, {"config", 0}, {"name", "TrackEnables"}, {"value", 7}}));
}

TEST_F(StripeConfig, EachSettingIsWrittenAndReadBack) {
    const json before = runJson({"config", "show"}).at("settings");
    std::vector<std::string> assignments;
    json wanted = json::object();
    for (const auto& [name, setting] : before.items()) {
        const int value = setting.at("value");
        const std::string kind = setting.at("kind");
        wanted[name] = kind == "time" ? value + 4 : value ^ 1;
        assignments.push_back(name + "=" + wanted.at(name).dump());
    }
    std::vector<const char*> arguments = {"config", "set"};
    for (const std::string& assignment : assignments)
        arguments.push_back(assignment.c_str());
    ASSERT_EQ(run(arguments).exit, ExitCode::Done);
    const json shown = runJson({"config", "show"}).at("settings");
    json after = json::object();
    for (const auto& [name, setting] : shown.items())
        after[name] = setting.at("value");
    EXPECT_EQ(after, wanted);
}

TEST_F(StripeConfig, SetTellsOldAndNewAndReachesTheFlash) {
    EXPECT_EQ(
        run({"config", "set", "TrackEnables=2", "UserField[1].Length=0x10"}),
        (CommandRun{ExitCode::Done, "TrackEnables  7 -> 2\nUserField[1].Length  32 -> 16\n", ""}));
    EXPECT_EQ(reader().committed().system[0], 2);
    EXPECT_EQ(reader().committed().field[1].control[3], 16);
}

TEST_F(StripeConfig, TimeIsKeptInStepsOf4Milliseconds) {
    EXPECT_EQ(run({"config", "set", "KeyPressTime=7"}),
              (CommandRun{ExitCode::Done,
                          "KeyPressTime  8 ms -> 7 ms, kept as 4 ms: the reader counts in steps "
                          "of 4 ms\n",
                          ""}));
}

TEST_F(StripeConfig, SetIsToldInJson) {
    EXPECT_EQ(
        runJson({"config", "set", "LedColor[4]=2"}),
        (json{{"device", device()},
              {"config", 0},
              {"written", true},
              {"changes",
               {{{"config", 0}, {"name", "LedColor[4]"}, {"old", 3}, {"new", 2}, {"kept", 2}}}}}));
}

TEST_F(StripeConfig, DryRunAndNeedlessSetWriteNothing) {
    EXPECT_EQ(run({"config", "set", "Beeper=0x22", "--dry-run"}).out,
              "Beeper  25 -> 34\nnothing was written: --dry-run\n");
    EXPECT_EQ(run({"config", "set", "Beeper=25"}).out,
              "Beeper  25 -> 25\nnothing was written: no value is new\n");
    EXPECT_EQ(reader().committed().system[5], 0x19);
}

TEST_F(StripeConfig, WrongAssignmentIsRefusedBeforeTheLineIsOpened) {
    const auto line = [](const char* assignment) {
        return run({"config", "set", "HaltKBSend=1", assignment}).err;
    };
    EXPECT_EQ(line("LedColor[0]=4"), "zeltag: LedColor[0] can't be 4; it takes 0 to 3\n");
    EXPECT_EQ(line("KeyPressTime=1021"),
              "zeltag: KeyPressTime can't be 1021; it takes 0 to 1020 ms\n");
    EXPECT_EQ(line("TrackEnables=-1"), "zeltag: TrackEnables can't be -1; it takes 0 to 7\n");
    EXPECT_EQ(line("UserField[0].nKeys=17"),
              "zeltag: UserField[0].nKeys can't be 17; it takes 0 to 16\n");
    EXPECT_EQ(line("Beeper=x"),
              "zeltag: Beeper: x is no whole number; write a number such as 16 or 0x10\n");
    EXPECT_EQ(line("Beeper"), "zeltag: Beeper sets nothing; write NAME=VALUE\n");
    EXPECT_EQ(line("haltkbsend=0"), "zeltag: HaltKBSend is set twice; set it once\n");
    EXPECT_EQ(line("KeyPresTime=4"),
              "zeltag: there is no setting KeyPresTime of a magnetic stripe reader; did you mean "
              "KeyPressTime?\n");
    EXPECT_EQ(lines().opens(), 0);
}

TEST_F(StripeConfig, SettingOfTheOtherKindOfReaderIsRefused) {
    EXPECT_EQ(run({"config", "get", "iIDHoldTO"}),
              refused(ExitCode::Usage, "COM1: has no setting iIDHoldTO: it is a zelBand; "
                                       "`zeltag config show` lists its settings"));
    EXPECT_EQ(run({"config", "set", "iIDHoldTO=1000"}).exit, ExitCode::Usage);
    plugReader("a");
    EXPECT_EQ(runCommand({"config", "set", "Beeper=1"}),
              refused(ExitCode::Usage, "a has no setting Beeper: it is a zelTag; "
                                       "`zeltag config show` lists its settings"));
    EXPECT_EQ(runCommand({"config", "get", "Beeper"}).exit, ExitCode::Usage);
}

TEST_F(StripeConfig, WriteThatFailsIsToldWithItsErrorWord) {
    reader().onBytes = [this](const std::string& bytes) {
        if (bytes.starts_with("FR"))
            reader().fail(sim::BandFault::WrongFirstByte, 1, 1);
    };
    EXPECT_EQ(run({"config", "set", "Beeper=1"}),
              refused(ExitCode::Failed,
                      "writing COM1: failed (library error 0x20001); check its cable, then look "
                      "at `zeltag config show`"));
}

TEST_F(StripeConfig, ResetReturnsToTheFactorysDefaults) {
    run({"config", "set", "TrackEnables=1"});
    EXPECT_EQ(run({"config", "reset", "--yes"}).out, "COM1: is back at the factory's defaults\n");
    EXPECT_EQ(get("TrackEnables"), "7\n");
}

TEST_F(StripeConfig, ItHasOneConfigurationAndNoUsersDefaults) {
    EXPECT_EQ(run({"config", "show", "--config", "1"}),
              refused(ExitCode::Usage, "COM1: has no configuration 1; its only one is 0"));
    EXPECT_EQ(run({"config", "reset", "--user", "--yes"}),
              refused(ExitCode::Failed, "COM1: has no user's defaults; try --factory"));
}

} // namespace

} // namespace zel::test
