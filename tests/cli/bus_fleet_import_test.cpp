// SPDX-License-Identifier: MIT
// `zeltag config import --all`: each reader in turn, whatever becomes of the one before.
#include "cli/main/program.h"
#include "tests/cli/command_line_test.h"
#include "tests/cli/files_here.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace zel::test {

namespace {

using cli::ExitCode;

class BusFleetImport : public CommandLineTest {
protected:
    BusFleetImport() {
        std::ofstream("a.txt") << "/--- zelTag and OEM Reader Configuration Template File ---\n"
                                  "iIDHoldTO = 2000\niTotalBitCnt = 26\n";
    }

    // Ends this process as the command ends, with its results on stderr.
    [[noreturn]] static void importAndExit() {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        const char* const arguments[] = {"zeltag", "config", "import", "a.txt", "--all"};
        std::exit(static_cast<int>(cli::runProgram(5, arguments)));
    }

    static std::uint8_t holdTime(const sim::TagReader& reader) {
        return reader.committed().configuration[0].block[1][2];
    }

private:
    TemporaryFolder folder_;
};

constexpr char kChange[] = "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n";

TEST_F(BusFleetImport, SeveralReadersAndNoneChosenIsRefused) {
    plugReader("a");
    plugReader("b");
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Usage, "",
                          "zeltag: there are several readers: 0 is a, 1 is b; choose one with "
                          "--device, such as --device 0, or take all of them with --all\n"}));
}

TEST_F(BusFleetImport, ChosenReaderAloneIsWritten) {
    const auto a = plugReader("a");
    const auto b = plugReader("b");
    EXPECT_EQ(run({"config", "import", "a.txt", "--device", "1"}),
              (CommandRun{ExitCode::Done, std::string(kChange) + "1 change was written\n", ""}));
    EXPECT_EQ(holdTime(*a), 20);
    EXPECT_EQ(holdTime(*b), 40);
}

TEST_F(BusFleetImport, EndsWithATable) {
    const auto a = plugReader("a");
    plugReader("reader b")->configuration(0).block[1][2] = 40;
    EXPECT_EQ(run({"config", "import", "a.txt", "--all"}),
              (CommandRun{ExitCode::Done,
                          std::string("a\n") + kChange +
                              "\n"
                              "NAME      RESULT           CHANGES\n"
                              "a         written                1\n"
                              "reader b  unchanged              0\n",
                          ""}));
    EXPECT_EQ(holdTime(*a), 40);
}

TEST_F(BusFleetImport, DryRunWritesToNone) {
    const auto a = plugReader("a");
    plugReader("b");
    EXPECT_EQ(run({"config", "import", "a.txt", "--all", "--dry-run"}).out,
              std::string("a\n") + kChange + "\nb\n" + kChange +
                  "\n"
                  "NAME  RESULT           CHANGES\n"
                  "a     would change           1\n"
                  "b     would change           1\n");
    EXPECT_EQ(holdTime(*a), 20);
}

TEST_F(BusFleetImport, GoesOnBehindAReaderThatCantBeRead) {
    const auto a = plugReader("a");
    plugReader("b");
    const auto c = plugReader("c");
    bus().fail(1, sim::Fault::NoAnswer, 1000);
    EXPECT_EQ(run({"config", "import", "a.txt", "--all"}),
              (CommandRun{ExitCode::Failed,
                          std::string("a\n") + kChange + "\nc\n" + kChange +
                              "\n"
                              "NAME  RESULT           CHANGES\n"
                              "a     written                1\n"
                              "b     failed                 -\n"
                              "c     written                1\n",
                          "zeltag: the configuration of b can't be read; unplug it and plug it in "
                          "again, then try `zeltag list`\n"}));
    EXPECT_EQ(holdTime(*a), 40);
    EXPECT_EQ(holdTime(*c), 40);
}

TEST_F(BusFleetImport, GoesOnBehindAFailedWrite) {
    plugReader("a");
    const auto b = plugReader("b");
    connectReplies();
    const int before = bus().exchanges(0);
    run({"config", "get", "bBeepID", "--device", "0"});
    bus().failExchange(0, bus().exchanges(0) - before + 1, 12);
    const CommandRun fleet = run({"config", "import", "a.txt", "--all"});
    EXPECT_EQ(fleet.exit, ExitCode::Failed);
    EXPECT_EQ(fleet.out, std::string("a\n") + kChange + "\nb\n" + kChange +
                             "\n"
                             "NAME  RESULT           CHANGES\n"
                             "a     failed                 -\n"
                             "b     written                1\n");
    EXPECT_TRUE(fleet.err.starts_with("zeltag: writing a failed")) << fleet.err;
    EXPECT_EQ(holdTime(*b), 40);
}

TEST_F(BusFleetImport, IsAnArrayInJson) {
    plugReader("a");
    plugReader("b");
    bus().fail(1, sim::Fault::NoAnswer, 1000);
    const auto json =
        nlohmann::json::parse(run({"config", "import", "a.txt", "--all", "--json"}).out);
    const auto& devices = json.at("devices");
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_EQ(devices[0].at("result"), "written");
    EXPECT_EQ(devices[0].at("changes").at(0).at("kept"), 2000);
    EXPECT_EQ(devices[1].at("result"), "failed");
    EXPECT_EQ(devices[1].at("error").at("device"), "b");
}

// Behind a write comes the only long pause.
TEST_F(BusFleetImport, CtrlCLetsTheReaderUnderWayFinish) {
    plugReader("a");
    plugReader("b");
    onPause([](std::uint64_t microseconds) {
        if (microseconds > 1'000'000)
            std::raise(SIGINT);
    });
    EXPECT_EXIT(importAndExit(), ::testing::ExitedWithCode(130), "a +written +1\n$");
}

TEST_F(BusFleetImport, AllAndOneExcludeEachOther) {
    EXPECT_EQ(run({"config", "import", "a.txt", "--all", "--device", "0"}),
              (CommandRun{ExitCode::Usage, "",
                          "zeltag: --all and --device exclude each other; give one of them\n"}));
}

} // namespace

} // namespace zel::test
