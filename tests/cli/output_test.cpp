// SPDX-License-Identifier: MIT
// Results that can't be delivered, and descriptors that must not pass to a device.
#include "cli/command/output.h"

#include "tests/cli/terminal.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace zel::cli {

namespace {

class OutputToPipe : public ::testing::Test {
protected:
    OutputToPipe() {
        if (pipe(end_) != 0)
            std::abort();
        stream_ = fdopen(end_[1], "w");
    }
    ~OutputToPipe() override { std::fclose(stream_); }

    int end_[2];
    std::FILE* stream_ = nullptr;
};

TEST_F(OutputToPipe, LineArrivesAtOnce) {
    Output output(stream_);
    output.line("one");
    char text[8] = "";
    EXPECT_EQ(read(end_[0], text, sizeof text), 4);
    EXPECT_STREQ(text, "one\n");
    EXPECT_TRUE(output.isOpen());
    close(end_[0]);
}

TEST_F(OutputToPipe, IsNoLongerOpenWhenTheReaderLeavesThoughNothingIsWritten) {
    Output output(stream_);
    close(end_[0]);
    EXPECT_FALSE(output.isOpen());
    EXPECT_EQ(output.error(), EPIPE);
}

TEST_F(OutputToPipe, LinesBehindAFailedOneStayUnwritten) {
    for (const int end : end_)
        fcntl(end, F_SETFL, O_NONBLOCK);
    char filling[512] = "";
    while (write(end_[1], filling, sizeof filling) > 0) {
    }
    Output output(stream_);
    output.line("lost");
    while (read(end_[0], filling, sizeof filling) > 0) {
    }
    output.line("later");
    EXPECT_EQ(output.error(), EAGAIN);
    EXPECT_LT(read(end_[0], filling, sizeof filling), 0) << filling;
    close(end_[0]);
}

TEST(ProgressInPlace, CoversALongerRemarkAndEndsOnce) {
    const test::Terminal terminal(STDERR_FILENO);
    showProgressInPlace("host 10");
    showProgressInPlace("host 9");
    endProgress();
    endProgress();
    warn("behind it");
    EXPECT_EQ(terminal.shownLine(), "\rzeltag: host 10\rzeltag: host 9 \r\n");
    EXPECT_EQ(terminal.shownLine(), "zeltag: behind it\r\n");
}

// What is opened next must not become stdout, or a device would receive the results as its data.
TEST(StandardDescriptors, ClosedOnesAreOccupiedAndStillRefuseResults) {
    EXPECT_EXIT(
        {
            close(STDIN_FILENO);
            close(STDOUT_FILENO);
            occupyStandardDescriptors();
            const bool kept = open("/dev/null", O_RDWR) > STDERR_FILENO;
            const bool refused = write(STDOUT_FILENO, "x", 1) < 0 && errno == EBADF;
            std::exit(kept && refused ? 7 : 1);
        },
        ::testing::ExitedWithCode(7), "");
}

} // namespace

} // namespace zel::cli
