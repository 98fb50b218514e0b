// SPDX-License-Identifier: MIT
// This machine's address, from lists of interfaces that the test makes up.
#include "frame/zelTagAPI.h"
#include "tests/transport/system_calls.h"
#include "transport/tcp_socket.h"

#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>

namespace zel::test {

namespace {

class OwnAddress : public ::testing::Test {
protected:
    OwnAddress() { systemCalls() = {}; }
    ~OwnAddress() override { systemCalls() = {}; }

    // Adds an entry at the end of the system's list.
    ifaddrs& add(const std::string& name, const std::string& bytes = "") {
        Entry& entry = entries_.emplace_back();
        entry.name = name;
        entry.interface.ifa_name = entry.name.data();
        entry.address.sin_family = AF_INET;
        bytes.copy(reinterpret_cast<char*>(&entry.address.sin_addr), 4);
        entry.interface.ifa_addr = reinterpret_cast<sockaddr*>(&entry.address);
        if (entries_.size() > 1)
            entries_[entries_.size() - 2].interface.ifa_next = &entry.interface;
        systemCalls().interfaces = &entries_.front().interface;
        return entry.interface;
    }

    void clear() { entries_.clear(); }

private:
    struct Entry {
        std::string name;
        ifaddrs interface = {};
        sockaddr_in address = {};
    };
    std::deque<Entry> entries_; // their places never change
};

} // namespace

TEST_F(OwnAddress, HasItsFirstByteLowest) {
    add("eth0", "\x0A\x14\x1E\x28");
    EXPECT_EQ(socket_GetMyIP(), 10 + 20 * 256 + 30 * 65536 + 40 * 16777216);
    EXPECT_EQ(GetMyIpAddress(), 0x281E140A);
}

TEST_F(OwnAddress, IsNegativeWithALastByteAbove127) {
    add("eth0", "\xC0\xA8\x01\x80");
    EXPECT_EQ(socket_GetMyIP(), std::int64_t{0x8001A8C0} - 0x100000000);
    EXPECT_EQ(GetMyIpAddress(), socket_GetMyIP());
}

TEST_F(OwnAddress, IsThatOfEachOfTheSixNames) {
    for (const char* const name : {"eth0", "wlan0", "eth1", "wlan1", "eth2", "wlan2"}) {
        clear();
        add(name, "\1\2\3\4");
        EXPECT_EQ(socket_GetMyIP(), 0x04030201) << name;
    }
}

TEST_F(OwnAddress, IsTheFirstInTheSystemsOrder) {
    add("lo", "\x7F\0\0\1");
    add("wlan2", "\1\2\3\4");
    add("eth0", "\5\6\7\x8");
    EXPECT_EQ(socket_GetMyIP(), 0x04030201);
}

TEST_F(OwnAddress, IsNoneWithOtherNames) {
    for (const char* const name : {"lo", "eth", "eth3", "eth00", "Eth0", "wlan3", "enp3s0", ""})
        add(name, "\1\2\3\4");
    EXPECT_EQ(socket_GetMyIP(), 0);
    EXPECT_EQ(systemCalls().releases, 1);
}

TEST_F(OwnAddress, IsNotThatOfAnotherFamily) {
    add("eth0", "\1\2\3\4").ifa_addr->sa_family = AF_INET6;
    EXPECT_EQ(socket_GetMyIP(), 0);
    add("eth0", "\5\6\7\x8");
    EXPECT_EQ(socket_GetMyIP(), 0x08070605);
}

TEST_F(OwnAddress, IsNotThatOfAnInterfaceWithoutOne) {
    add("eth0").ifa_addr = nullptr;
    EXPECT_EQ(socket_GetMyIP(), 0);
    add("eth1", "\5\6\7\x8");
    EXPECT_EQ(socket_GetMyIP(), 0x08070605);
}

TEST_F(OwnAddress, LeavesTheListReleasedOnce) {
    add("eth0", "\1\2\3\4");
    socket_GetMyIP();
    EXPECT_EQ(systemCalls().listings, 1);
    EXPECT_EQ(systemCalls().releases, 1);
}

TEST_F(OwnAddress, IsNoneWithoutInterfaces) { EXPECT_EQ(socket_GetMyIP(), 0); }

TEST_F(OwnAddress, IsNoneWithoutAList) {
    add("eth0", "\1\2\3\4");
    systemCalls().listingFails = true;
    EXPECT_EQ(socket_GetMyIP(), 0);
    EXPECT_EQ(systemCalls().releases, 0);
}

} // namespace zel::test
