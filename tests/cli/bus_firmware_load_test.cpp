// SPDX-License-Identifier: MIT
// `zeltag firmware load`: a file reaches the reader, or the user knows why not and what to do.
#include "tests/cli/firmware_command_test.h"
#include "tests/cli/terminal.h"

#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

constexpr char kStart[] =
    "zeltag: loading ZT7_0303_TEST into a; it takes some seconds before the first line\n";

// The lines that a flash shows up to a percentage.
std::string progressTo(int last) {
    std::string text = kStart;
    for (int percentage = 0; percentage <= last; percentage += 10)
        text += "zeltag: " + std::to_string(percentage) + " % of 10 lines\n";
    return text;
}

class BusFirmwareLoad : public FirmwareCommandTest {
protected:
    static CommandRun load(std::vector<const char*> more = {"--yes"}) {
        more.insert(more.begin(), {"firmware", "load", "f.hex"});
        return run(more);
    }

    // A reader that lost its power in the middle of a flash and is back on the bus.
    static std::shared_ptr<sim::TagReader> plugLeftInBootLoader() {
        auto reader = plugZt7();
        reader->bootLoader().options().powerCutAfter = 2;
        EXPECT_EQ(load().exit, ExitCode::Failed);
        reader->bootLoader().options().powerCutAfter = 0;
        bus().replug(0);
        bus().takeTrace();
        return reader;
    }
};

TEST_F(BusFirmwareLoad, PutsTheFileIntoTheReader) {
    const auto reader = plugZt7();
    EXPECT_EQ(load(),
              (CommandRun{ExitCode::Done, "f.hex  ZT7_0303_TEST is in a: it took all of 10 lines\n",
                          progressTo(100)}));
    EXPECT_EQ(reader->bootLoader().memory(), flashed());
    EXPECT_FALSE(reader->bootLoader().isRunning()) << "the new firmware runs";
}

TEST_F(BusFirmwareLoad, TellsAnObjectAndNoProgressWithJson) {
    plugZt7();
    const CommandRun loaded = load({"--yes", "--json"});
    const json expected = {
        {"device", {{"index", 0}, {"name", "a"}}},
        {"path", "f.hex"},
        {"firmware", {{"name", "ZT7_0303_TEST"}, {"family", "ZT7"}, {"micro", 0}, {"lines", 10}}},
        {"rules", "passed"},
        {"loaded", true}};
    EXPECT_EQ(json::parse(loaded.out), expected);
    EXPECT_EQ(loaded.err, "");
}

TEST_F(BusFirmwareLoad, TellsProgressWithJsonOnDemand) {
    plugZt7();
    EXPECT_TRUE(load({"--yes", "--json", "--progress"}).err.ends_with(progressTo(100)));
}

TEST_F(BusFirmwareLoad, SendsNothingWhenARuleRefuses) {
    plugZt7("a", "ZT7_0301");
    EXPECT_EQ(load(), (CommandRun{ExitCode::DamagedFile, "",
                                  "zeltag: f.hex may not go into a: 207:- The firmware filename "
                                  "present in the file does not match with the reader connected "
                                  "to the system; take a file made for its firmware ZT7_0301\n"}));
    EXPECT_FALSE(isFlashTraced());
}

TEST_F(BusFirmwareLoad, LineThatTheReaderRefusesEndsItInTheBootLoader) {
    plugZt7()->bootLoader().options().reply[3] = {0, 'R'};
    EXPECT_EQ(
        load(),
        (CommandRun{ExitCode::Failed, "",
                    progressTo(30) +
                        "zeltag: loading f.hex into a failed: it refused a line (library "
                        "error 0x90600000); it is left in its boot loader; load a file made "
                        "for it, or this one again: zeltag firmware load --recover f.hex\n"}));
}

TEST_F(BusFirmwareLoad, WordOfTheChosenReaderCounts) {
    plugZt7("a");
    plugZt7("b")->bootLoader().options().reply[1] = {0, '?'};
    const CommandRun failed = load({"--yes", "--device", "1"});
    EXPECT_NE(failed.err.find("zeltag: loading f.hex into b failed: it gave no answer to a line, "
                              "or one that isn't known (library error 0x90700000); "),
              std::string::npos)
        << failed.err;
}

