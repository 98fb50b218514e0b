// SPDX-License-Identifier: MIT
// Numbers, lines and waits of a byte stream.
#include "tests/transport/port_test.h"

#include "tests/support/descriptors.h"

#include <cstring>
#include <initializer_list>

namespace zel::test {

namespace {

class Port : public PortTest {
protected:
    Port() { EXPECT_TRUE(port_.Connect()); }

    std::int64_t read(unsigned long size) {
        buffer_.assign(size, 'x');
        return port_.Read(buffer_.data(), size);
    }
    std::int64_t quickRead(unsigned long size) {
        buffer_.assign(size, 'x');
        return port_.QuickRead(buffer_.data(), size);
    }
    std::int64_t write(std::string_view bytes) { return port_.Write(bytes.data(), bytes.size()); }

    CPort port_;
    std::string buffer_;
};

std::string zeros(std::size_t count) { return std::string(count, '\0'); }

} // namespace

TEST_F(Port, WaitsForSilentBytes100PollsOf5Ms) {
    EXPECT_EQ(read(10), 0);
    EXPECT_EQ(trace(), times(100, "~ 5 ms\n"));
    EXPECT_EQ(buffer_, zeros(10));
}

TEST_F(Port, ReadsWhatWaitsWithoutAPause) {
    say("0123456789");
    EXPECT_EQ(read(10), 10);
    EXPECT_EQ(buffer_, "0123456789");
    EXPECT_EQ(trace(), "");
}

TEST_F(Port, ReadsPiecesUntilAllAreThere) {
    sayAfter(1, "abc");
    sayAfter(3, "def");
    EXPECT_EQ(read(6), 6);
    EXPECT_EQ(buffer_, "abcdef");
    EXPECT_EQ(trace(), times(3, "~ 5 ms\n"));
}

TEST_F(Port, ReadsAShortCountAndZeros) {
    sayAfter(99, "abcd");
    EXPECT_EQ(read(10), 4);
    EXPECT_EQ(buffer_, "abcd" + zeros(6));
    EXPECT_EQ(trace(), times(100, "~ 5 ms\n"));
}

TEST_F(Port, ReadsNothingBehindItsLastPoll) {
    sayAfter(100, "abcd");
    EXPECT_EQ(read(4), 0);
    EXPECT_EQ(read(4), 4);
}

TEST_F(Port, LeavesBytesBehindTheSizeForTheNextRead) {
    say("abcdef");
    EXPECT_EQ(read(4), 4);
    EXPECT_EQ(read(2), 2);
    EXPECT_EQ(buffer_, "ef");
}

TEST_F(Port, ReadsNoBytesWithoutAPause) {
    EXPECT_EQ(read(0), 0);
    EXPECT_EQ(quickRead(0), 0);
    EXPECT_EQ(trace(), "");
}

TEST_F(Port, PollsALineThatEndedAsASilentOne) {
    hangUp();
    EXPECT_EQ(read(3), 0);
    EXPECT_EQ(trace(), times(100, "~ 5 ms\n"));
}

TEST_F(Port, ReadsNoBytesWithoutALine) {
    port_.Disconnect();
    EXPECT_EQ(read(3), 0);
    EXPECT_EQ(buffer_, zeros(3));
    EXPECT_EQ(quickRead(3), 0);
    EXPECT_EQ(buffer_, zeros(3));
    EXPECT_EQ(write("abc"), 0);
    EXPECT_EQ(trace(), "");
}

TEST_F(Port, QuickReadEndsAfter75SilentPollsOf1Ms) {
    EXPECT_EQ(quickRead(10), 0);
    EXPECT_EQ(trace(), times(75, "~ 1 ms\n"));
    EXPECT_EQ(buffer_, zeros(10));
}

TEST_F(Port, QuickReadGoesOnAsLongAsDataCome) {
    for (int pause = 1; pause <= 1000; ++pause)
        sayAfter(pause, "a");
    EXPECT_EQ(quickRead(2000), 1000);
    EXPECT_EQ(buffer_, std::string(1000, 'a') + zeros(1000));
    EXPECT_EQ(trace(), times(1000 + 75, "~ 1 ms\n"));
}

TEST_F(Port, QuickReadCountsSilentPollsBeforeDataToo) {
    sayAfter(40, "a");
    EXPECT_EQ(quickRead(2), 1);
    EXPECT_EQ(trace(), times(1 + 75, "~ 1 ms\n"));
}

TEST_F(Port, QuickReadEndsWithTheLastByteOfItsSize) {
    for (int pause = 1; pause <= 100; ++pause)
        sayAfter(pause, "a");
    EXPECT_EQ(quickRead(10), 10);
    EXPECT_EQ(trace(), times(10, "~ 1 ms\n"));
}

TEST_F(Port, WritesWithoutAPauseWhatTheLineTakes) {
    EXPECT_EQ(write("abc"), 3);
    EXPECT_EQ(trace(), "> \"abc\"\n");
    EXPECT_EQ(write(""), 0);
    EXPECT_EQ(trace(), "");
}

TEST_F(Port, WritesAsLongAsTheLineTakesNothing) {
    read(0); // from now on the line doesn't block
    jamUntil(3000);
    EXPECT_EQ(write("abc"), 3);
    EXPECT_EQ(trace(), times(3000, "~ 5 ms\n") + "> \"abc\"\n");
}

TEST_F(Port, WritesPiecesInOrder) {
    std::string bytes(1 << 21, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31 >> 8);
    read(0);
    std::string got;
    onPause([&](std::uint64_t us) {
        EXPECT_EQ(us, 5000U);
        ++pauses_;
        got += taken();
    });
    EXPECT_EQ(write(bytes), std::ssize(bytes));
    EXPECT_GT(pauses_, 0);
    EXPECT_TRUE(got + taken() == bytes);
}

TEST_F(Port, SendsATextInTwos) {
    port_.SendAscii("hello");
    EXPECT_EQ(trace(), "> \"he\"\n~ 1 ms\n> \"ll\"\n~ 1 ms\n> \"o\"\n~ 1 ms\n");
    port_.SendAscii("");
    EXPECT_EQ(trace(), "");
}

TEST_F(Port, ExpectsATextInOneRead) {
    say("Wedge 3\r");
    EXPECT_TRUE(port_.ExpectAscii("edge", nullptr));
    EXPECT_EQ(trace(), times(100, "~ 5 ms\n"));
    EXPECT_FALSE(port_.ExpectAscii("edge", nullptr)) << "what came is read";
}

TEST_F(Port, ExpectsBothTexts) {
    for (const auto& [second, both] : {std::pair("3\r", true), std::pair("4", false)}) {
        say("Wedge 3\r");
        EXPECT_EQ(port_.ExpectAscii("Wedge", second), both);
    }
    say("Wedge 3\r");
    EXPECT_FALSE(port_.ExpectAscii("wedge", "3")) << "with case";
}

TEST_F(Port, ExpectsATextBehindAZeroByte) {
    say({"\0OK", 3});
    EXPECT_TRUE(port_.ExpectAscii("OK", nullptr));
}

TEST_F(Port, ExpectsATextWithinTheFirst1024Bytes) {
    say(std::string(1022, '.') + "OK" + std::string(1023, '.') + "OK");
    EXPECT_TRUE(port_.ExpectAscii("OK", nullptr));
    EXPECT_FALSE(port_.ExpectAscii("OK", nullptr));
}

TEST_F(Port, CleansBothDirections20MsApart) {
    port_.ACPClean();
    EXPECT_EQ(trace(), "~ 20 ms\n");
}

TEST_F(Port, HasNumbers1To256) {
    for (const unsigned long number : {1UL, 2UL, 256UL}) {
        port_.SetPort(number);
        EXPECT_EQ(port_.port(), number);
    }
    for (const unsigned long number : {0UL, 257UL, 65536UL + 5, ~0UL}) {
        port_.SetPort(7);
        port_.SetPort(number);
        EXPECT_EQ(port_.port(), 1U) << number;
    }
}

TEST_F(Port, HasAnyNumberInTcpMode) {
    EXPECT_FALSE(port_.IsTcpIpMode());
    port_.SetTcpIp(127, 0, 0, 1);
    EXPECT_TRUE(port_.IsTcpIpMode());
    for (const unsigned long number : {0UL, 257UL, 65535UL}) {
        port_.SetPort(number);
        EXPECT_EQ(port_.port(), number);
    }
}

TEST_F(Port, SharesItsSpeedWithAllOthers) {
    port_.SetBaud(115200);
    EXPECT_EQ(baudrate, 115200U);
    CPort().SetBaud(1200);
    EXPECT_EQ(baudrate, 1200U);
}

TEST_F(Port, KeepsItsWaitsAndSpeedWhateverIsSet) {
    port_.SetParity(2);
    port_.SetStopBits(2);
    port_.CommitCTOs();
    port_.SetTimeoutFor_zelTag();
    port_.SetTimeoutFor_zelBand();
    EXPECT_EQ(read(1), 0);
    EXPECT_EQ(trace(), times(100, "~ 5 ms\n"));
    EXPECT_EQ(baudrate, 9600U);
}

TEST_F(Port, OpensTheLineOfItsNumber) {
    SetComLinux(16, "/dev/other");
    port_.SetPort(16);
    EXPECT_TRUE(port_.Connect());
    EXPECT_EQ(opened_, (std::vector<std::string>{kPath, "/dev/other"}));
}

TEST_F(Port, OpensNothingWithoutAPathInTheDeviceFolder) {
    opened_.clear();
    for (const char* const path :
         {"", "/DEV/line", "dev/line", "/dev", "/tmp/line", " /dev/line"}) {
        SetComLinux(1, path);
        EXPECT_FALSE(port_.Connect()) << path;
        EXPECT_FALSE(port_.IsConn());
    }
    port_.SetPort(17);
    EXPECT_FALSE(port_.Connect());
    EXPECT_TRUE(opened_.empty());
}

TEST_F(Port, ClosesItsLineBeforeItOpensItAnew) {
    const int before = dup(device_);
    EXPECT_TRUE(port_.Connect());
    char next;
    EXPECT_EQ(recv(before, &next, 1, MSG_DONTWAIT), 0) << "it has ended";
    EXPECT_TRUE(port_.IsConn());
    close(before);
}

TEST_F(Port, IsClosedAfterAFailedOpen) {
    opensFail_ = true;
    EXPECT_FALSE(port_.Connect());
    EXPECT_FALSE(port_.IsConn());
    opensFail_ = false;
    EXPECT_TRUE(port_.Connect());
}

TEST_F(Port, DisconnectsAsOftenAsItIsTold) {
    EXPECT_TRUE(port_.IsConn());
    EXPECT_EQ(port_.Disconnect(), 1);
    EXPECT_FALSE(port_.IsConn());
    EXPECT_EQ(port_.Disconnect(), 1);
    EXPECT_EQ(fcntl(host_, F_GETFD), -1);
    EXPECT_EQ(trace(), "");
}

TEST_F(Port, ClosesItsLineWhenItGoes) {
    {
        CPort other;
        EXPECT_TRUE(other.Connect());
    }
    char next;
    EXPECT_EQ(recv(device_, &next, 1, MSG_DONTWAIT), 0);
}

} // namespace zel::test
