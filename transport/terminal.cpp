// SPDX-License-Identifier: MIT
// Terminal settings by POSIX termios.
#include "transport/terminal.h"

#include "transport/line_opener.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace {

int openPath(const char* path) { return open(path, O_RDWR | O_NOCTTY | O_SYNC | O_CLOEXEC); }

constinit zelLineOpener opener = openPath;

struct Speed {
    std::int32_t rate;
    speed_t constant;
};

constexpr std::array<Speed, 5> kSpeeds = {
    {{9600, B9600}, {19200, B19200}, {38400, B38400}, {57600, B57600}, {115200, B115200}}};

constexpr tcflag_t kEchoAndSignals = ICANON | ECHO | ECHOE | ISIG;

// -1 is no speed of the terminal layer either: it refuses it and keeps the one it had.
speed_t constantOf(std::int32_t rate) {
    for (const Speed& speed : kSpeeds)
        if (speed.rate == rate)
            return speed.constant;
    return static_cast<speed_t>(rate);
}

void setSpeed(termios& settings, std::uint32_t rate) {
    const speed_t speed = constantOf(zel::terminal::get_baud(rate));
    cfsetispeed(&settings, speed);
    cfsetospeed(&settings, speed);
}

} // namespace

void CPort_UseOpener(zelLineOpener function) { opener = function ? function : openPath; }

namespace zel::terminal {

int openLine(const char* path) { return opener(path); }

std::int32_t get_baud(std::uint32_t rate) {
    for (const Speed& speed : kSpeeds)
        if (static_cast<std::uint32_t>(speed.rate) == rate)
            return speed.rate;
    return -1;
}

void prepare(int fd, std::uint32_t rate) {
    termios settings = {};
    if (tcgetattr(fd, &settings) != 0)
        return;
    settings.c_cflag |= CLOCAL | CREAD;
    settings.c_cflag &= ~static_cast<tcflag_t>(PARENB | CSTOPB | CRTSCTS | CSIZE);
    settings.c_cflag |= CS8;
    settings.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY | INPCK | ISTRIP | PARMRK);
    settings.c_lflag &= ~kEchoAndSignals;
    setSpeed(settings, rate);
    tcsetattr(fd, TCSANOW, &settings);
}

void setRaw(int fd, std::uint32_t rate) {
    termios settings = {};
    if (tcgetattr(fd, &settings) != 0)
        return;
    const speed_t before = cfgetospeed(&settings);
    settings.c_cflag = CS8 | CLOCAL | CREAD;
    cfsetispeed(&settings, before); // the flags carry the speed on some systems
    cfsetospeed(&settings, before);
    setSpeed(settings, rate);
    settings.c_iflag = IGNPAR;
    settings.c_oflag = 0;
    settings.c_lflag &= ~kEchoAndSignals;
    settings.c_cc[VMIN] = 0;
    settings.c_cc[VTIME] = 0;
    tcsetattr(fd, TCSANOW, &settings);
}

void setNonBlocking(int fd) { fcntl(fd, F_SETFL, O_NONBLOCK); }

void setBlocking(int fd) { fcntl(fd, F_SETFL, 0); }

void discardInput(int fd) { tcflush(fd, TCIFLUSH); }

void discardOutput(int fd) { tcflush(fd, TCOFLUSH); }

void discardBoth(int fd) { tcflush(fd, TCIOFLUSH); }

long writeThrough(int fd, const char* bytes, std::size_t size) {
    const ssize_t written = write(fd, bytes, size);
    while (tcdrain(fd) != 0 && errno == EINTR) {
    }
    return static_cast<long>(written);
}

} // namespace zel::terminal
