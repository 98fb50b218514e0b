// SPDX-License-Identifier: MIT
// A simulated serial line: a connection to the simulator that is the line's bytes.
#include "sim/link/endpoint.h"
#include "sim/preload/clients.h"
#include "sim/preload/exchange.h"

#include <cerrno>
#include <csignal>

namespace zel::sim {

namespace {

int errorOf(const std::string& status) {
    if (status == "EACCES")
        return EACCES;
    return status == "ENOENT" ? ENOENT : EIO;
}

// No serial line raises the signal, and this one isn't to end an application either when the
// simulator goes away. One that handles it keeps its handler.
void ignoreBrokenPipes() {
    struct sigaction action = {};
    if (sigaction(SIGPIPE, nullptr, &action) == 0 && action.sa_handler == SIG_DFL)
        std::signal(SIGPIPE, SIG_IGN);
}

int refused(int error) {
    errno = error;
    return -1;
}

} // namespace

int openRemoteLine(const char* path) {
    Descriptor line = connectTo(simulatorSocket(), std::string(kLineGreeting) + path);
    if (!line.isOpen())
        return refused(ENODEV);
    const auto status = readLine(line.number());
    if (!status || *status != kLineOpen)
        return refused(status ? errorOf(*status) : ENODEV);
    ignoreBrokenPipes();
    return line.release();
}

} // namespace zel::sim
