// SPDX-License-Identifier: MIT
// The commands on a reader at the end of a serial line.
#include "tests/cli/command_line_test.h"
#include "tests/support/line_test.h"

#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

const json kDevice = {{"index", 0}, {"name", "COM1:"}, {"port", "/dev/ttySIM1"}};

class LineCommand : public LineTest {
protected:
    static CommandRun run(std::vector<const char*> arguments) {
        arguments.insert(arguments.end(), {"--port", kPath});
        return runCommand(arguments);
    }

    static json runJson(std::vector<const char*> arguments) {
        arguments.push_back("--json");
        const CommandRun done = run(arguments);
        EXPECT_EQ(done.exit, ExitCode::Done) << done.err;
        return json::parse(done.out);
    }
};

TEST_F(LineCommand, ListShowsThePathBesideTheName) {
    attachReader()->reader().settings().luid = 7;
    EXPECT_EQ(run({"list"}),
              (CommandRun{ExitCode::Done,
                          "INDEX  NAME                PRODUCT   LUID  FIRMWARE  CONFIGS\n"
                          "    0  COM1: /dev/ttySIM1  zelTag       7  -               1\n",
                          ""}));
}

TEST_F(LineCommand, ListTellsThePathInJson) {
    attachReader();
    json device = kDevice;
    device["product"] = "zelTag";
    device["luid"] = 0;
    device["firmware"] = {{"version", ""}, {"file", ""}};
    device["configurations"] = 1;
    EXPECT_EQ(runJson({"list"}), (json{{"devices", {device}}}));
}

TEST_F(LineCommand, ReaderOnUsbIsLeftAlone) {
    plugReader("usb");
    attachReader();
    EXPECT_EQ(runJson({"ping"}).at("device"), kDevice);
    EXPECT_EQ(bus().takeTrace().find("open usb"), std::string::npos);
}

TEST_F(LineCommand, CommandBehindItIsOnUsbAgain) {
    plugReader("usb");
    attachReader();
    run({"ping"});
    EXPECT_EQ(runCommand({"config", "get", "iIDHoldTO", "--json"}).exit, ExitCode::Done);
    EXPECT_EQ(json::parse(runCommand({"ping", "--json"}).out).at("device"),
              (json{{"index", 0}, {"name", "usb"}}));
}

TEST_F(LineCommand, ReadsACard) {
    attachReader()->reader().present(sim::cardOf(0x02341B70, 26));
    EXPECT_EQ(run({"read"}),
              (CommandRun{ExitCode::Done, "card   26 bits  0x02341B70  COM1:\n", ""}));
}

TEST_F(LineCommand, ReadsALongCardWhole) {
    sim::Card card = sim::cardOf(0x0123456789ABCDEF, 65);
    card.id[8] = 0x01;
    attachReader()->reader().present(card);
    EXPECT_EQ(run({"read"}).out, "card   65 bits  0x010123456789ABCDEF  COM1:\n");
}

TEST_F(LineCommand, EmptyFieldIsNoCard) {
    attachReader();
    EXPECT_EQ(run({"read"}).exit, ExitCode::NothingCame);
}

TEST_F(LineCommand, QueuedIdentifierIsRead) {
    sim::QueuedId queued;
    queued.id[0] = 0xD2;
    queued.id[1] = 0x07;
    queued.id[2] = 0x9A;
    attachReader()->reader().queue(queued);
    EXPECT_EQ(runJson({"read", "--queued"}).at("id"), "9A07D2");
}

TEST_F(LineCommand, BeepIsHeard) {
    const auto stream = attachReader();
    EXPECT_EQ(run({"beep", "2", "--long"}),
              (CommandRun{ExitCode::Done, "COM1: beeped: 2 long\n", ""}));
    EXPECT_EQ(stream->reader().lastBeep(), 0x82);
}

TEST_F(LineCommand, SettingsAreWrittenAndReadBack) {
    const auto stream = attachReader();
    EXPECT_EQ(run({"config", "set", "iIDHoldTO=2000"}),
              (CommandRun{ExitCode::Done, "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n", ""}));
    EXPECT_EQ(run({"config", "get", "iIDHoldTO"}).out, "2000\n");
    EXPECT_EQ(run({"luid", "513"}), (CommandRun{ExitCode::Done, "LUID of COM1:  0 -> 513\n", ""}));
    EXPECT_EQ(stream->reader().committed().luid, 513);
}

TEST_F(LineCommand, InfoTellsWhatTheReaderHasOnALine) {
    attachReader();
    const json info = runJson({"info"});
    EXPECT_EQ(info.at("device"), kDevice);
    EXPECT_EQ(info.at("device_id"), 0x0142);
    EXPECT_EQ(run({"info"}).out.substr(0, 35), "name            COM1: /dev/ttySIM1\n");
}

TEST_F(LineCommand, RawSendsAFrameOfFiveBytesAndPrintsEight) {
    attachReader()->replyWith({0x0C, 0x01, 0x05, 0x00}, {1, 2, 3, 4, 5, 6, 7, 0xF8});
    EXPECT_EQ(run({"raw", "FA", "0C", "1", "5"}), (CommandRun{ExitCode::Done,
                                                              "sent   FA 0C 01 05 00\n"
                                                              "reply  01 02 03 04 05 06 07 F8\n",
                                                              ""}));
}

