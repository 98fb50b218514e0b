// SPDX-License-Identifier: MIT
// Each call goes to the test's function, or on to the system's.
#include "tests/transport/system_calls.h"

#include <dlfcn.h>
#include <poll.h>
#include <sys/socket.h>

using zel::test::systemCalls;

namespace zel::test {

SystemCalls& systemCalls() {
    static SystemCalls calls;
    return calls;
}

} // namespace zel::test

namespace {

template <class Function> Function* systemOwn(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

#pragma GCC visibility push(default)

int tcflush(int fd, int queue) noexcept {
    static const auto own = systemOwn<int(int, int)>("tcflush");
    return systemCalls().discard ? systemCalls().discard(fd, queue) : own(fd, queue);
}

int tcdrain(int fd) {
    static const auto own = systemOwn<int(int)>("tcdrain");
    return systemCalls().drain ? systemCalls().drain(fd) : own(fd);
}

int tcsetattr(int fd, int action, const termios* settings) noexcept {
    static const auto own = systemOwn<int(int, int, const termios*)>("tcsetattr");
    if (systemCalls().onSettings)
        systemCalls().onSettings(action, *settings);
    return own(fd, action, settings);
}

int connect(int fd, const sockaddr* to, socklen_t size) {
    static const auto own = systemOwn<int(int, const sockaddr*, socklen_t)>("connect");
    return systemCalls().connect ? systemCalls().connect(fd, to, size) : own(fd, to, size);
}

int poll(pollfd* ends, nfds_t count, int milliseconds) {
    static const auto own = systemOwn<int(pollfd*, nfds_t, int)>("poll");
    const int result = systemCalls().poll ? systemCalls().poll() : 0;
    return result != 0 ? result : own(ends, count, milliseconds);
}

int getsockopt(int fd, int level, int option, void* value, socklen_t* size) noexcept {
    static const auto own = systemOwn<int(int, int, int, void*, socklen_t*)>("getsockopt");
    const int result = own(fd, level, option, value, size);
    if (level == SOL_SOCKET && option == SO_ERROR && systemCalls().socketError)
        *static_cast<int*>(value) = systemCalls().socketError();
    return result;
}

ssize_t sendto(int fd, const void* bytes, size_t count, int flags, const sockaddr* to,
               socklen_t size) {
    static const auto own =
        systemOwn<ssize_t(int, const void*, size_t, int, const sockaddr*, socklen_t)>("sendto");
    if (!systemCalls().sendTo || size != sizeof(sockaddr_in))
        return own(fd, bytes, count, flags, to, size);
    sockaddr_in receiver = *reinterpret_cast<const sockaddr_in*>(to);
    systemCalls().sendTo(receiver);
    return own(fd, bytes, count, flags, reinterpret_cast<const sockaddr*>(&receiver), size);
}

int getifaddrs(ifaddrs** list) noexcept {
    ++systemCalls().listings;
    if (systemCalls().listingFails)
        return -1;
    *list = systemCalls().interfaces;
    return 0;
}

void freeifaddrs(ifaddrs* list) noexcept {
    systemCalls().releases += list == systemCalls().interfaces ? 1 : 1000;
}

#pragma GCC visibility pop
}
