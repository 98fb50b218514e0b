// SPDX-License-Identifier: MIT
// The percentages of a flash, and its error words in words.
#include "cli/firmware/flash_failure.h"
#include "cli/firmware/flash_progress.h"
#include "frame/zelTagAPI.h"
#include "tests/cli/terminal.h"

#include <csignal>
#include <gtest/gtest.h>

namespace zel::cli {

namespace {

using Percentages = std::vector<int>;

const Percentages kAll = {0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100};

TEST(ToldPercentages, AreThoseThatALineHits) {
    EXPECT_EQ(toldPercentages(7), (Percentages{0, 100}));
    EXPECT_EQ(toldPercentages(1), (Percentages{0, 100}));
    EXPECT_EQ(toldPercentages(4), (Percentages{0, 50, 100}));
    EXPECT_EQ(toldPercentages(40), kAll);
}

TEST(ToldPercentages, AreToldOnceWhenSeveralLinesHitThem) {
    EXPECT_EQ(toldPercentages(12'345), kAll);
}

TEST(ToldPercentages, BeginWithNoughtForNoLine) { EXPECT_EQ(toldPercentages(0), Percentages{0}); }

TEST(FlashProgress, IsABarOnATerminal) {
    const test::Terminal terminal(STDERR_FILENO);
    {
        const FlashProgress progress(4, true);
        EXPECT_FALSE(hasOpenBar());
        for (int signal = 0; signal < 3; ++signal)
            std::raise(SIGUSR1);
        EXPECT_TRUE(hasOpenBar());
    }
    EXPECT_EQ(terminal.shownLine(), "\rzeltag: [....................]   0 %"
                                    "\rzeltag: [##########..........]  50 %"
                                    "\rzeltag: [####################] 100 %\r\n");
}

TEST(FlashProgress, SignalsBeyondTheLastAreCountedAndNotShown) {
    ::testing::internal::CaptureStderr();
    {
        const FlashProgress progress(1, true);
        for (int signal = 0; signal < 9; ++signal)
            std::raise(SIGUSR1);
    }
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "zeltag: 0 % of 1 line\nzeltag: 100 % of 1 line\n");
}

TEST(FlashProgress, UnshownOneTakesTheSignalsAllTheSame) {
    ::testing::internal::CaptureStderr();
    {
        const FlashProgress progress(1, false);
        std::raise(SIGUSR1);
        EXPECT_FALSE(isAllTold());
        std::raise(SIGUSR1);
        EXPECT_TRUE(isAllTold());
    }
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

std::string told(std::int64_t word) { return asLine(explainFlash(word, "f", "a")); }

TEST(FlashFailure, EachWordHasAReasonAndAWayOut) {
    const std::string failed = "loading f into a failed: ";
    const std::string left = "it is left in its boot loader; ";
    const std::string perhaps = "it may be in its boot loader now; ";
    const std::string cable =
        "check its cable, then load the file again: zeltag firmware load --recover f";
    const std::string otherFile =
        "load a file made for it, or this one again: zeltag firmware load --recover f";
    const std::string replug =
        "unplug it and plug it in again, then run: zeltag firmware load --recover f";
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_ENTRY),
              failed + "its boot loader wasn't entered (library error 0x90100000); " + perhaps +
                  replug);
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_REPLY),
              failed + "a reply of its boot loader was lost (library error 0x90200000); " + left +
                  cable);
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_REFUSED),
              failed + "its boot loader refused to start (library error 0x90300000); " + perhaps +
                  replug);
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_LINE),
              failed + "it refused a line or never took it (library error 0x90400000); " + left +
                  otherFile);
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_DEVICE),
              failed + "it is no proximity reader on USB (library error 0x90500000); "
                       "`zeltag list` shows the products");
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_READER_REFUSED),
              failed + "it refused a line (library error 0x90600000); " + left + otherFile);
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_UNKNOWN_REPLY),
              failed +
                  "it gave no answer to a line, or one that isn't known (library error "
                  "0x90700000); " +
                  left + cable);
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_FILE),
              failed + "the file can't be opened any more (library error 0x90800000); "
                       "check its name");
    EXPECT_EQ(told(ZELTAGAPI_ERR_BOOT_FRAME),
              failed + "a part of a line couldn't be sent (library error 0x90900000); " + left +
                  cable);
}

TEST(FlashFailure, OtherWordIsToldAsItIs) {
    EXPECT_EQ(told(0), "loading f into a failed: the library tells no reason; it may be in its "
                       "boot loader now; check its cable, then load the file again: zeltag "
                       "firmware load --recover f");
    EXPECT_NE(told(0x42).find(" (library error 0x42); "), std::string::npos);
}

} // namespace

} // namespace zel::cli