TEST_F(BusFirmwareLoad, ReaderThatNeverComesBackIsToldWithTheWayOut) {
    plugZt7()->bootLoader().options().comesBack = false;
    EXPECT_EQ(load(),
              (CommandRun{ExitCode::Failed, "",
                          std::string(kStart) +
                              "zeltag: loading f.hex into a failed: its boot loader wasn't entered "
                              "(library error 0x90100000); it may be in its boot loader now; "
                              "unplug it and plug it in again, then run: zeltag firmware load "
                              "--recover f.hex\n"}));
}

TEST_F(BusFirmwareLoad, ReaderLeftInItsBootLoaderIsRefusedByTheRulesWithTheWayOut) {
    plugLeftInBootLoader();
    const CommandRun refused = load();
    EXPECT_EQ(refused.exit, ExitCode::DamagedFile);
    EXPECT_TRUE(refused.err.ends_with("; it tells no firmware of its own: if it waits in its boot "
                                      "loader, `zeltag firmware load --recover f.hex` loads the "
                                      "file\n"))
        << refused.err;
    EXPECT_FALSE(isFlashTraced());
}

TEST_F(BusFirmwareLoad, RecoverLoadsIntoAReaderLeftInItsBootLoader) {
    const auto reader = plugLeftInBootLoader();
    const CommandRun loaded = load({"--recover", "--yes"});
    EXPECT_EQ(loaded,
              (CommandRun{ExitCode::Done, "f.hex  ZT7_0303_TEST is in a: it took all of 10 lines\n",
                          "zeltag: warning: a: it tells no firmware of its own, so no rule can be "
                          "asked whether the file is made for it\n" +
                              progressTo(100)}));
    EXPECT_EQ(reader->bootLoader().memory(), flashed());
    EXPECT_FALSE(reader->bootLoader().isRunning());
}

TEST_F(BusFirmwareLoad, RecoverAsksTheRulesOfAReaderThatTellsItsFirmware) {
    plugZt7("a", "ZT7_0301");
    EXPECT_EQ(load({"--recover", "--yes"}).exit, ExitCode::DamagedFile);
    EXPECT_FALSE(isFlashTraced());
}

TEST_F(BusFirmwareLoad, RecoverRefusesADamagedFileToo) {
    plugLeftInBootLoader();
    writeText("f.hex", file().text() + "0");
    EXPECT_EQ(load({"--recover", "--yes"}).exit, ExitCode::DamagedFile);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(BusFirmwareLoad, NeedsAChoiceAmongSeveralReaders) {
    plugZt7("a");
    const auto chosen = plugZt7("b");
    EXPECT_EQ(load(), (CommandRun{ExitCode::Usage, "",
                                  "zeltag: there are several readers: 0 is a, 1 is b; choose one "
                                  "with --device, such as --device 0\n"}));
    EXPECT_FALSE(isFlashTraced());
    EXPECT_EQ(load({"--yes", "--device", "1"}).exit, ExitCode::Done);
    EXPECT_EQ(chosen->bootLoader().memory(), flashed());
}

TEST_F(BusFirmwareLoad, AnswerNoSendsNothing) {
    plugZt7();
    const Terminal terminal(STDIN_FILENO, "n\n");
    EXPECT_EQ(load({}), (CommandRun{ExitCode::Interrupted, "",
                                    "Load ZT7_0303_TEST into a? Don't unplug it meanwhile. [y/N] "
                                    "zeltag: nothing was sent\n"}));
    EXPECT_FALSE(isFlashTraced());
}

TEST_F(BusFirmwareLoad, AnswerYesLoads) {
    const auto reader = plugZt7();
    const Terminal terminal(STDIN_FILENO, "y\n");
    EXPECT_EQ(load({}).exit, ExitCode::Done);
    EXPECT_EQ(reader->bootLoader().memory(), flashed());
}

TEST_F(BusFirmwareLoad, MissingFileIsTold) {
    EXPECT_EQ(run({"firmware", "load", "absent.hex", "--yes"}).exit, ExitCode::MissingFile);
}

} // namespace

} // namespace zel::test
