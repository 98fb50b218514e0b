// SPDX-License-Identifier: MIT
// What a scenario may say, and what it is told when it is wrong.
#include "sim/scene/scenario.h"

#include <gtest/gtest.h>
#include <ostream>

namespace zel::sim {

namespace {

const std::string kDoor = "format = 1\n[[device]]\nname = \"door\"\nkind = \"zelTag\"\n";
const std::string kTill = "[[device]]\nname = \"till\"\nkind = \"zelBand\"\n";

Scenario readWell(const std::string& text) {
    const auto scenario = parseScenario(text, "s.toml");
    if (const auto* const trouble = std::get_if<Trouble>(&scenario))
        ADD_FAILURE() << asLine(*trouble);
    return std::holds_alternative<Scenario>(scenario) ? std::get<Scenario>(scenario) : Scenario{};
}

TEST(ScenarioFile, NeedsNoMoreThanADevice) {
    const Scenario scenario = readWell(kDoor);
    ASSERT_EQ(scenario.devices.size(), 1U);
    EXPECT_EQ(scenario.devices[0].name, "door");
    EXPECT_EQ(scenario.devices[0].at, "usb");
    EXPECT_EQ(scenario.repeat, 0);
}

TEST(ScenarioFile, OfTheExamplesIsRight) {
    const auto scenario = readScenario(ZEL_EXAMPLES "scenario.toml");
    ASSERT_TRUE(std::holds_alternative<Scenario>(scenario)) << asLine(std::get<Trouble>(scenario));
    EXPECT_EQ(std::get<Scenario>(scenario).devices.size(), 3U);
}

TEST(ScenarioFile, ThatIsMissingIsTold) {
    const auto scenario = readScenario("/nowhere/s.toml");
    ASSERT_TRUE(std::holds_alternative<Trouble>(scenario));
    EXPECT_EQ(std::get<Trouble>(scenario).exit, Exit::MissingFile);
    EXPECT_EQ(std::get<Trouble>(scenario).message, "/nowhere/s.toml: No such file or directory");
}

TEST(ScenarioFile, NamesTheDeviceOfAnEventThatFitsOneOnly) {
    const Scenario scenario = readWell(kDoor + kTill + "[[event]]\nat = 1\ntap = \"1:2\"\n");
    ASSERT_EQ(scenario.events.size(), 1U);
    EXPECT_EQ(scenario.events[0].device, "door");
}

TEST(ScenarioFile, TellsWordsWithOrWithoutTheirRecord) {
    const Scenario scenario =
        readWell(kDoor + "settings = { TimeParms.iIDHoldTO = 1500, bHaltKBSnd = true }\n");
    ASSERT_EQ(scenario.devices[0].settings.size(), 2U);
    EXPECT_EQ(scenario.devices[0].settings[0].name, "TimeParms.iIDHoldTO");
    EXPECT_EQ(scenario.devices[0].settings[1].name, "CfgFlags.bHaltKBSnd");
    EXPECT_EQ(scenario.devices[0].settings[1].value, 1);
}

TEST(ScenarioFile, HasEveryKindOfDevice) {
    for (const Kind& kind : allKinds())
        readWell("format = 1\n[[device]]\nname = \"x\"\nkind = \"" + std::string(kind.name) +
                 "\"\n");
}

struct Wrong {
    std::string text;
    std::string line; // what is told
};

void PrintTo(const Wrong& wrong, std::ostream* stream) { *stream << wrong.line; }

class WrongScenario : public ::testing::TestWithParam<Wrong> {};

TEST_P(WrongScenario, IsRefusedWithItsLineAndWhatIsAllowed) {
    const auto scenario = parseScenario(GetParam().text, "s.toml");
    ASSERT_TRUE(std::holds_alternative<Trouble>(scenario));
    EXPECT_EQ(asLine(std::get<Trouble>(scenario)), GetParam().line);
    EXPECT_EQ(std::get<Trouble>(scenario).exit, Exit::DamagedFile);
}

const std::string kCard = "[[card]]\nname = \"c\"\n"; // lines 5 and 6 behind the door
const std::string kEvent = "[[event]]\nat = 1\n";     // likewise

INSTANTIATE_TEST_SUITE_P(
    Head, WrongScenario,
    ::testing::Values(
        Wrong{"", "s.toml:1: a scenario has no format; add format = NUMBER"},
        Wrong{"format = 2", "s.toml:1: format isn't a whole number in its range; write one from 1 "
                            "to 1"},
        Wrong{"format = 1", "s.toml: a scenario has no device; add [[device]]"},
        Wrong{"format = 1\nrepeet = 3", "s.toml:2: a scenario has no key repeet; did you mean "
                                        "repeat?"},
        Wrong{"format = 1\nrepeat = 0.01",
              "s.toml:2: repeat is too short; write 0.1 seconds or more"},
        Wrong{"format = 1\nrepeat = \"x\"",
              "s.toml:2: repeat isn't a number of seconds; write one such as 1.5"},
        Wrong{"repeat = 1\n" + kDoor + kEvent + "tap = \"1:1\"",
              "s.toml:6: this event comes behind the end of a turn; let repeat be more than its "
              "time, or leave repeat out"},
        Wrong{"format = 1\ndevice = 3", "s.toml:2: device isn't a list of tables; write each as "
                                        "[[device]]"}));

INSTANTIATE_TEST_SUITE_P(
    Card, WrongScenario,
    ::testing::Values(
        Wrong{kDoor + kCard, "s.toml:5: [[card]] has neither id nor tracks; write FACILITY:NUMBER "
                             "such as 26:3512 for 26 bits, or ID/BITS such as 0x123456789/37"},
        Wrong{kDoor + kCard + "id = \"x\"",
              "s.toml:7: id isn't a card's number; write FACILITY:NUMBER such as 26:3512 for 26 "
              "bits, or ID/BITS such as 0x123456789/37"},
        Wrong{kDoor + kCard + "id = 3", "s.toml:7: id isn't a text; write it in quotes"},
        Wrong{kDoor + kCard + "id = \"1:1\"\ndata = \"" + std::string(41, 'x') + "\"",
              "s.toml:8: data is too long; a card holds 40 bytes"},
        Wrong{kDoor + kCard + "data = \"x\"\ntracks = [\"%?\"]",
              "s.toml:7: data without an id; add id, or leave data out"},
        Wrong{
            kDoor + kCard + "tracks = [\"%a?\"]",
            "s.toml:7: track 1 can't hold 'a'; write capitals, digits and signs, as %B0000^NAME?"},
        Wrong{kDoor + kCard + "tracks = [1]",
              "s.toml:7: tracks isn't a list of texts; write [\"...\", \"...\"]"},
        Wrong{kDoor + kCard + "id = \"1:1\"\n" + kCard + "id = \"1:2\"",
              "s.toml:9: there are two cards c; give one another name"}));

INSTANTIATE_TEST_SUITE_P(
    Device, WrongScenario,
    ::testing::Values(
        Wrong{"format = 1\n[[device]]\nkind = \"zelTag\"",
              "s.toml:2: [[device]] has no name; add name = \"...\""},
        Wrong{"format = 1\n[[device]]\nname = \"a\"\nkind = \"zelFoo\"",
              "s.toml:4: there is no kind zelFoo; write one of zelTag, TagPlus, TagAdv, KQ7, "
              "zelBand, zelEcho"},
        Wrong{kDoor + "luidd = 1", "s.toml:5: [[device]] has no key luidd; did you mean luid?"},
        Wrong{kDoor + "luid = 65536",
              "s.toml:5: luid isn't a whole number in its range; write one from 0 to 65535"},
        Wrong{kDoor + "at = \"ttyS0\"", "s.toml:5: \"ttyS0\" is no place; write \"usb\", "
                                        "\"bridge\" or the path of a line such as "
                                        "\"/dev/ttySIM1\""},
        Wrong{"format = 1\n" + kTill + "at = \"bridge\"",
              "s.toml:5: a zelBand can't be behind a bridge; write \"usb\" or the path of a line"},
        Wrong{"format = 1\n[[device]]\nname = \"a\"\nkind = \"zelEcho\"\nat = \"/dev/ttyS0\"",
              "s.toml:5: a zelEcho has no serial line; write \"usb\""},
        Wrong{kDoor + "at = \"bridge\"\n[[device]]\nname = \"b\"\nkind = \"KQ7\"\nat = \"bridge\"",
              "s.toml:9: door is at bridge already; give one of them another place"},
        Wrong{kDoor + "[[device]]\nname = \"door\"\nkind = \"KQ7\"",
              "s.toml:6: there are two devices door; give one another name"},
        Wrong{kDoor + "configurations = 2",
              "s.toml:5: a zelTag has one configuration; leave configurations out, or let kind be "
              "\"TagPlus\""},
        Wrong{"format = 1\n" + kTill + "firmware = \"1.2\"",
              "s.toml:5: firmware of a zelBand has four digits; write it as \"0123\""},
        Wrong{"format = 1\n" + kTill + "serial = \"1\"",
              "s.toml:5: a zelBand tells no serial number; leave serial out"},
        Wrong{kDoor + "serial = \"" + std::string(33, '1') + "\"",
              "s.toml:5: serial is too long; 32 characters find room"}));

INSTANTIATE_TEST_SUITE_P(
    Settings, WrongScenario,
    ::testing::Values(
        Wrong{kDoor + "settings = 1", "s.toml:5: settings isn't a table; write { WORD = NUMBER }"},
        Wrong{kDoor + "settings = { iIDHoldTo = 1000 }",
              "s.toml:5: a zelTag has no setting iIDHoldTo; did you mean iIDHoldTO?"},
        Wrong{kDoor + "settings = { TimeParms.iIDHoldT = 1000 }",
              "s.toml:5: a zelTag has no setting TimeParms.iIDHoldT; did you mean "
              "TimeParms.iIDHoldTO?"},
        Wrong{kDoor + "settings = { iIDHoldTO = 1001 }",
              "s.toml:5: TimeParms.iIDHoldTO counts in steps of 50; write a multiple of it from 0 "
              "to 12750"},
        Wrong{kDoor + "settings = { bHaltKBSnd = 2 }",
              "s.toml:5: CfgFlags.bHaltKBSnd isn't a whole number in its range; write one from 0 "
              "to 1"},
        Wrong{"format = 1\n" + kTill + "settings = { \"LedColor[5]\" = 1 }",
              "s.toml:5: a zelBand has no setting LedColor[5]; did you mean LedColor[0]?"}));

INSTANTIATE_TEST_SUITE_P(
    Event, WrongScenario,
    ::testing::Values(
        Wrong{kDoor + kEvent, "s.toml:5: [[event]] tells nothing that happens; add one of tap, "
                              "remove, swipe, distance, unplug, plug, fail"},
        Wrong{kDoor + kEvent + "tap = \"1:1\"\nremove = true",
              "s.toml:8: an event is one thing, and this one is tap, remove; make several events "
              "of it"},
        Wrong{kDoor + kEvent + "tap = \"nobody\"",
              "s.toml:7: \"nobody\" is no card of the scenario and no number of one; write "
              "FACILITY:NUMBER such as 26:3512 for 26 bits, or ID/BITS such as 0x123456789/37"},
        Wrong{kDoor + kEvent + "remove = false",
              "s.toml:7: remove can only be true; leave it out where it is false"},
        Wrong{kDoor + kEvent + "remove = true\nfor = 1",
              "s.toml:8: for belongs to tap; leave it out"},
        Wrong{kDoor + kEvent + "remove = true\ncount = 1",
              "s.toml:8: count belongs to fail; leave it out"},
        Wrong{kDoor + kEvent + "swipe = \"c\"",
              "s.toml:7: \"c\" is no card with tracks of the scenario; write the tracks, such as "
              "\"%B0000^SIMULATED?\" \";0000=0?\""},
        Wrong{kDoor + kEvent + "swipe = [\"%?\"]",
              "s.toml:5: there is no device that reads magnetic stripes; add one to the scenario"},
        Wrong{kDoor + kEvent + "device = \"dor\"\nremove = true",
              "s.toml:7: there is no device dor; did you mean door?"},
        Wrong{kDoor + kEvent + "device = \"door\"\ndistance = 3",
              "s.toml:7: door is a zelTag, none that measures a distance; name another device"},
        Wrong{kDoor + kTill + kEvent + "unplug = true",
              "s.toml:8: several devices may be meant; name one of these: door, till"},
        Wrong{kDoor + kEvent + "distance = 74",
              "s.toml:7: distance isn't a whole number in its range; write one from 0 to 73"},
        Wrong{kDoor + kEvent + "fail = \"nxt-write\"",
              "s.toml:7: there is no fault nxt-write; did you mean next-write?"},
        Wrong{kDoor + kEvent + "fail = \"hang-up\"",
              "s.toml:7: door has no fault hang-up at usb; write one of none, open, next-write, "
              "next-read, no-answer, short-answer, wrong-byte, all-ones, garbage"},
        Wrong{kDoor + kEvent + "fail = \"open\"\ncount = 2",
              "s.toml:8: open lasts until none; leave count out"},
        Wrong{kDoor + "[[event]]\nat = -1\nremove = true",
              "s.toml:6: at isn't a number of seconds; write one such as 1.5"},
        Wrong{kDoor + "[[event]]\nremove = true",
              "s.toml:5: [[event]] has no at; add at = SECONDS"}));

TEST(ScenarioFile, ThatIsNoTomlIsTold) {
    const auto scenario = parseScenario("format = 1\nname = \n", "s.toml");
    ASSERT_TRUE(std::holds_alternative<Trouble>(scenario));
    EXPECT_TRUE(std::get<Trouble>(scenario).message.starts_with("s.toml:2: "));
}

} // namespace

} // namespace zel::sim
