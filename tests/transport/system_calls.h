// SPDX-License-Identifier: MIT
// System calls that this test program stands before, for what a machine shows too rarely or never.
#pragma once

#include <functional>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <termios.h>

namespace zel::test {

// An empty function leaves the call to the system.
struct SystemCalls {
    std::function<int(int fd, int queue)> discard = {};                       // tcflush()
    std::function<int(int fd)> drain = {};                                    // tcdrain()
    std::function<void(int action, const termios& settings)> onSettings = {}; // before tcsetattr()
    std::function<int(int fd, const sockaddr* to, socklen_t size)> connect = {};
    std::function<int()> poll = {};                   // before the system's; not 0: instead of it
    std::function<int()> socketError = {};            // what getsockopt() tells of it
    std::function<void(sockaddr_in& to)> sendTo = {}; // may change the receiver
    ifaddrs* interfaces = nullptr;
    int listings = 0;
    int releases = 0;
    bool listingFails = false;
};

SystemCalls& systemCalls();

} // namespace zel::test
