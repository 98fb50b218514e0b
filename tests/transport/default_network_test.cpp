// SPDX-License-Identifier: MIT
// The addresses that a connect tries by default. The program's own connect() and sendto() refuse
// them all: nothing leaves it.
#include "tests/support/library_test.h"
#include "transport/tcp_socket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>

using namespace zel::test;

namespace {

std::string tries;

void note(const char* what, const sockaddr* address) {
    sockaddr_in to = {};
    std::memcpy(&to, address, sizeof to);
    char text[INET_ADDRSTRLEN] = "?";
    if (to.sin_family == AF_INET)
        inet_ntop(AF_INET, &to.sin_addr, text, sizeof text);
    tries += std::string(what) + text + ':' + std::to_string(ntohs(to.sin_port)) + '\n';
}

class DefaultNetwork : public LibraryTest {
protected:
    DefaultNetwork() {
        tries.clear();
        SetDevTypeSrch(2);
        lLastCnctErr = 0;
    }

    // Each host's address is asked of host 0, as the last byte that was given.
    static std::string sought(const std::string& network, int port) {
        std::string text;
        for (int host = 1; host <= 254; ++host)
            text += "ask " + network + "0:30718\nopen " + network + std::to_string(host) + ':' +
                    std::to_string(port) + '\n';
        return text;
    }
    static std::string soughtForReports(const std::string& network, int port) {
        std::string text;
        for (int host = 1; host <= 254; ++host)
            text +=
                "ask " + network + "0:30718\nopen " + network + "0:" + std::to_string(port) + '\n';
        return text;
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) int connect(int, const sockaddr* address,
                                                              socklen_t) {
    note("open ", address);
    errno = ECONNREFUSED;
    return -1;
}

extern "C" __attribute__((visibility("default"))) ssize_t
sendto(int, const void*, size_t, int, const sockaddr* address, socklen_t) {
    note("ask ", address);
    errno = ENETUNREACH;
    return -1;
}

TEST_F(DefaultNetwork, IsEveryHostOfNetworkZeroAtPortZeroInBothForms) {
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(tries, sought("0.0.0.", 0) + soughtForReports("0.0.0.", 0));
    EXPECT_EQ(bus().takeTrace(), "") << "no answer is waited for where nothing was sent";
    EXPECT_EQ(GetDevCnt(), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_TRUE(tcpipUSBmode) << "the last open failed";
    EXPECT_FALSE(socket_IsOpen());
}

TEST_F(DefaultNetwork, IsTriedBehindTheOtherTransports) {
    SetDevTypeSrch(-1);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(tries, sought("0.0.0.", 0) + soughtForReports("0.0.0.", 0));
}

TEST_F(DefaultNetwork, IsLeftAloneWhereItIsNotSought) {
    for (const short type : std::initializer_list<short>{0, 1}) {
        SCOPED_TRACE(type);
        SetDevTypeSrch(type);
        EXPECT_EQ(USBConnect(nullptr), 0);
    }
    EXPECT_EQ(ComConnect(nullptr), 0);
    SetDevTypeSrch(2);
    SetConnectProduct(ZELTAGAPI_ZELBAND | ZELTAGAPI_ZELECHO);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(tries, "");
}

TEST_F(DefaultNetwork, GivesWayToAnAddressOfTheApplication) {
    SetIpPort(10, 20, 30, 7, 4001);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(tries, "ask 10.20.30.7:30718\nopen 10.20.30.7:4001\n"
                     "ask 10.20.30.7:30718\nopen 10.20.30.7:4001\n");
    tries.clear();
    SetIpPort(10, 20, 30, 0, 4001);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(tries, sought("10.20.30.", 4001) + soughtForReports("10.20.30.", 4001));
    SetIpPort(0, 0, 0, 0, 0);
}
