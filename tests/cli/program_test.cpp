// SPDX-License-Identifier: MIT
// The program as such: version, help, wrong usage, results that can't be delivered.
#include "cli/command/command.h"
#include "tests/cli/run_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

namespace zel::test {

namespace {

TEST(Program, TellsTheVersionOfTheLibrary) {
    EXPECT_EQ(runZeltag({"--version"}), (Ended{0, "zeltag 7.6.4\n", ""}));
    EXPECT_EQ(runZeltag({"--version", "--json"}), (Ended{0, "{\"version\":\"7.6.4\"}\n", ""}));
}

TEST(Program, HelpGroupsTheCommandsByWhatAPersonWants) {
    EXPECT_EQ(
        runZeltag({"--help"}),
        (Ended{0,
               "Finds zelTag card readers, reads their cards and sets them up.\n"
               "Usage: zeltag COMMAND [OPTIONS]\n"
               "\n"
               "Look       list      List the readers\n"
               "           info      Print all that one reader tells of itself\n"
               "           ping      Measure how fast a reader answers\n"
               "           wait      Wait until a reader is there, or gone\n"
               "           beep      Make a reader beep\n"
               "Read       read      Read the card in the reader's field\n"
               "           swipe     Read a card swiped on a magnetic stripe reader\n"
               "Configure  config    Print, change, save and load a reader's settings\n"
               "           luid      Give a reader its logical unit ID\n"
               "Files      file      Check a file that a reader is to be given\n"
               "           keys      Send keys to a reader\n"
               "Firmware   firmware  Check and load a reader's firmware\n"
               "Network    net       Find network bridges\n"
               "Diagnose   doctor    Find out why a reader can't be used, and what to do\n"
               "           trace     Run a command and show what goes over the wire\n"
               "           raw       Send a report of up to eight bytes and print the reply\n"
               "           dump      Write all reports of a reader to a file\n"
               "\n"
               "With each command: --json --sim --progress --device --port --baud --tcp --ascii\n"
               "`zeltag COMMAND --help` tells more of a command and shows an example.\n",
               ""}));
}

TEST(Program, HelpFitsAScreen) {
    std::istringstream help(runZeltag({"--help"}).out);
    int lines = 0;
    for (std::string line; std::getline(help, line); ++lines)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_LE(lines, 24);
}

TEST(Program, HelpOfEveryCommandShowsAnExampleOfIt) {
    for (const auto& command : cli::allCommands()) {
        const std::string name = command->text().name;
        Arguments words;
        std::istringstream parts(name);
        for (std::string part; parts >> part;)
            words.push_back(part);
        words.emplace_back("--help");
        EXPECT_TRUE(contains(runZeltag(words).out, "Example:\n  zeltag " + name)) << name;
    }
}

TEST(Program, HelpOfACommandShowsItsOptionsAndAnExample) {
    const Ended run = runZeltag({"read", "--help"});
    EXPECT_EQ(run.exit, 0);
    for (const char* part :
         {"--watch", "--wait SECONDS", "--long", "--queued", "--card-data", "--json", "--sim",
          "--progress", "--device N", "--port PATH", "--baud N", "--tcp HOST[:PORT]", "--ascii",
          "Example:\n  zeltag read --sim --watch\n"})
        EXPECT_TRUE(contains(run.out, part)) << part;
}

TEST(Program, FullDiskIsAnErrorOfItsOwn) {
    const Ended expected{73, "",
                         "zeltag: the results can't be written: No space left on device; "
                         "check where stdout goes\n"};
    EXPECT_EQ(runZeltag({"list", "--sim"}, Stdout::FullDisk), expected);
    EXPECT_EQ(runZeltag({"read", "--sim", "--watch"}, Stdout::FullDisk), expected);
    EXPECT_EQ(runZeltag({"--help"}, Stdout::FullDisk), expected);
}

TEST(Program, ClosedStdoutIsAnErrorToo) {
    EXPECT_EQ(runZeltag({"read", "--sim"}, Stdout::Closed),
              (Ended{73, "",
                     "zeltag: the results can't be written: Bad file descriptor; "
                     "check where stdout goes\n"}));
}

TEST(Program, PipeWithoutReaderDoesNotEndItSilently) {
    EXPECT_EQ(runZeltag({"list", "--sim"}, Stdout::PipeWithoutReader),
              (Ended{73, "",
                     "zeltag: the results can't be written: Broken pipe; "
                     "check where stdout goes\n"}));
}

struct WrongUsage {
    Arguments arguments;
    std::string line;
};

void PrintTo(const WrongUsage& usage, std::ostream* stream) {
    *stream << "zeltag";
    for (const std::string& argument : usage.arguments)
        *stream << ' ' << argument;
}

class Usage : public ::testing::TestWithParam<WrongUsage> {};

TEST_P(Usage, EndsWith64AndOneLine) {
    EXPECT_EQ(runZeltag(GetParam().arguments), (Ended{64, "", GetParam().line + "\n"}));
}

INSTANTIATE_TEST_SUITE_P(
    Wrong, Usage,
    ::testing::Values(
        WrongUsage{{}, "zeltag: no command given; `zeltag --help` lists them"},
        WrongUsage{{"frob"}, "zeltag: unknown command or option frob; `zeltag --help` shows how"},
        WrongUsage{{"config"}, "zeltag: no command given; `zeltag config --help` lists them"},
        WrongUsage{{"config", "frob"},
                   "zeltag: unknown command or option frob; "
                   "`zeltag config --help` shows how"},
        WrongUsage{{"luid", "65536"},
                   "zeltag: LUID: Value 65536 not in range 0 to 65535; "
                   "`zeltag luid --help` shows how"},
        WrongUsage{{"beep", "3", "--long", "--sim"},
                   "zeltag: a reader beeps long twice at most; give 1 or 2 with --long"},
        WrongUsage{{"read", "--frob"},
                   "zeltag: unknown argument or option --frob; "
                   "`zeltag read --help` shows how"},
        WrongUsage{{"ping", "--device", "127"},
                   "zeltag: --device: Value 127 not in range 0 to 126; "
                   "`zeltag ping --help` shows how"},
        WrongUsage{{"ping", "--device", "-1"},
                   "zeltag: --device: Value -1 not in range 0 to 126; "
                   "`zeltag ping --help` shows how"},
        WrongUsage{{"read", "--sim", "--wait", "nan"},
                   "zeltag: --wait: SECONDS is a number from 0 to 86400, not nan; "
                   "`zeltag read --help` shows how"},
        WrongUsage{{"read", "--wait"},
                   "zeltag: --wait: 1 required SECONDS missing; `zeltag read --help` shows how"},
        WrongUsage{{"read", "--sim", "--watch", "--wait", "1"},
                   "zeltag: --watch and --wait don't go together; --watch waits for every card"},
        WrongUsage{{"read", "--queued", "--watch"},
                   "zeltag: --queued doesn't go with --watch; "
                   "it prints what the reader holds at this moment"},
        WrongUsage{{"read", "--card-data", "--wait", "1"},
                   "zeltag: --card-data doesn't go with --wait; "
                   "it prints what the reader holds at this moment"},
        WrongUsage{{"read", "--queued", "--long"},
                   "zeltag: --long excludes --queued; `zeltag read --help` shows how"},
        WrongUsage{{"read", "--card-data", "--long"},
                   "zeltag: --long excludes --card-data; `zeltag read --help` shows how"},
        WrongUsage{{"read", "--card-data", "--queued"},
                   "zeltag: --queued excludes --card-data; `zeltag read --help` shows how"},
        WrongUsage{{"raw"}, "zeltag: BYTE is required; `zeltag raw --help` shows how"},
        WrongUsage{{"raw", "8A", "8G"},
                   "zeltag: \"8G\" is no byte; write it in hexadecimal, such as 8F or 0x8F"},
        WrongUsage{{"raw", "100"},
                   "zeltag: \"100\" is no byte; write it in hexadecimal, such as 8F or 0x8F"},
        WrongUsage{{"raw", "0x"},
                   "zeltag: \"0x\" is no byte; write it in hexadecimal, such as 8F or 0x8F"},
        WrongUsage{{"raw", ""},
                   "zeltag: \"\" is no byte; write it in hexadecimal, such as 8F or 0x8F"},
        WrongUsage{{"raw", "0x-1"},
                   "zeltag: \"0x-1\" is no byte; write it in hexadecimal, such as 8F or 0x8F"},
        WrongUsage{{"raw", "1", "2", "3", "4", "5", "6", "7", "8", "9"},
                   "zeltag: a report has 8 bytes, not 9; give 1 to 8; those left out are zero"},
        WrongUsage{{"dump"}, "zeltag: FILE is required; `zeltag dump --help` shows how"},
        WrongUsage{{"list", "--port", "ttyUSB0"},
                   "zeltag: --port: \"ttyUSB0\" is no path of a device; write it as /dev/ttyUSB0; "
                   "`zeltag list --help` shows how"},
        WrongUsage{{"list", "--port", "/dev/ttyUSB0", "--baud", "300"},
                   "zeltag: --baud: 300 is none of 9600, 19200, 38400, 57600, 115200; "
                   "`zeltag list --help` shows how"},
        WrongUsage{{"list", "--tcp", "door:0"},
                   "zeltag: --tcp: \"door:0\" is no host; write it as 10.0.0.17, as a name, or "
                   "with a port as 10.0.0.17:10001; `zeltag list --help` shows how"},
        WrongUsage{{"list", "--tcp", "10.0.0.0"},
                   "zeltag: 10.0.0.0 stands for a whole network; give the address of one host; "
                   "`zeltag net find` looks for bridges"},
        WrongUsage{{"list", "--port", "/dev/ttyUSB0", "--tcp", "door"},
                   "zeltag: --port and --tcp don't go together; "
                   "a reader is in one place: leave one of them out"},
        WrongUsage{{"--sim", "list", "--port", "/dev/ttyUSB0"},
                   "zeltag: --sim and --port don't go together; "
                   "a reader is in one place: leave one of them out"},
        WrongUsage{{"--tcp", "door", "list", "--sim"},
                   "zeltag: --sim and --tcp don't go together; "
                   "a reader is in one place: leave one of them out"},
        WrongUsage{{"list", "--baud", "9600"},
                   "zeltag: --baud needs --port; it is about a reader's byte stream, which there "
                   "is none of on USB"},
        WrongUsage{{"list", "--baud", "9600", "--tcp", "door"},
                   "zeltag: --baud needs --port; the bridge has a speed of its own"},
        WrongUsage{{"list", "--ascii", "--sim"},
                   "zeltag: --ascii needs --port or --tcp; it is about a reader's byte stream, "
                   "which there is none of on USB"},
        WrongUsage{{"net"}, "zeltag: no command given; `zeltag net --help` lists them"},
        WrongUsage{{"net", "find"},
                   "zeltag: HOSTS is required; `zeltag net find --help` shows how"},
        WrongUsage{{"net", "find", "10.0.0.0-9"},
                   "zeltag: HOSTS: \"10.0.0.0-9\" is no range of hosts; write it as 10.0.0.1-20, "
                   "of 1 to 254; `zeltag net find --help` shows how"},
        WrongUsage{{"net", "mac", "10.0.0.0"},
                   "zeltag: 10.0.0.0 stands for a whole network; give the address of one host; "
                   "`zeltag net find` looks for bridges"}));

TEST(Usage, IsAnObjectOnStdoutTooWithJson) {
    const Ended run = runZeltag({"read", "--wait", "x", "--json"});
    EXPECT_EQ(run.exit, 64);
    const auto error = nlohmann::json::parse(run.out).at("error");
    EXPECT_EQ(error.at("code"), "usage");
    EXPECT_EQ(error.at("exit"), 64);
    EXPECT_EQ(run.err, "zeltag: " + error.at("message").get<std::string>() + "; " +
                           error.at("hint").get<std::string>() + "\n");
}

} // namespace

} // namespace zel::test
