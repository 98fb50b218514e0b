// SPDX-License-Identifier: MIT
// When a line is drained and what is discarded.
#include "tests/transport/port_test.h"
#include "tests/transport/system_calls.h"

#include "transport/port_objects.h"

#include <cerrno>

namespace zel::test {

namespace {

class LineCalls : public PortTest {
protected:
    LineCalls() {
        EXPECT_TRUE(port_.Connect());
        systemCalls() = {};
        systemCalls().discard = [this](int fd, int queue) {
            EXPECT_EQ(fd, host_);
            noteTaken();
            bus().note(nameOf(queue));
            return 0;
        };
        systemCalls().drain = [this](int fd) {
            EXPECT_EQ(fd, host_);
            noteTaken();
            bus().note("drain");
            return 0;
        };
    }
    ~LineCalls() override { systemCalls() = {}; }

    static std::string nameOf(int queue) {
        return queue == TCIFLUSH ? "discard input" : queue == TCOFLUSH ? "discard output" : "both";
    }
    void openSocket() const { replaceSocket(dup(host_)); }

    CPort port_;
};

} // namespace

TEST_F(LineCalls, DrainAndThenDiscardBehindAWrite) {
    EXPECT_EQ(port_.Write("ab", 2), 2);
    EXPECT_EQ(trace(), "> \"ab\"\ndrain\ndiscard output\n");
}

TEST_F(LineCalls, DrainAndDiscardBehindAFailedWriteToo) {
    char none;
    port_.Read(&none, 0); // from now on the line doesn't block
    jamUntil(2);
    EXPECT_EQ(port_.Write("ab", 2), 2);
    const std::string failed = "drain\ndiscard output\n~ 5 ms\n";
    EXPECT_EQ(trace(), failed + failed + "> \"ab\"\ndrain\ndiscard output\n");
}

TEST_F(LineCalls, DrainAnewWhenASignalCame) {
    int signals = 3;
    systemCalls().drain = [&](int) {
        bus().note("drain");
        errno = EINTR;
        return --signals > 0 ? -1 : 0;
    };
    port_.Write("ab", 2);
    EXPECT_EQ(trace(), "drain\ndrain\ndrain\n> \"ab\"\ndiscard output\n");
}

TEST_F(LineCalls, DrainOnceWhereThatFails) {
    systemCalls().drain = [&](int) {
        bus().note("drain");
        errno = EIO;
        return -1;
    };
    EXPECT_EQ(port_.Write("ab", 2), 2);
    EXPECT_EQ(trace(), "drain\n> \"ab\"\ndiscard output\n");
}

TEST_F(LineCalls, DiscardOneDirection) {
    port_.FlushTx();
    EXPECT_EQ(trace(), "discard output\n");
    port_.FlushRx();
    EXPECT_EQ(trace(), "discard input\n");
    port_.ACPClean();
    EXPECT_EQ(trace(), "discard output\n~ 20 ms\ndiscard input\n");
}

TEST_F(LineCalls, DiscardBothDirectionsAtAClose) {
    port_.Disconnect();
    EXPECT_EQ(trace(), "both\n");
    port_.Disconnect();
    port_.FlushTx();
    port_.FlushRx();
    EXPECT_EQ(trace(), "");
}

TEST_F(LineCalls, DiscardInputAtAnOpen) {
    port_.Disconnect();
    trace();
    EXPECT_TRUE(port_.Connect());
    EXPECT_EQ(trace(), "discard input\n");
}

TEST_F(LineCalls, DiscardNothingWhileTheSocketIsOpen) {
    openSocket();
    port_.FlushTx();
    port_.Write("ab", 2);
    port_.Disconnect();
    EXPECT_EQ(trace(), "> \"ab\"\n~ 20 ms\n");
}

TEST_F(LineCalls, DiscardOutputTwiceInTheExportedWrite) {
    CPort* const port = freshPort(DevDat[0]);
    EXPECT_TRUE(port->Connect());
    trace();
    EXPECT_EQ(WriteSerialPort(reinterpret_cast<const unsigned char*>("ab"), 2), 2);
    EXPECT_EQ(trace(), "> \"ab\"\ndrain\ndiscard output\ndiscard output\n");
    freePort(DevDat[0]);
    trace();
}

} // namespace zel::test
