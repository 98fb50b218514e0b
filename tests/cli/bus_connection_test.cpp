// SPDX-License-Identifier: MIT
// The commands among several readers, some of them with configurations that can't be read.
#include "tests/cli/command_line_test.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr int kAlways = 1000;
constexpr char kUnreadable[] = "the configuration of a can't be read; unplug it and plug it in "
                               "again, then try `zeltag list`\n";

class BusConnection : public CommandLineTest {
protected:
};

TEST_F(BusConnection, ListGoesOnPastAReaderWhoseConfigurationCantBeRead) {
    plugReader("a");
    plugReader("b")->settings().luid = 9;
    bus().fail(0, sim::Fault::NoAnswer, kAlways);
    EXPECT_EQ(run({"list"}), (CommandRun{ExitCode::Done,
                                         "INDEX  NAME  PRODUCT   LUID  FIRMWARE  CONFIGS\n"
                                         "    0  a     zelTag       -  -               -\n"
                                         "    1  b     zelTag       9  -               1\n",
                                         std::string("zeltag: warning: ") + kUnreadable}));
}

TEST_F(BusConnection, ReadNeedsNoConfiguration) {
    plugReader("a")->present(sim::cardOf(0xA, 4));
    bus().fail(0, sim::Fault::NoAnswer, vainReplies());
    EXPECT_EQ(run({"read"}), (CommandRun{ExitCode::Done, "card    4 bits  0x0A  a\n",
                                         std::string("zeltag: warning: ") + kUnreadable}));
}

TEST_F(BusConnection, SettingsNeedAConfigurationThatWasRead) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer, kAlways);
    const CommandRun expected{ExitCode::Failed, "", std::string("zeltag: ") + kUnreadable};
    EXPECT_EQ(run({"config", "show"}), expected);
    EXPECT_EQ(run({"config", "set", "bBeepID=1"}), expected);
    EXPECT_EQ(run({"info"}), expected);
    EXPECT_EQ(run({"luid", "1"}), expected);
}

TEST_F(BusConnection, SettingsOfTheReaderBehindAnUnreadableOneAreShown) {
    plugReader("a");
    plugReader("b");
    bus().fail(0, sim::Fault::NoAnswer, kAlways);
    EXPECT_EQ(run({"config", "get", "iIDHoldTO", "--device", "1"}),
              (CommandRun{ExitCode::Done, "1000\n", ""}));
}

TEST_F(BusConnection, ChangesAmongSeveralReadersNeedAChoice) {
    plugReader("a");
    plugReader("b");
    const CommandRun expected =
        refused(ExitCode::Usage, "there are several readers: 0 is a, 1 is b; "
                                 "choose one with --device, such as --device 0");
    EXPECT_EQ(run({"config", "set", "bBeepID=1"}), expected);
    EXPECT_EQ(run({"config", "reset", "--yes"}), expected);
    EXPECT_EQ(run({"luid", "3"}), expected);
}

TEST_F(BusConnection, ChangeReachesTheChosenReaderAlone) {
    const auto a = plugReader("a");
    const auto b = plugReader("b");
    EXPECT_EQ(run({"luid", "513", "--device", "1"}),
              (CommandRun{ExitCode::Done, "LUID of b  0 -> 513\n", ""}));
    EXPECT_EQ(a->committed().luid, 0);
    EXPECT_EQ(b->committed().luid, 513);
}

TEST_F(BusConnection, BeepTakesTheFirstReader) {
    const auto a = plugReader("a");
    const auto b = plugReader("b");
    EXPECT_EQ(run({"beep", "2", "--long"}), (CommandRun{ExitCode::Done, "a beeped: 2 long\n", ""}));
    EXPECT_EQ(a->lastBeep(), 0x82);
    EXPECT_EQ(b->beeps(), 0);
}

TEST_F(BusConnection, BeepThatFailsTellsTheErrorWord) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies());
    EXPECT_EQ(run({"beep"}),
              refused(ExitCode::Failed, "the beep of a failed (library error 0x1000000); "
                                        "check its cable, then try `zeltag list`"));
}

TEST_F(BusConnection, InfoOfAReaderOfSeveralConfigurations) {
    sim::TagOptions options;
    options.tagPlusConfigurations = 3;
    options.volume = std::uint8_t{0};
    options.radio = std::uint8_t{2};
    options.cardTypes = {0x0101, 0x0202};
    options.versions[1][0] = 0x01020304;
    options.partNumber = "X\x1B[";
    options.serialNumber.fill(0xAB);
    plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, "plus"}, options);
    const CommandRun info = run({"info", "--json"});
    EXPECT_EQ(info.exit, ExitCode::Done) << info.err;
    std::string serial;
    for (int byte = 0; byte < 32; ++byte)
        serial += "AB";
    const nlohmann::json expected = {{"device", {{"index", 0}, {"name", "plus"}}},
                                     {"product", "zelTag"},
                                     {"filter_list", "5A3E:9D23 Norvanex"},
                                     {"luid", 0},
                                     {"device_id", 0x0142},
                                     {"part_number", "X?["},
                                     {"firmware_version", nullptr},
                                     {"firmware_file", nullptr},
                                     {"version_words", {"01020304"}},
                                     {"configurations", 3},
                                     {"card_types", 2},
                                     {"beeper_volume", 0},
                                     {"radio", 2},
                                     {"serial_number", serial}};
    EXPECT_EQ(nlohmann::json::parse(info.out), expected);
}

} // namespace

} // namespace zel::test
