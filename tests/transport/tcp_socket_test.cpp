// SPDX-License-Identifier: MIT
// The process's one TCP socket, on the loopback network.
#include "transport/tcp_socket.h"

#include "sim/bridge/socket.h"
#include "tests/support/descriptors.h"
#include "tests/support/library_test.h"
#include "tests/support/loopback.h"
#include "tests/support/without_descriptors.h"
#include "transport/port.h"

#include <csignal>
#include <map>
#include <netinet/tcp.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zel::test {

namespace {

constexpr int kPatience = 1000; // ms

bool isReady(int fd, short events) {
    pollfd end = {fd, events, 0};
    return poll(&end, 1, kPatience) > 0;
}

// Waits until so many bytes can be received.
void await(int fd, int count) {
    int waiting = 0;
    for (int turn = 0; turn < kPatience && waiting < count; ++turn) {
        ioctl(fd, FIONREAD, &waiting);
        if (waiting < count)
            poll(nullptr, 0, 1);
    }
    EXPECT_EQ(waiting, count);
}

class TcpSocket : public LibraryTest {
protected:
    TcpSocket() {
        EXPECT_TRUE(listener_.listen());
        onPause([this](std::uint64_t us) {
            bus().note("~ " + std::to_string(us / 1000) + " ms");
            if (const auto due = due_.find(++pauses_); due != due_.end())
                answer(due->second);
        });
    }
    ~TcpSocket() override { socket_Close(); }

    static int openAt(std::uint16_t port) {
        const auto [a, b, c, d] = loopbackHost(1);
        return socket_Open(a, b, c, d, port);
    }
    int open() {
        const auto before = openDescriptors();
        const int result = openAt(listener_.port());
        host_ = newDescriptor(before);
        return result;
    }
    sim::Socket accepted() const {
        EXPECT_TRUE(isReady(listener_.descriptor(), POLLIN));
        return listener_.accept();
    }
    void connect() {
        EXPECT_EQ(open(), 0);
        peer_ = accepted();
    }

    // Sends to the host, and waits until it is there.
    void answer(std::string_view bytes) const {
        EXPECT_EQ(::send(peer_.descriptor(), bytes.data(), bytes.size(), 0), std::ssize(bytes));
        await(host_, static_cast<int>(bytes.size()));
    }
    void answerAfter(int pause, const std::string& bytes) { due_[pause] = bytes; }

    int receive(int size) {
        buffer_.assign(static_cast<std::size_t>(size), 'x');
        return socket_Recv(buffer_.data(), size);
    }

    sim::Socket listener_ = sim::Socket::bound(sim::Socket::Kind::Stream, loopbackHost(1), 0);
    sim::Socket peer_;
    int host_ = -1;
    std::string buffer_;

private:
    std::map<int, std::string> due_;
    int pauses_ = 0;
};

std::string pauses(int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += "~ 20 ms\n";
    return all;
}

} // namespace

