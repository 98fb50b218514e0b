// SPDX-License-Identifier: MIT
// A signal in the middle of `zeltag firmware load`: the user is told where the reader is left.
#include "cli/main/program.h"
#include "tests/cli/firmware_command_test.h"

#include <csignal>
#include <cstdlib>
#include <utility>

namespace zel::test {

namespace {

using ::testing::ExitedWithCode;

constexpr char kUncertain[] =
    "zeltag: interrupted: a may be in its boot loader now, without firmware; run it again: "
    "zeltag firmware load --recover f\\.hex\n$";
constexpr char kLeftThere[] =
    "zeltag: interrupted: a is left in its boot loader, with half a firmware; run it again: "
    "zeltag firmware load --recover f\\.hex\n$";

class BusFirmwareInterruptDeathTest : public FirmwareCommandTest {
protected:
    // Lets a signal come with the first pause once so many lines were taken; -1: before the entry.
    static void raiseBehind(const std::shared_ptr<sim::TagReader>& reader, int lines, int signal) {
        onPause([reader, lines, signal, raised = false](std::uint64_t us) mutable {
            const bool isThere = lines < 0 ? us == 1'000'000
                                           : reader->bootLoader().isRunning() &&
                                                 reader->bootLoader().lines() == lines;
            if (isThere && !std::exchange(raised, true))
                std::raise(signal);
        });
    }

    [[noreturn]] static void loadAndExit() {
        const char* const arguments[] = {"zeltag", "firmware", "load", "f.hex", "--yes"};
        std::exit(static_cast<int>(cli::runProgram(5, arguments)));
    }
};

TEST_F(BusFirmwareInterruptDeathTest, BeforeTheEntryTheStateIsUncertain) {
    raiseBehind(plugZt7(), -1, SIGINT);
    EXPECT_EXIT(loadAndExit(), ExitedWithCode(1), kUncertain);
}

TEST_F(BusFirmwareInterruptDeathTest, TerminationBeforeTheEntryEndsItToo) {
    raiseBehind(plugZt7(), -1, SIGTERM);
    EXPECT_EXIT(loadAndExit(), ExitedWithCode(1), kUncertain);
}

TEST_F(BusFirmwareInterruptDeathTest, BetweenTwoLinesTheReaderIsLeftInItsBootLoader) {
    raiseBehind(plugZt7(), 3, SIGINT);
    EXPECT_EXIT(loadAndExit(), ExitedWithCode(1), kLeftThere);
}

TEST_F(BusFirmwareInterruptDeathTest, TerminationBetweenTwoLinesIsToldTheSame) {
    raiseBehind(plugZt7(), 3, SIGTERM);
    EXPECT_EXIT(loadAndExit(), ExitedWithCode(1), kLeftThere);
}

// The handler only notes it, and the library ends the process behind the last line.
TEST_F(BusFirmwareInterruptDeathTest, BehindTheLastLineTheStateIsUncertain) {
    raiseBehind(plugZt7(), kLines - 1, SIGINT);
    EXPECT_EXIT(loadAndExit(), ExitedWithCode(1), kUncertain);
}

TEST_F(BusFirmwareInterruptDeathTest, LoadThatEndedIsNotToldAsInterrupted) {
    const auto reader = plugZt7();
    EXPECT_EXIT(loadAndExit(), ExitedWithCode(0), "zeltag: 100 % of 10 lines\n$");
    reader->bootLoader().options().reply[3] = {0, 'R'};
    EXPECT_EXIT(loadAndExit(), ExitedWithCode(1),
                "zeltag: 30 % of 10 lines\nzeltag: loading f\\.hex into a failed: [^\n]*\n$");
}

TEST_F(BusFirmwareInterruptDeathTest, LoadThatWasNotInterruptedLeavesNoHandlerBehind) {
    plugZt7();
    EXPECT_EQ(run({"firmware", "load", "f.hex", "--yes"}).exit, cli::ExitCode::Done);
    for (const int signal : {SIGINT, SIGTERM, SIGABRT, SIGUSR1}) {
        struct sigaction action = {};
        sigaction(signal, nullptr, &action);
        EXPECT_EQ(action.sa_handler, SIG_DFL) << signal;
    }
}

} // namespace

} // namespace zel::test
