// SPDX-License-Identifier: MIT
// The settings of a line, on a terminal of the system.
#include "transport/terminal.h"

#include "tests/support/descriptors.h"
#include "tests/support/library_test.h"
#include "tests/transport/system_calls.h"
#include "transport/line_opener.h"
#include "transport/port.h"

#include <cstdlib>
#include <iostream>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <utility>

namespace zel::test {

namespace {

constexpr int kPatience = 1000; // ms

class Terminal : public LibraryTest {
protected:
    Terminal() {
        systemCalls() = {};
        far_ = posix_openpt(O_RDWR | O_NOCTTY);
        const bool isUsable = far_ >= 0 && grantpt(far_) == 0 && unlockpt(far_) == 0;
        const char* const path = isUsable ? ptsname(far_) : nullptr;
        near_ = path ? open(path, O_RDWR | O_NOCTTY) : -1;
        if (near_ < 0) {
            std::cout << "skipped: this machine has no terminals" << std::endl;
            std::_Exit(77);
        }
        SetComLinux(1, path);
    }
    ~Terminal() override {
        systemCalls() = {};
        port_.Disconnect();
        close(near_);
        close(far_);
        baudrate = 9600;
    }

    void connect() {
        port_.Disconnect();
        const auto before = openDescriptors();
        EXPECT_TRUE(port_.Connect());
        line_ = newDescriptor(before);
        EXPECT_NE(line_, -1);
    }
    termios settings() const {
        termios now = {};
        EXPECT_EQ(tcgetattr(near_, &now), 0);
        return now;
    }
    std::pair<speed_t, speed_t> speeds() const {
        const termios now = settings();
        return {cfgetispeed(&now), cfgetospeed(&now)};
    }
    bool blocks() const { return (fcntl(line_, F_GETFL) & O_NONBLOCK) == 0; }

    // What the device sends, until it waits at the host's end.
    void send(std::string_view bytes) const {
        const int before = waiting();
        EXPECT_EQ(write(far_, bytes.data(), bytes.size()), std::ssize(bytes));
        for (int turn = 0; turn < kPatience && waiting() < before + std::ssize(bytes); ++turn)
            poll(nullptr, 0, 1);
        EXPECT_EQ(waiting(), before + std::ssize(bytes));
    }
    int waiting() const {
        int count = 0;
        ioctl(near_, FIONREAD, &count);
        return count;
    }

