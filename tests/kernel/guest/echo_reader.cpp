// SPDX-License-Identifier: MIT
// Serves the kernel's uhid in a loop of its own.
#include "tests/kernel/guest/echo_reader.h"

#include "sim/tag/reader.h"
#include "sim/uhid/events.h"
#include "tests/kernel/guest/simulator.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/uhid.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zel::test {

namespace {

using sim::UhidBytes;
using sim::UhidRequest;

void send(int fd, const UhidBytes& event) {
    if (write(fd, event.data(), event.size()) != static_cast<ssize_t>(event.size()))
        std::_Exit(1);
}

[[noreturn]] void serve() {
    const int fd = open("/dev/uhid", O_RDWR);
    send(fd,
         sim::uhidCreation({"echo", "echo/0", sim::TagReader::kVendor, sim::TagReader::kProduct}));
    UhidBytes last(9);
    UhidBytes event(sim::uhidEventSize());
    while (read(fd, event.data(), event.size()) > 0) {
        const UhidRequest request = sim::uhidRequestIn(event);
        if (request.kind == UhidRequest::Kind::Set) {
            last = request.data;
            send(fd, sim::uhidSetReply(request.id, 0));
        } else if (request.kind == UhidRequest::Kind::Get) {
            send(fd, sim::uhidGetReply(request.id, 0, last));
        }
    }
    std::_Exit(1);
}

} // namespace

EchoReader::EchoReader() : process_(fork()) {
    if (process_ == 0)
        serve();
    EXPECT_TRUE(waitForNodes(1));
}

EchoReader::~EchoReader() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    EXPECT_TRUE(waitForNodes(0));
}

} // namespace zel::test