TEST_F(LineCommand, RawFrameIsNoLonger) {
    attachReader();
    EXPECT_EQ(run({"raw", "1", "2", "3", "4", "5", "6"}),
              (CommandRun{ExitCode::Usage, "",
                          "zeltag: a frame has 5 bytes, not 6; give 1 to 5; those left out are "
                          "zero\n"}));
}

TEST_F(LineCommand, UsbAloneOffersSomeCommandsAndNothingIsOpened) {
    attachReader();
    const std::vector<std::pair<std::string, std::vector<const char*>>> all = {
        {"`zeltag dump`", {"dump", "dump.txt"}},
        {"`zeltag keys load`", {"keys", "load", "keys.ini"}},
        {"`zeltag firmware load`", {"firmware", "load", "firmware.hex", "--yes"}},
        {"--card-data", {"read", "--card-data"}}};
    for (const auto& [what, arguments] : all)
        EXPECT_EQ(run(arguments),
                  (CommandRun{ExitCode::Usage, "",
                              "zeltag: " + what + " works over USB only; leave --port out\n"}));
    EXPECT_EQ(lines().opens(), 0);
}

TEST_F(LineCommand, SecondReaderIsNone) {
    attachReader();
    const CommandRun none = run({"ping", "--device", "1"});
    EXPECT_EQ(none, (CommandRun{ExitCode::NoDevice, "",
                                "zeltag: there is no reader 1: the only one is 0, COM1:; "
                                "`zeltag list` shows them\n"}));
}

TEST_F(LineCommand, ProgressTellsWhatIsAwaited) {
    attachReader();
    EXPECT_EQ(run({"ping", "--progress", "--baud", "19200"}).err,
              "zeltag: asking for a reader on /dev/ttySIM1 at 19200 baud, then for its "
              "configuration; it takes some seconds\n");
}

TEST_F(LineCommand, SpeedIs9600UnlessToldOtherwise) {
    attachReader();
    run({"ping", "--baud", "57600"});
    EXPECT_EQ(defaultbaudrate, 57600U);
    run({"ping"});
    EXPECT_EQ(defaultbaudrate, 9600U);
}

TEST_F(LineCommand, LinesOfTextReachAReaderThatSpeaksThem) {
    const auto stream = attachReader(kPath, {}, sim::TagSpeech::Lines);
    stream->reader().present(sim::cardOf(0x02341B70, 26));
    EXPECT_EQ(run({"read", "--ascii"}),
              (CommandRun{ExitCode::Done, "card   26 bits  0x02341B70  COM1:\n", ""}));
    EXPECT_EQ(run({"config", "get", "iIDHoldTO", "--ascii"}).out, "1000\n");
}

TEST_F(LineCommand, ReaderThatSpeaksLinesCantBeReadInFrames) {
    attachReader(kPath, {}, sim::TagSpeech::Lines);
    EXPECT_EQ(run({"config", "show"}),
              (CommandRun{ExitCode::Failed, "",
                          "zeltag: the configuration of COM1: can't be read; try again; with "
                          "--ascii where it speaks lines of text, without where it doesn't\n"}));
}

TEST_F(LineCommand, FramesAreSpokenAgainBehindACommandInLines) {
    attachReader();
    run({"ping", "--ascii"});
    bus().takeTrace();
    run({"config", "get", "iIDHoldTO"});
    EXPECT_EQ(bus().takeTrace().find("ZTAG"), std::string::npos);
}

TEST_F(LineCommand, RefusedReadTellsTheErrorWord) {
    const auto stream = attachReader();
    run({"ping"});
    const int commands = stream->commands();
    stream->fail(sim::StreamFault::Silence, 1'000, commands - 1);
    EXPECT_EQ(run({"read"}),
              (CommandRun{ExitCode::Failed, "",
                          "zeltag: reading COM1: failed (library error 0x1000000); it may have "
                          "been unplugged: check its cable, then try `zeltag list`\n"}));
}

// The path is that of no node, so the reason is the path.
TEST_F(LineCommand, NoLineIsNoDevice) {
    EXPECT_EQ(run({"list"}), (CommandRun{ExitCode::NoDevice, "",
                                         "zeltag: there is no /dev/ttySIM1; plug the adapter in; "
                                         "`ls /dev/serial/by-id` shows those that are there\n"}));
}

TEST_F(LineCommand, EveryEndClosesTheLine) {
    attachReader();
    lines().silence(kPath);
    for (const auto& arguments :
         std::vector<std::vector<const char*>>{{"read"}, {"list"}, {"ping"}, {"config", "show"}})
        EXPECT_EQ(run(arguments).exit, ExitCode::NoDevice) << arguments.front();
    EXPECT_GE(lines().opens(), 4);
    lines().takeIn();
    EXPECT_EQ(lines().openLines(), 0);
}

} // namespace

} // namespace zel::test