    int far_ = -1;  // the device's end
    int near_ = -1; // the test's own view of the host's end
    int line_ = -1; // the library's
    CPort port_;
};

constexpr tcflag_t kControl = CSIZE | CSTOPB | CREAD | PARENB | PARODD | HUPCL | CLOCAL | CRTSCTS;

// Everything that a byte stream must not have.
termios wrong(termios settings) {
    settings.c_cflag |= CSTOPB | PARENB | PARODD | HUPCL | CRTSCTS;
    settings.c_cflag &= ~static_cast<tcflag_t>(CLOCAL);
    settings.c_iflag |=
        IXON | IXOFF | IXANY | INPCK | ISTRIP | PARMRK | ICRNL | INLCR | IGNCR | BRKINT | IGNBRK;
    settings.c_oflag |= OPOST | ONLCR | OCRNL;
    settings.c_lflag |= ICANON | ECHO | ECHOE | ISIG;
    settings.c_cc[VMIN] = 9;
    settings.c_cc[VTIME] = 7;
    return settings;
}

constexpr tcflag_t kEcho = ICANON | ECHO | ECHOE | ISIG;

struct Request {
    int action;
    termios settings;
};

} // namespace

TEST_F(Terminal, IsRawAfterAConnect) {
    const termios before = wrong(settings());
    tcsetattr(near_, TCSANOW, &before);
    connect();
    const termios after = settings();
    EXPECT_EQ(after.c_cflag & kControl, tcflag_t{CS8 | CREAD | CLOCAL});
    EXPECT_EQ(after.c_iflag, tcflag_t{IGNPAR});
    EXPECT_EQ(after.c_oflag, tcflag_t{0});
    EXPECT_EQ(after.c_lflag, before.c_lflag & ~kEcho);
    EXPECT_EQ(after.c_cc[VMIN], 0);
    EXPECT_EQ(after.c_cc[VTIME], 0);
    EXPECT_EQ(speeds(), (std::pair<speed_t, speed_t>(B9600, B9600)));
}

TEST_F(Terminal, IsSetInTwoStepsAtOnce) {
    const termios before = wrong(settings());
    tcsetattr(near_, TCSANOW, &before);
    std::vector<Request> asked;
    systemCalls().onSettings = [&](int action, const termios& now) {
        asked.push_back({action, now});
    };
    connect();
    ASSERT_EQ(asked.size(), 2U);
    const auto& [firstAction, first] = asked[0];
    EXPECT_EQ(firstAction, TCSANOW);
    EXPECT_EQ(first.c_cflag & kControl, tcflag_t{CS8 | CREAD | CLOCAL | PARODD | HUPCL});
    EXPECT_EQ(first.c_iflag,
              before.c_iflag & ~tcflag_t{IXON | IXOFF | IXANY | INPCK | ISTRIP | PARMRK});
    EXPECT_EQ(first.c_oflag, before.c_oflag);
    EXPECT_EQ(first.c_lflag, before.c_lflag & ~kEcho);
    EXPECT_EQ(cfgetospeed(&first), speed_t{B9600});
    EXPECT_EQ(asked[1].action, TCSANOW);
    EXPECT_EQ(asked[1].settings.c_cflag & kControl, tcflag_t{CS8 | CREAD | CLOCAL});
}

TEST_F(Terminal, TakesEachOfTheFiveSpeeds) {
    using Row = std::pair<unsigned long, speed_t>;
    connect();
    for (const auto& [rate, speed] : {Row(115200, B115200), Row(57600, B57600), Row(38400, B38400),
                                      Row(19200, B19200), Row(9600, B9600)}) {
        port_.SetBaud(rate);
        EXPECT_EQ(speeds(), std::pair(speed, speed)) << rate;
        EXPECT_EQ(settings().c_cflag & kControl, tcflag_t{CS8 | CREAD | CLOCAL});
    }
}

TEST_F(Terminal, KeepsItsSpeedWhenItIsGivenAnother) {
    connect();
    port_.SetBaud(57600);
    for (const unsigned long rate : {1200UL, 0UL, 9601UL, 4294967295UL}) {
        port_.SetBaud(rate);
        EXPECT_EQ(baudrate, rate);
        EXPECT_EQ(speeds(), (std::pair<speed_t, speed_t>(B57600, B57600))) << rate;
    }
}

TEST_F(Terminal, KeepsItsSpeedThroughAConnectWithAnother) {
    termios before = settings();
    cfsetispeed(&before, B2400);
    cfsetospeed(&before, B2400);
    tcsetattr(near_, TCSANOW, &before);
    baudrate = 1200;
    connect();
    EXPECT_EQ(speeds(), (std::pair<speed_t, speed_t>(B2400, B2400)));
    EXPECT_EQ(settings().c_iflag, tcflag_t{IGNPAR}) << "the rest is set";
}

TEST_F(Terminal, HasTheSpeedsThatStandForThemselves) {
    for (const std::uint32_t rate : {9600U, 19200U, 38400U, 57600U, 115200U})
        EXPECT_EQ(terminal::get_baud(rate), static_cast<std::int32_t>(rate));
    for (const std::uint32_t rate : {0U, 1200U, 9599U, 9601U, 230400U, 4294967295U})
        EXPECT_EQ(terminal::get_baud(rate), -1) << rate;
}

TEST_F(Terminal, BlocksUntilTheFirstRead) {
    char buffer[1];
    connect();
    EXPECT_TRUE(blocks());
    port_.Read(buffer, 1);
    EXPECT_FALSE(blocks());
    connect();
    EXPECT_TRUE(blocks());
    port_.QuickRead(buffer, 1);
    EXPECT_FALSE(blocks());
}

TEST_F(Terminal, BlocksHoweverItWasOpened) {
    CPort_UseOpener([](const char* path) { return open(path, O_RDWR | O_NOCTTY | O_NONBLOCK); });
    connect();
    CPort_UseOpener(nullptr);
    EXPECT_TRUE(blocks());
}

TEST_F(Terminal, IsOpenForBothDirectionsInThisProcessAlone) {
    connect();
    EXPECT_EQ(fcntl(line_, F_GETFL) & O_ACCMODE, O_RDWR);
    EXPECT_EQ(fcntl(line_, F_GETFD), FD_CLOEXEC);
}

TEST_F(Terminal, NeverControlsTheProcess) {
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        const bool isOpen = port_.Connect();
        std::_Exit(!isOpen ? 2 : open("/dev/tty", O_RDWR) == -1 ? 0 : 1);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(Terminal, LosesInputThatCameBeforeTheConnect) {
    char buffer[8] = {};
    send("before\n");
    connect();
    EXPECT_EQ(waiting(), 0);
    send("behind\n");
    EXPECT_EQ(port_.Read(buffer, 7), 7);
    EXPECT_STREQ(buffer, "behind\n");
}

TEST_F(Terminal, CarriesEveryByteAsItComes) {
    std::string bytes;
    for (int value = 0; value < 256; ++value)
        bytes += static_cast<char>(value);
    connect();
    send(bytes);
    std::string buffer(256, 'x');
    EXPECT_EQ(port_.Read(buffer.data(), 256), 256);
    EXPECT_EQ(buffer, bytes);
    pollfd echo = {far_, POLLIN, 0};
    EXPECT_EQ(poll(&echo, 1, 5), 0) << "nothing comes back";
}

TEST_F(Terminal, IsNotOpenedWhereThereIsNone) {
    const auto before = openDescriptors();
    SetComLinux(1, "/dev/pts/does-not-exist");
    EXPECT_FALSE(port_.Connect());
    EXPECT_FALSE(port_.IsConn());
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(Terminal, IsTheSystemsAgainBehindAnotherOpener) {
    CPort_UseOpener([](const char*) { return -1; });
    EXPECT_FALSE(port_.Connect());
    CPort_UseOpener(nullptr);
    connect();
}

TEST_F(Terminal, SettingsGoToTerminalsAlone) {
    int asked = 0;
    systemCalls().onSettings = [&](int, const termios&) { ++asked; };
    CPort_UseOpener([](const char*) { return open("/dev/null", O_RDWR); });
    EXPECT_TRUE(port_.Connect());
    port_.SetBaud(19200);
    CPort_UseOpener(nullptr);
    EXPECT_EQ(asked, 0);
}

} // namespace zel::test
