// SPDX-License-Identifier: MIT
// list, read and ping on readers that have long cards, no card, or fail.
#include "cli/command/interrupt.h"
#include "cli/main/program.h"
#include "tests/cli/command_line_test.h"

#include <csignal>
#include <cstdlib>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr char kUnplugged[] = "it may have been unplugged: check its cable, then try `zeltag list`";

class BusCommand : public CommandLineTest {
protected:
    // What a command says of a reader that fails.
    static CommandRun failed(ExitCode exit, const std::string& message, const std::string& hint) {
        return {exit, "", "zeltag: " + message + "; " + hint + "\n"};
    }
};

TEST_F(BusCommand, ListGivesEachReaderALine) {
    plugReader("a");
    plugReader("left/right");
    EXPECT_EQ(run({"list"}).out, "INDEX  NAME        PRODUCT   LUID  FIRMWARE  CONFIGS\n"
                                 "    0  a           zelTag       0  -               1\n"
                                 "    1  left/right  zelTag       0  -               1\n");
}

TEST_F(BusCommand, ListOfOneDeviceLeavesTheOthersOut) {
    plugReader("a");
    plugReader("b");
    EXPECT_EQ(run({"list", "--device", "1"}).out,
              "INDEX  NAME  PRODUCT   LUID  FIRMWARE  CONFIGS\n"
              "    1  b     zelTag       0  -               1\n");
}

TEST_F(BusCommand, ReadTakesTheFirstReaderUnlessToldOtherwise) {
    plugReader("a")->present(sim::cardOf(0xA, 4));
    plugReader("b")->present(sim::cardOf(0xB, 4));
    EXPECT_EQ(run({"read"}), (CommandRun{ExitCode::Done, "card    4 bits  0x0A  a\n", ""}));
    EXPECT_EQ(run({"read", "--device", "1"}),
              (CommandRun{ExitCode::Done, "card    4 bits  0x0B  b\n", ""}));
}

TEST_F(BusCommand, ReaderBehindTheLastOneIsUnknown) {
    plugReader("a");
    plugReader("b");
    EXPECT_EQ(run({"ping", "--device", "2"}),
              failed(ExitCode::NoDevice, "there is no reader 2: there are 0 to 1",
                     "`zeltag list` shows them"));
}

TEST_F(BusCommand, ReadOf64BitsNeedsTheShortReadAlone) {
    plugReader("a")->present(sim::cardOf(0x0123456789ABCDEF, 64));
    EXPECT_EQ(run({"read"}).out, "card   64 bits  0x0123456789ABCDEF  a\n");
    EXPECT_EQ(bus().takeTrace().find("identifier page"), std::string::npos);
}

TEST_F(BusCommand, ReadOfMoreThan64BitsFetchesAllBytes) {
    sim::Card card = sim::cardOf(0x0123456789ABCDEF, 65);
    card.id[8] = 0x01;
    plugReader("a")->present(card);
    EXPECT_EQ(run({"read"}).out, "card   65 bits  0x010123456789ABCDEF  a\n");
}

TEST_F(BusCommand, NameThatIsNotUtf8IsStillValidJson) {
    plugReader("a\xFF");
    const CommandRun listed = run({"list", "--json"});
    const auto devices = nlohmann::json::parse(listed.out).at("devices");
    EXPECT_EQ(devices.at(0).at("name"), "a\xEF\xBF\xBD");
}

TEST_F(BusCommand, EmptyFieldIsNoCard) {
    plugReader("a");
    EXPECT_EQ(run({"read"}), failed(ExitCode::NothingCame, "no card in the field of a",
                                    "hold a card to the reader and try again, or add --wait 10"));
}

TEST_F(BusCommand, EmptyFieldNamesTheDeviceInJson) {
    plugReader("a");
    const CommandRun empty = run({"read", "--json"});
    EXPECT_EQ(empty.exit, ExitCode::NothingCame);
    const auto error = nlohmann::json::parse(empty.out).at("error");
    EXPECT_EQ(error.at("code"), "nothing_came");
    EXPECT_EQ(error.at("device"), "a");
}

TEST_F(BusCommand, WaitEndsWithTheFirstCard) {
    const auto reader = plugReader("a");
    reader->follow(
        [looks = 0]() mutable { return ++looks < 3 ? sim::Card{} : sim::cardOf(0xA, 4); });
    EXPECT_EQ(run({"read", "--wait", "60"}).out, "card    4 bits  0x0A  a\n");
}

TEST_F(BusCommand, WaitEndsWithItsTime) {
    int looks = 0;
    plugReader("a")->follow([&looks] {
        ++looks;
        return sim::Card{};
    });
    EXPECT_EQ(run({"read", "--wait", "0.25"}).exit, ExitCode::NothingCame);
    EXPECT_GE(looks, 2);
    EXPECT_LE(looks, 4) << "the field is looked at every 100 ms";
}

TEST_F(BusCommand, WaitEndsWithCtrlC) {
    const auto reader = plugReader("a");
    reader->follow([] {
        std::raise(SIGINT);
        return sim::Card{};
    });
    const char* const arguments[] = {"zeltag", "read", "--wait", "60"};
    EXPECT_EXIT(std::exit(static_cast<int>(cli::runProgram(4, arguments))),
                ::testing::ExitedWithCode(130), "");
}

TEST_F(BusCommand, SecondCtrlCEndsACommandThatHangs) {
    EXPECT_EXIT(
        {
            cli::catchInterrupts();
            std::raise(SIGINT);
            std::raise(SIGINT);
            std::exit(0);
        },
        ::testing::ExitedWithCode(130), "");
}

TEST_F(BusCommand, FailedReadTellsTheErrorWord) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies());
    EXPECT_EQ(run({"read"}),
              failed(ExitCode::Failed, "reading a failed (library error 0x1000000)", kUnplugged));
}

TEST_F(BusCommand, SilentReaderIsNoAnswer) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies());
    EXPECT_EQ(run({"ping"}), failed(ExitCode::NothingCame, "no answer from a", kUnplugged));
}

TEST_F(BusCommand, EveryEndClosesTheReader) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer);
    for (const auto& arguments :
         std::vector<std::vector<const char*>>{{"read"},
                                               {"read"},
                                               {"list"},
                                               {"ping"},
                                               {"ping", "--device", "9"},
                                               {"config", "set", "iIDHoldTO=99999"},
                                               {"luid", "3"}}) {
        run(arguments);
        EXPECT_EQ(bus().openHandles(), 0) << arguments.front();
    }
}

} // namespace

} // namespace zel::test
