// SPDX-License-Identifier: MIT
// A handler that writes the signal's number into a pipe.
#include "sim/server/signals.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>

namespace zel::sim {

namespace {

volatile std::sig_atomic_t gPipe = -1;

void note(int signal) {
    const int before = errno;
    const auto number = static_cast<unsigned char>(signal);
    // A full pipe has enough to wake up for.
    [[maybe_unused]] const ssize_t written = write(gPipe, &number, 1);
    errno = before;
}

} // namespace

Signals::Signals(std::span<const int> caught) : caught_(caught) {
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0)
        return;
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    reading_.reset(ends[0]);
    writing_.reset(ends[1]);
    gPipe = ends[1];
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    for (const int signal : caught_)
        sigaction(signal, &action, nullptr);
}

Signals::~Signals() {
    for (const int signal : caught_)
        std::signal(signal, SIG_DFL);
    gPipe = -1;
}

std::optional<int> Signals::take() const {
    unsigned char number = 0;
    if (read(reading_.number(), &number, 1) != 1)
        return {};
    return number;
}

} // namespace zel::sim
