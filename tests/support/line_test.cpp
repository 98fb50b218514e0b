// SPDX-License-Identifier: MIT
// Pumps the lines at each pause; stands before libc's discard, which a socket doesn't know.
#include "tests/support/line_test.h"

#include "sim/wire/byte_text.h"

#include <atomic>
#include <cstdint>
#include <dlfcn.h>
#include <sstream>
#include <sys/socket.h>
#include <termios.h>

namespace zel::test {

namespace {

std::atomic<bool> discards = false;

bool isSimulatedLine(int fd) {
    sockaddr_storage address = {};
    socklen_t size = sizeof address;
    return discards && getsockname(fd, reinterpret_cast<sockaddr*>(&address), &size) == 0 &&
           address.ss_family == AF_UNIX;
}

void discardUnread(int fd) {
    std::vector<std::uint8_t> lost;
    std::uint8_t piece[512];
    for (;;) {
        const ssize_t count = recv(fd, piece, sizeof piece, MSG_DONTWAIT);
        if (count <= 0)
            break;
        lost.insert(lost.end(), piece, piece + count);
    }
    if (!lost.empty())
        sim::usbBus().note("x " + sim::chunkOf(lost));
}

} // namespace

LineTest::LineTest() {
    lines().clear();
    sim::Lines::install();
    discards = true;
    onPause([](std::uint64_t us) {
        lines().takeIn();
        bus().note("~ " + std::to_string(us / 1000) + " ms");
        lines().deliver();
    });
}

LineTest::~LineTest() {
    USBDisconnect();
    lines().takeIn();
    EXPECT_EQ(lines().openLines(), 0) << "a line stayed open";
    discards = false;
    sim::Lines::uninstall();
    lines().clear();
}

std::shared_ptr<sim::TagStream> LineTest::attachReader(const std::string& path,
                                                       const sim::TagOptions& options,
                                                       sim::TagSpeech speech) {
    auto stream =
        std::make_shared<sim::TagStream>(std::make_shared<sim::TagReader>(options), speech);
    lines().attach(path, stream);
    return stream;
}

std::string LineTest::takeShortTrace() {
    std::istringstream trace(bus().takeTrace());
    std::string text;
    std::string last;
    int times = 0;
    const auto tell = [&] {
        if (times != 0)
            text += last + (times > 1 ? ", " + std::to_string(times) + " times\n" : "\n");
    };
    for (std::string line; std::getline(trace, line); ++times) {
        if (line == last)
            continue;
        tell();
        last = line;
        times = 0;
    }
    tell();
    return text;
}

} // namespace zel::test

extern "C" __attribute__((visibility("default"))) int tcflush(int fd, int queue) {
    using Function = int (*)(int, int);
    if (!zel::test::isSimulatedLine(fd)) {
        static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "tcflush"));
        return real(fd, queue);
    }
    if (queue != TCOFLUSH)
        zel::test::discardUnread(fd);
    return 0;
}