TEST_F(TcpSocket, IsClosedAtFirst) {
    char byte = 'x';
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(socket_Close(), 0);
    EXPECT_EQ(socket_Send("a", 1), 0);
    EXPECT_EQ(socket_Recv(&byte, 1), 0);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(TcpSocket, OpensAndCloses) {
    connect();
    EXPECT_TRUE(socket_IsOpen());
    EXPECT_EQ(socket_Close(), 0);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_TRUE(isReady(peer_.descriptor(), POLLIN));
    char byte;
    EXPECT_EQ(recv(peer_.descriptor(), &byte, 1, 0), 0) << "the peer sees the end";
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(TcpSocket, TellsThatNobodyListens) {
    const sim::Socket deaf = sim::Socket::bound(sim::Socket::Kind::Stream, loopbackHost(1), 0);
    const auto before = openDescriptors();
    EXPECT_EQ(openAt(deaf.port()), -3);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(TcpSocket, TellsThatThereIsNone) {
    const std::uint16_t port = listener_.port();
    EXPECT_EQ(withoutDescriptors([&] { return openAt(port); }), -2);
    EXPECT_FALSE(socket_IsOpen());
}

TEST_F(TcpSocket, ClosesTheOldOneWhenItOpensAnew) {
    connect();
    EXPECT_EQ(open(), 0);
    EXPECT_TRUE(isReady(peer_.descriptor(), POLLIN));
    char byte;
    EXPECT_EQ(recv(peer_.descriptor(), &byte, 1, 0), 0);
    peer_ = accepted();
    EXPECT_EQ(socket_Send("a", 1), 1);
}

TEST_F(TcpSocket, ClosesTheOldOneAlsoWhenTheNewOneFails) {
    const sim::Socket deaf = sim::Socket::bound(sim::Socket::Kind::Stream, loopbackHost(1), 0);
    connect();
    EXPECT_EQ(openAt(deaf.port()), -3);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(fcntl(host_, F_GETFD), -1);
}

TEST_F(TcpSocket, NeverWaitsAndStaysInThisProcess) {
    connect();
    int noDelay = 0;
    socklen_t size = sizeof noDelay;
    EXPECT_EQ(getsockopt(host_, IPPROTO_TCP, TCP_NODELAY, &noDelay, &size), 0);
    EXPECT_NE(noDelay, 0);
    EXPECT_NE(fcntl(host_, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_EQ(fcntl(host_, F_GETFD), FD_CLOEXEC);
}

TEST_F(TcpSocket, StaysOpenWhenClosingFails) {
    connect();
    close(host_);
    EXPECT_EQ(socket_Close(), -1);
    EXPECT_TRUE(socket_IsOpen());
    replaceSocket(-1);
}

TEST_F(TcpSocket, SendsOnceAndSleeps20Ms) {
    connect();
    EXPECT_EQ(socket_Send("abc", 3), 3);
    EXPECT_EQ(bus().takeTrace(), pauses(1));
    await(peer_.descriptor(), 3);
    EXPECT_EQ(socket_Send("", 0), 0);
    EXPECT_EQ(bus().takeTrace(), pauses(1));
}

TEST_F(TcpSocket, SendsTheRestOfALongOneNever) {
    const std::string bytes(1 << 25, 'a');
    connect();
    const int count = socket_Send(bytes.data(), 1 << 25);
    EXPECT_GT(count, 0);
    EXPECT_LT(count, 1 << 25);
    EXPECT_EQ(bus().takeTrace(), pauses(1));
}

TEST_F(TcpSocket, FailsWithoutASignalWhenThePeerIsGone) {
    static int signals;
    signals = 0;
    const auto before = std::signal(SIGPIPE, [](int) { ++signals; });
    connect();
    peer_.abort();
    EXPECT_TRUE(isReady(host_, POLLIN));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(socket_Send("a", 1), -1);
    std::signal(SIGPIPE, before);
    EXPECT_EQ(signals, 0);
    EXPECT_EQ(bus().takeTrace(), pauses(3));
}

TEST_F(TcpSocket, ReceivesAWholeReplyAfterOnePause) {
    connect();
    answer("0123456789");
    EXPECT_EQ(receive(10), 10);
    EXPECT_EQ(buffer_, "0123456789");
    EXPECT_EQ(bus().takeTrace(), pauses(1));
}

TEST_F(TcpSocket, YieldsMinus1ForAReplyThatIsTooShort) {
    connect();
    answer("012345");
    EXPECT_EQ(receive(10), -1);
    EXPECT_EQ(buffer_, std::string("012345\0\0\0\0", 10));
    EXPECT_EQ(bus().takeTrace(), pauses(5));
}

TEST_F(TcpSocket, YieldsTheSizeOfTheLastPiece) {
    connect();
    answerAfter(1, "0123");
    answerAfter(3, "45678");
    answerAfter(5, "9");
    EXPECT_EQ(receive(10), 1);
    EXPECT_EQ(buffer_, "0123456789");
    EXPECT_EQ(bus().takeTrace(), pauses(5));
}

TEST_F(TcpSocket, YieldsTheLastPieceOfAShortReplyThatComesLast) {
    connect();
    answer("0123");
    answerAfter(5, "45");
    EXPECT_EQ(receive(10), 2);
    EXPECT_EQ(buffer_, std::string("012345\0\0\0\0", 10));
}

TEST_F(TcpSocket, ReceivesNothingBehindTheFifthPause) {
    connect();
    EXPECT_EQ(receive(4), -1);
    EXPECT_EQ(buffer_, std::string(4, '\0'));
    EXPECT_EQ(bus().takeTrace(), pauses(5));
}

TEST_F(TcpSocket, LeavesBytesBehindTheSizeForTheNextReceive) {
    connect();
    answer("abcdef");
    EXPECT_EQ(receive(4), 4);
    EXPECT_EQ(receive(2), 2);
    EXPECT_EQ(buffer_, "ef");
}

TEST_F(TcpSocket, ReceivesNoBytesWithoutAPause) {
    connect();
    EXPECT_EQ(receive(0), 0);
    char byte = 'x';
    EXPECT_EQ(socket_Recv(&byte, -1), 0);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(TcpSocket, RaisesNoSignalWhenItSendsToAPeerThatHasClosed) {
    const auto before = std::signal(SIGPIPE, SIG_DFL); // would end this program
    connect();
    peer_.close();
    EXPECT_EQ(socket_Send("a", 1), 1) << "is answered by a reset";
    EXPECT_EQ(socket_Send("b", 1), -1);
    EXPECT_TRUE(socket_IsOpen());
    std::signal(SIGPIPE, before);
}

TEST_F(TcpSocket, YieldsZeroWhenThePeerHasClosed) {
    connect();
    peer_.close();
    EXPECT_TRUE(isReady(host_, POLLIN));
    EXPECT_EQ(receive(4), 0);
    EXPECT_EQ(buffer_, std::string(4, '\0'));
    EXPECT_EQ(bus().takeTrace(), pauses(5));
}

TEST_F(TcpSocket, IsOpenedAndClosedByAPortInTcpMode) {
    CPort port;
    const auto [a, b, c, d] = loopbackHost(1);
    port.SetTcpIp(a, b, c, d);
    port.SetPort(listener_.port());
    EXPECT_TRUE(port.Connect());
    EXPECT_TRUE(socket_IsOpen());
    EXPECT_TRUE(port.IsConn());
    EXPECT_EQ(port.Disconnect(), 1);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_FALSE(port.IsConn());
}

TEST_F(TcpSocket, IsNotOpenedByAPortWhereNobodyListens) {
    const sim::Socket deaf = sim::Socket::bound(sim::Socket::Kind::Stream, loopbackHost(1), 0);
    CPort port;
    const auto [a, b, c, d] = loopbackHost(1);
    port.SetTcpIp(a, b, c, d);
    port.SetPort(deaf.port());
    EXPECT_FALSE(port.Connect());
    EXPECT_FALSE(port.IsConn());
    EXPECT_TRUE(port.IsTcpIpMode());
}

} // namespace zel::test
