// SPDX-License-Identifier: MIT
// A TCP connect that a signal interrupts.
#include "sim/bridge/socket.h"
#include "tests/support/descriptors.h"
#include "tests/support/library_test.h"
#include "tests/support/loopback.h"
#include "tests/transport/system_calls.h"
#include "transport/tcp_socket.h"

#include <cerrno>
#include <dlfcn.h>
#include <sys/socket.h>

namespace zel::test {

namespace {

class InterruptedConnect : public LibraryTest {
protected:
    InterruptedConnect() {
        EXPECT_TRUE(listener_.listen());
        systemCalls() = {};
        systemCalls().connect = [](int fd, const sockaddr* to, socklen_t size) {
            using Connect = int(int, const sockaddr*, socklen_t);
            reinterpret_cast<Connect*>(dlsym(RTLD_NEXT, "connect"))(fd, to, size);
            return fail(EINTR);
        };
        systemCalls().poll = [this] { return ++polls_ < 3 ? fail(EINTR) : 0; };
    }
    ~InterruptedConnect() override {
        systemCalls() = {};
        socket_Close();
    }

    static int fail(int error) {
        errno = error;
        return -1;
    }
    int open() const {
        const auto [a, b, c, d] = loopbackHost(1);
        return socket_Open(a, b, c, d, listener_.port());
    }

    sim::Socket listener_ = sim::Socket::bound(sim::Socket::Kind::Stream, loopbackHost(1), 0);
    int polls_ = 0;
};

} // namespace

TEST_F(InterruptedConnect, IsWaitedFor) {
    EXPECT_EQ(open(), 0);
    EXPECT_EQ(polls_, 3) << "signals during the wait don't end it";
    EXPECT_EQ(socket_Send("abc", 3), 3);
}

TEST_F(InterruptedConnect, TellsThatItFailedInTheEnd) {
    const auto before = openDescriptors();
    systemCalls().socketError = [] { return ECONNREFUSED; };
    EXPECT_EQ(open(), -3);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(InterruptedConnect, IsNotAnyOtherFailure) {
    systemCalls().connect = [](int, const sockaddr*, socklen_t) { return fail(ETIMEDOUT); };
    EXPECT_EQ(open(), -3);
    EXPECT_EQ(polls_, 0);
}

} // namespace zel::test
