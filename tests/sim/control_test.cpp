// SPDX-License-Identifier: MIT
// The commands of a control connection.
#include "sim/scene/world.h"
#include "sim/server/control.h"
#include "sim/wire/line.h"

#include <gtest/gtest.h>
#include <ostream>

namespace zel::sim {

namespace {

class ControlConnection : public ::testing::Test {
protected:
    ~ControlConnection() override {
        usbBus().clear();
        lines().clear();
    }

    Json say(const std::string& line) { return control_.answer(line); }
    std::string error(const std::string& line) { return say(line).at("error").at("message"); }

    std::unique_ptr<World> world_ = World::demo();
    Control control_{*world_};
};

TEST_F(ControlConnection, TapsACardAndTellsTheDevice) {
    EXPECT_EQ(say(R"({"do":"tap","card":"26:3512"})"),
              (Json{{"done", "tap"}, {"device", "zeltag-0"}}));
    EXPECT_EQ(say(R"({"do":"state"})")["devices"][0]["card"],
              (Json{{"bits", 26}, {"id", "0x02341B70/26"}}));
}

TEST_F(ControlConnection, RemovesTheCard) {
    say(R"({"do":"tap","card":"26:3512"})");
    say(R"({"do":"remove","device":"zeltag-0"})");
    EXPECT_FALSE(say(R"({"do":"state"})")["devices"][0].contains("card"));
}

TEST_F(ControlConnection, TellsSettingsByTheirWords) {
    const Json device = say(R"({"do":"state"})")["devices"][0];
    EXPECT_EQ(device["settings"]["TimeParms"]["iIDHoldTO"], 1000);
    EXPECT_EQ(device["name"], "zeltag-0");
    EXPECT_EQ(device["plugged"], true);
    EXPECT_EQ(device["exchanges"], 0);
}

TEST_F(ControlConnection, StopsTheSimulator) {
    EXPECT_FALSE(control_.takeStop());
    EXPECT_EQ(say(R"({"do":"stop"})"), (Json{{"done", "stop"}}));
    EXPECT_TRUE(control_.takeStop());
    EXPECT_FALSE(control_.takeStop()) << "told once";
}

TEST_F(ControlConnection, TellsAnErrorWithItsCodeAndWhatToDo) {
    EXPECT_EQ(say(R"({"do":"tap","card":"x","device":"y"})"),
              (Json{{"error",
                     {{"code", "usage"},
                      {"exit", 64},
                      {"message", "\"x\" is no card of the scenario and no number of one"},
                      {"hint", "write FACILITY:NUMBER such as 26:3512 for 26 bits, or ID/BITS such "
                               "as 0x123456789/37"}}}}));
}

struct Misuse {
    std::string line;
    std::string message;
};

void PrintTo(const Misuse& misuse, std::ostream* stream) { *stream << misuse.line; }

class ControlMisuse : public ControlConnection, public ::testing::WithParamInterface<Misuse> {};

TEST_P(ControlMisuse, IsToldAndDoesNothing) {
    EXPECT_EQ(error(GetParam().line), GetParam().message);
    EXPECT_FALSE(control_.takeStop());
}

INSTANTIATE_TEST_SUITE_P(
    Each, ControlMisuse,
    ::testing::Values(
        Misuse{"", "a command is one JSON object"}, Misuse{"[1]", "a command is one JSON object"},
        Misuse{R"({"do":"stop")", "a command is one JSON object"}, Misuse{"{}", "do isn't a text"},
        Misuse{R"({"do":1})", "do isn't a text"},
        Misuse{R"({"do":"tab"})", "there is no command tab"},
        Misuse{R"({"do":"tap"})", "card isn't a text"},
        Misuse{R"({"do":"tap","card":"1:1","fro":2})", "there is no key fro here"},
        Misuse{R"({"do":"tap","card":"1:1","for":"2"})", "for isn't a number of seconds"},
        Misuse{R"({"do":"tap","card":"1:1","for":-1})", "for isn't a number of seconds"},
        Misuse{R"({"do":"tap","card":"1:1","device":"x"})", "there is no device x"},
        Misuse{R"({"do":"swipe","tracks":["%B?"]})",
               "there is no device that reads magnetic stripes"},
        Misuse{R"({"do":"swipe","tracks":[1]})", "tracks isn't a list of texts"},
        Misuse{R"({"do":"place","inches":74})", "inches isn't a whole number in its range"},
        Misuse{R"({"do":"place","inches":1e99})", "inches isn't a whole number in its range"},
        Misuse{R"({"do":"fail","what":"x"})", "there is no fault x"},
        Misuse{R"({"do":"fail","what":"open","count":1})", "open lasts until none"},
        Misuse{R"({"do":"fail","what":"garbage","count":0})",
               "count isn't a whole number in its range"}));

} // namespace

} // namespace zel::sim
