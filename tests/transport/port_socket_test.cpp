// SPDX-License-Identifier: MIT
// The process's one socket takes every byte stream over while it is open.
#include "tests/support/descriptors.h"
#include "tests/transport/port_test.h"

namespace zel::test {

namespace {

// An object with an open line, and the socket open for whichever device.
class PortUnderASocket : public PortTest {
protected:
    PortUnderASocket() {
        EXPECT_TRUE(port_.Connect());
        std::array<int, 2> ends;
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        replaceSocket(ends[0]);
        peer_ = ends[1];
    }
    ~PortUnderASocket() override { close(peer_); }

    void answer(std::string_view bytes) const {
        EXPECT_EQ(::write(peer_, bytes.data(), bytes.size()), std::ssize(bytes));
    }
    std::string asked() const {
        std::array<char, 64> room;
        const ssize_t count = recv(peer_, room.data(), room.size(), MSG_DONTWAIT);
        return {room.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }

    CPort port_;
    int peer_ = -1;
};

using Reading = std::int64_t (CPort::*)(char*, unsigned long);

} // namespace

TEST_F(PortUnderASocket, ReadsTheSocket) {
    for (const Reading read : {&CPort::Read, &CPort::QuickRead}) {
        SCOPED_TRACE(read == &CPort::Read ? "Read" : "QuickRead");
        std::string buffer(4, 'x');
        answer("abcd");
        say("line");
        EXPECT_EQ((port_.*read)(buffer.data(), 4), 4);
        EXPECT_EQ(buffer, "abcd");
        EXPECT_EQ(trace(), "~ 20 ms\n");
    }
}

TEST_F(PortUnderASocket, ReadsTheValueOfTheLastReceive) {
    for (const Reading read : {&CPort::Read, &CPort::QuickRead}) {
        SCOPED_TRACE(read == &CPort::Read ? "Read" : "QuickRead");
        std::string buffer(8, 'x');
        answer("abcdef");
        EXPECT_EQ((port_.*read)(buffer.data(), 8), -1);
        EXPECT_EQ(buffer, std::string("abcdef\0\0", 8));
        EXPECT_EQ(trace(), times(5, "~ 20 ms\n"));
    }
}

TEST_F(PortUnderASocket, WritesToTheSocket) {
    EXPECT_EQ(port_.Write("abc", 3), 3);
    EXPECT_EQ(asked(), "abc");
    EXPECT_EQ(trace(), "~ 20 ms\n");
}

TEST_F(PortUnderASocket, WritesOnceWhatTheSocketTakes) {
    const std::string bytes(1 << 21, 'a');
    const std::int64_t count = port_.Write(bytes.data(), bytes.size());
    EXPECT_GT(count, 0);
    EXPECT_LT(count, std::ssize(bytes));
    EXPECT_EQ(trace(), "~ 20 ms\n");
    EXPECT_EQ(port_.Write(bytes.data(), bytes.size()), -1);
}

TEST_F(PortUnderASocket, FlushesAtMost128BytesOfTheSocket) {
    answer(std::string(128, '.') + "rest");
    port_.FlushRx();
    std::string buffer(4, 'x');
    EXPECT_EQ(port_.Read(buffer.data(), 4), 4);
    EXPECT_EQ(buffer, "rest");
    EXPECT_EQ(trace(), times(2, "~ 20 ms\n"));
}

TEST_F(PortUnderASocket, WaitsFor128BytesToFlush) {
    port_.FlushRx();
    EXPECT_EQ(trace(), times(5, "~ 20 ms\n"));
    port_.FlushTx();
    EXPECT_EQ(trace(), "");
}

TEST_F(PortUnderASocket, GetsTheLineBackWhenTheSocketIsClosed) {
    std::string buffer(4, 'x');
    EXPECT_EQ(port_.Disconnect(), 1);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_TRUE(port_.IsConn()) << "the line is left alone";
    say("line");
    EXPECT_EQ(port_.Read(buffer.data(), 4), 4);
    EXPECT_EQ(buffer, "line");
    EXPECT_EQ(port_.Disconnect(), 1);
    EXPECT_FALSE(port_.IsConn());
}

TEST_F(PortUnderASocket, CountsAsConnectedWithoutALine) {
    CPort other;
    EXPECT_TRUE(other.IsConn());
    EXPECT_EQ(other.Write("abc", 3), 3);
    EXPECT_EQ(asked(), "abc");
}

TEST_F(PortUnderASocket, LosesNoDescriptorWhenItOpensItsLineAnew) {
    const auto before = openDescriptors();
    EXPECT_TRUE(port_.Connect());
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(openDescriptors().size(), before.size() - 1) << "the socket's";
}

TEST_F(PortUnderASocket, LosesNoDescriptorWhenItGoes) {
    const auto before = openDescriptors();
    auto other = std::make_unique<CPort>();
    socket_Close();
    EXPECT_TRUE(other->Connect());
    replaceSocket(dup(peer_));
    other.reset();
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(openDescriptors().size(), before.size() - 1);
}

TEST_F(PortUnderASocket, TakesItsSpeedOnTheLine) {
    port_.SetBaud(19200);
    EXPECT_EQ(baudrate, 19200U);
    EXPECT_EQ(trace(), "");
}

} // namespace zel::test
