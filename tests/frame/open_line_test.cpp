// SPDX-License-Identifier: MIT
// The calls on a line, with one that is open.
#include "tests/transport/port_test.h"

#include "transport/port_objects.h"

namespace zel::test {

namespace {

class OpenLine : public PortTest {
protected:
    OpenLine() {
        EXPECT_TRUE(freshPort(DevDat[3])->Connect());
        iActDev = 3; // outside the table in use
    }
    static std::string bytes(unsigned char (&buffer)[6]) {
        return {reinterpret_cast<const char*>(buffer), 6};
    }
};

} // namespace

TEST_F(OpenLine, IsReadThroughTheRecordOfTheActiveIndex) {
    unsigned char buffer[6] = {9, 9, 9, 9, 9, 9};
    say("abcd");
    EXPECT_EQ(ReadSerialPort(buffer, 6), 4);
    EXPECT_EQ(bytes(buffer), std::string("abcd\0\0", 6));
    EXPECT_EQ(trace(), times(100, "~ 5 ms\n"));
    iActDev = 2;
    EXPECT_EQ(ReadSerialPort(buffer, 6), 0);
}

TEST_F(OpenLine, IsReadQuickly) {
    unsigned char buffer[6] = {9, 9, 9, 9, 9, 9};
    say("abcd");
    EXPECT_EQ(QuickReadSerialPort(buffer, 6), 4);
    EXPECT_EQ(bytes(buffer), std::string("abcd\0\0", 6));
    EXPECT_EQ(trace(), times(76, "~ 1 ms\n"));
}

TEST_F(OpenLine, IsWritten) {
    EXPECT_EQ(WriteSerialPort(reinterpret_cast<const unsigned char*>("abcd"), 4), 4);
    EXPECT_EQ(trace(), "> \"abcd\"\n");
}

TEST_F(OpenLine, MovesNothingForNoBytesOrNoBuffer) {
    unsigned char buffer[6] = {9, 9, 9, 9, 9, 9};
    say("abcd");
    EXPECT_EQ(ReadSerialPort(buffer, 0), 0);
    EXPECT_EQ(QuickReadSerialPort(buffer, 0), 0);
    EXPECT_EQ(WriteSerialPort(buffer, 0), 0);
    EXPECT_EQ(ReadSerialPort(nullptr, 6), 0);
    EXPECT_EQ(QuickReadSerialPort(nullptr, 6), 0);
    EXPECT_EQ(WriteSerialPort(nullptr, 6), 0);
    EXPECT_EQ(buffer[0], 9);
    EXPECT_EQ(trace(), "");
}

TEST_F(OpenLine, DoesNotWaitForNoBytesOfTheSocket) {
    unsigned char buffer[6] = {9, 9, 9, 9, 9, 9};
    replaceSocket(dup(host_));
    EXPECT_EQ(WriteSerialPort(buffer, 0), 0);
    EXPECT_EQ(ReadSerialPort(buffer, 0), 0);
    EXPECT_EQ(trace(), "");
}

TEST_F(OpenLine, MovesNothingWhenDisconnected) {
    unsigned char buffer[6] = {9, 9, 9, 9, 9, 9};
    DevDat[3].pPort->Disconnect();
    EXPECT_EQ(ReadSerialPort(buffer, 6), 0);
    EXPECT_EQ(QuickReadSerialPort(buffer, 6), 0);
    EXPECT_EQ(WriteSerialPort(buffer, 6), 0);
    EXPECT_EQ(buffer[0], 9);
    EXPECT_EQ(trace(), "");
}

TEST_F(OpenLine, IsReadByCharacters) {
    say("ab\xFE");
    EXPECT_EQ(readSerialPort_char(-1), 3);
    EXPECT_EQ(readSerialPort_char(1), 'b');
    EXPECT_EQ(readSerialPort_char(2), -2);
    EXPECT_EQ(readSerialPort_char(3), 0);
    say("cd");
    EXPECT_EQ(quickReadSerialPort_char(-1), 2);
    EXPECT_EQ(quickReadSerialPort_char(0), 'c');
    EXPECT_EQ(readSerialPort_char(0), 'a') << "each call has a buffer of its own";
}

TEST_F(OpenLine, IsClosedByADisconnectOfAllDevices) {
    USBDisconnect();
    EXPECT_EQ(DevDat[3].pPort, nullptr);
    char next;
    EXPECT_EQ(recv(device_, &next, 1, MSG_DONTWAIT), 0);
}

} // namespace zel::test
