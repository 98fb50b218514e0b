// SPDX-License-Identifier: MIT
// The simulated lines by themselves, opened and spoken to as the library does.
#include "sim/tag/stream.h"
#include "sim/wire/line.h"
#include "sim/wire/line_thread.h"
#include "sim/wire/usb_bus.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <unistd.h>

using namespace zel::sim;

namespace {

// Answers every byte with two of its successor.
class Doubler : public StreamDevice {
public:
    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override {
        heard += bytes.size();
        std::vector<std::uint8_t> answer;
        for (const std::uint8_t byte : bytes)
            answer.insert(answer.end(), 2, static_cast<std::uint8_t>(byte + 1));
        return answer;
    }
    void restart() override { ++restarts; }

    int restarts = 0;
    std::size_t heard = 0;
};

class SimulatedLine : public ::testing::Test {
protected:
    SimulatedLine() {
        lines().clear();
        usbBus().clear();
        usbBus().startTrace();
        lines().attach(kPath, device_);
    }
    ~SimulatedLine() override {
        lines().clear();
        usbBus().clear();
    }

    static int open(const char* path = kPath) {
        const int fd = lines().open(path);
        EXPECT_NE(fd, -1);
        return fd;
    }
    static void send(int fd, const std::string& bytes) {
        EXPECT_EQ(write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    // What waits at the host's end; "end" when the line was hung up.
    static std::string received(int fd) {
        fcntl(fd, F_SETFL, O_NONBLOCK);
        char bytes[256];
        const ssize_t count = read(fd, bytes, sizeof bytes);
        if (count == 0)
            return "end";
        return {bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }
    static std::string trace() { return usbBus().takeTrace(); }

    static constexpr const char* kPath = "/dev/ttySIM1";
    static constexpr const char* kOther = "/dev/ttySIM2";
    std::shared_ptr<Doubler> device_ = std::make_shared<Doubler>();
};

} // namespace

TEST_F(SimulatedLine, MovesBytesBothWaysWhenItIsPumped) {
    const int fd = open();
    send(fd, "\x01\x10");
    EXPECT_EQ(received(fd), "");
    lines().pump();
    EXPECT_EQ(received(fd), "\x02\x02\x11\x11");
    close(fd);
    lines().pump();
    EXPECT_EQ(trace(), "open /dev/ttySIM1\n"
                       "> 01 10\n"
                       "< 02 02 11 11\n"
                       "close /dev/ttySIM1\n");
}

TEST_F(SimulatedLine, MovesAnAnswerInTheSecondHalfOfAPump) {
    const int fd = open();
    send(fd, "\x01");
    lines().takeIn();
    EXPECT_EQ(received(fd), "");
    lines().deliver();
    EXPECT_EQ(received(fd), "\x02\x02");
    close(fd);
}

TEST_F(SimulatedLine, ShowsTextInQuotes) {
    const int fd = open();
    trace();
    send(fd, "a\"\\\r\n");
    lines().takeIn();
    send(fd, "a\x7F");
    lines().takeIn();
    EXPECT_EQ(trace(), "> \"a\\\"\\\\\\r\\n\"\n"
                       "> 61 7F\n");
    close(fd);
}

TEST_F(SimulatedLine, IsThereOnlyWhereADeviceIs) {
    EXPECT_EQ(lines().open("/dev/ttyS0"), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(lines().opens(), 1);
    EXPECT_EQ(lines().openLines(), 0);
    EXPECT_EQ(trace(), "open /dev/ttyS0 fails\n");
}

TEST_F(SimulatedLine, RefusesToOpenWhenTold) {
    lines().failOpens(kPath);
    EXPECT_EQ(lines().open(kPath), -1);
    EXPECT_EQ(errno, EACCES);
    EXPECT_EQ(trace(), "open /dev/ttySIM1 fails\n");
    lines().failOpens(kPath, false);
    close(open());
}

TEST_F(SimulatedLine, StartsItsDeviceAnewWithEachOpen) {
    close(open());
    const int fd = open();
    EXPECT_EQ(device_->restarts, 2);
    EXPECT_EQ(lines().openLines(), 1);
    EXPECT_EQ(lines().opens(), 2);
    EXPECT_EQ(trace(), "open /dev/ttySIM1\n"
                       "close /dev/ttySIM1\n"
                       "open /dev/ttySIM1\n");
    close(fd);
}

TEST_F(SimulatedLine, TakesInWhatWasWrittenBeforeItsClose) {
    const int fd = open();
    send(fd, "\x01");
    close(fd);
    lines().pump();
    EXPECT_EQ(trace(), "open /dev/ttySIM1\n"
                       "> 01\n"
                       "close /dev/ttySIM1\n");
    EXPECT_EQ(lines().openLines(), 0);
}

TEST_F(SimulatedLine, GivesTheHostADescriptorThatNoChildInherits) {
    const int fd = open();
    EXPECT_NE(fcntl(fd, F_GETFD) & FD_CLOEXEC, 0);
    close(fd);
}

TEST_F(SimulatedLine, Dribbles) {
    const int fd = open();
    lines().dribble(kPath, 3);
    send(fd, "\x01\x02");
    lines().pump();
    EXPECT_EQ(received(fd), "\x02\x02\x03");
    lines().pump();
    EXPECT_EQ(received(fd), "\x03");
    lines().dribble(kPath, 0);
    send(fd, "\x01\x02");
    lines().pump();
    EXPECT_EQ(received(fd), "\x02\x02\x03\x03");
    close(fd);
}

TEST_F(SimulatedLine, FallsSilent) {
    const int fd = open();
    lines().silence(kPath);
    send(fd, "\x01");
    lines().pump();
    lines().silence(kPath, false);
    send(fd, "\x04");
    lines().pump();
    EXPECT_EQ(received(fd), "\x05\x05");
    EXPECT_EQ(trace(), "open /dev/ttySIM1\n"
                       "> 01\n"
                       "> 04\n"
                       "< 05 05\n");
    close(fd);
}

TEST_F(SimulatedLine, HangsUpUntilItIsOpenedAnew) {
    const int fd = open();
    send(fd, "\x01");
    lines().takeIn();
    lines().hangUp(kPath);
    lines().deliver();
    EXPECT_EQ(received(fd), "end");
    send(fd, "\x01");
    lines().pump();
    EXPECT_EQ(received(fd), "end");
    EXPECT_EQ(device_->heard, 1U);
    close(fd);
    const int anew = open();
    send(anew, "\x01");
    lines().pump();
    EXPECT_EQ(received(anew), "\x02\x02");
    EXPECT_EQ(trace(), "open /dev/ttySIM1\n"
                       "> 01\n"
                       "hang up /dev/ttySIM1\n"
                       "> 01\n"
                       "close /dev/ttySIM1\n"
                       "open /dev/ttySIM1\n"
                       "> 01\n"
                       "< 02 02\n");
    close(anew);
}

TEST_F(SimulatedLine, SaysWhatNobodyAskedFor) {
    const int fd = open();
    const std::uint8_t stale[] = {0xAA, 0xBB};
    lines().say(kPath, stale);
    send(fd, "\x01");
    lines().pump();
    EXPECT_EQ(received(fd), "\xAA\xBB\x02\x02");
    close(fd);
}

TEST_F(SimulatedLine, KeepsSeveralApartAndNamesThem) {
    lines().attach(kOther, std::make_shared<TagStream>(std::make_shared<TagReader>()));
    const int one = open();
    const int other = open(kOther);
    send(one, "\x01");
    send(other, "\xFA\x04\xED\xED\x04");
    lines().pump();
    EXPECT_EQ(received(one), "\x02\x02");
    EXPECT_EQ(received(other), std::string("\x04\0\0\x42\x01\x90\0", 7));
    EXPECT_EQ(trace(), "open /dev/ttySIM1\n"
                       "open /dev/ttySIM2\n"
                       "ttySIM1> 01\n"
                       "ttySIM2> FA 04 ED ED 04\n"
                       "ttySIM1< 02 02\n"
                       "ttySIM2< 04 00 00 42 01 90 00\n");
    close(one);
    close(other);
}

TEST_F(SimulatedLine, EndsWhenItsDeviceIsTakenAway) {
    const int fd = open();
    lines().detach(kPath);
    EXPECT_EQ(received(fd), "end");
    EXPECT_EQ(lines().openLines(), 0);
    EXPECT_EQ(lines().open(kPath), -1);
    close(fd);
}

TEST_F(SimulatedLine, HasTheDeviceThatWasAttachedLast) {
    auto second = std::make_shared<Doubler>();
    lines().attach(kPath, second);
    close(open());
    EXPECT_EQ(device_->restarts, 0);
    EXPECT_EQ(second->restarts, 1);
}

TEST_F(SimulatedLine, ReleasesItsSocketsWhenCleared) {
    const int fd = open();
    lines().clear();
    EXPECT_EQ(received(fd), "end");
    EXPECT_EQ(lines().openLines(), 0);
    close(fd);
    const int lowest = dup(0);
    lines().attach(kPath, device_);
    for (int round = 0; round < 50; ++round) {
        close(open());
        lines().pump();
    }
    const int lowestAfter = dup(0);
    EXPECT_EQ(lowestAfter, lowest + 1) << "no descriptor stayed open";
    close(lowest);
    close(lowestAfter);
}

TEST_F(SimulatedLine, IsServedByAThreadInRealTime) {
    usbBus().clear(); // nothing is traced beside a thread
    const LineThread thread;
    for (int round = 0; round < 3; ++round) {
        const int fd = open();
        send(fd, "\x01");
        std::string answer;
        pollfd end = {fd, POLLIN, 0};
        while (answer.size() < 2 && poll(&end, 1, 10'000) == 1)
            answer += received(fd);
        EXPECT_EQ(answer, "\x02\x02");
        close(fd);
    }
}
