// SPDX-License-Identifier: MIT
// The fixture of the tests with simulated lines: what it puts into the trace, and its discards.
#include "tests/support/line_test.h"

#include "transport/line_opener.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

using namespace zel;

namespace {
class LineFixture : public test::LineTest {
protected:
    // Sends a frame as a host does, with a pause behind its class byte, and reads the answer.
    static std::string exchange(int fd, const std::string& header) {
        EXPECT_EQ(write(fd, "\xFA", 1), 1);
        usleep(50'000);
        EXPECT_EQ(write(fd, header.data(), header.size()), static_cast<ssize_t>(header.size()));
        usleep(5'000);
        return received(fd);
    }
    static std::string received(int fd) {
        fcntl(fd, F_SETFL, O_NONBLOCK);
        char bytes[64];
        const ssize_t count = read(fd, bytes, sizeof bytes);
        return {bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }
};
} // namespace

TEST_F(LineFixture, ShowsWritesBeforeAndAnswersBehindAPause) {
    attachReader();
    const int fd = lines().open(kPath);
    EXPECT_EQ(exchange(fd, "\x04\xED\xED\x04").size(), 7U);
    EXPECT_EQ(bus().takeTrace(), "open /dev/ttySIM1\n"
                                 "> FA\n"
                                 "~ 50 ms\n"
                                 "> 04 ED ED 04\n"
                                 "~ 5 ms\n"
                                 "< 04 00 00 42 01 90 00\n");
    close(fd);
}

TEST_F(LineFixture, AttachesReadersOfAnyKind) {
    auto stream = attachReader("/dev/ttySIM7", {.volume = std::uint8_t{3}});
    const int fd = lines().open("/dev/ttySIM7");
    EXPECT_EQ(exchange(fd, std::string("\x0C\x06\0\0", 4)), "\x0C\x03");
    EXPECT_EQ(stream->commands(), 1);
    close(fd);
}

TEST_F(LineFixture, DiscardsWhatTheHostDidNotRead) {
    attachReader();
    const int fd = lines().open(kPath);
    lines().say(kPath, std::vector<std::uint8_t>{0xAA, 0xBB});
    usleep(1'000);
    EXPECT_EQ(tcflush(fd, TCOFLUSH), 0);
    bus().takeTrace();
    EXPECT_EQ(tcflush(fd, TCIFLUSH), 0);
    EXPECT_EQ(tcflush(fd, TCIOFLUSH), 0) << "nothing is left";
    EXPECT_EQ(received(fd), "");
    EXPECT_EQ(bus().takeTrace(), "x AA BB\n");
    close(fd);
}

TEST_F(LineFixture, LeavesBytesThatAreStillToComeAlone) {
    attachReader();
    const int fd = lines().open(kPath);
    lines().say(kPath, std::vector<std::uint8_t>{0xAA});
    tcflush(fd, TCIFLUSH);
    usleep(1'000);
    EXPECT_EQ(received(fd), "\xAA");
    close(fd);
}

TEST_F(LineFixture, LeavesOtherDescriptorsToTheSystem) {
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(tcflush(ends[0], TCIFLUSH), -1);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(LineFixture, TellsEqualLinesInARowOnce) {
    for (const int pause : {5'000, 5'000, 5'000, 1'000, 5'000, 5'000})
        usleep(static_cast<useconds_t>(pause));
    EXPECT_EQ(takeShortTrace(), "~ 5 ms, 3 times\n"
                                "~ 1 ms\n"
                                "~ 5 ms, 2 times\n");
    EXPECT_EQ(takeShortTrace(), "");
    usleep(1'000);
    EXPECT_EQ(takeShortTrace(), "~ 1 ms\n");
}
