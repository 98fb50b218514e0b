// SPDX-License-Identifier: MIT
// Addresses, ports and ranges of hosts as a user writes them.
#include "cli/command/address.h"

#include <gtest/gtest.h>

namespace zel::cli {

namespace {

// "HOST PORT", or nothing.
std::string endpoint(std::string_view text) {
    const auto read = endpointIn(text);
    return read ? read->host + " " + std::to_string(read->port) : "";
}

// "FIRST to LAST, COUNT", or nothing.
std::string hosts(std::string_view text) {
    const auto range = hostsIn(text);
    return range ? asText(range->at(0)) + " to " + asText(range->at(range->count() - 1)) + ", " +
                       std::to_string(range->count())
                 : "";
}

TEST(Ipv4Address, HasFourBytes) {
    EXPECT_EQ(addressIn("10.0.255.1"), (Ipv4{10, 0, 255, 1}));
    EXPECT_EQ(addressIn("0.0.0.0"), (Ipv4{}));
    for (const char* wrong : {"", "10.0.0", "10.0.0.", "10.0.0.1.2", "10.0.0.256", "10.0..1",
                              "10.0.0.x", " 10.0.0.1", "10.0.0.1 ", "10.0.0.-1", "10.0.0.+1"})
        EXPECT_FALSE(addressIn(wrong)) << wrong;
}

TEST(Ipv4Address, IsWrittenInDottedForm) { EXPECT_EQ(asText(Ipv4{10, 0, 255, 1}), "10.0.255.1"); }

TEST(MacAddress, IsWrittenInUpperCaseWithColons) {
    EXPECT_EQ(asText(Mac{0x00, 0x20, 0x4A, 0x0F, 0xF0, 0xFF}), "00:20:4A:0F:F0:FF");
}

TEST(BridgeEndpoint, HasPort10001UnlessToldOtherwise) {
    EXPECT_EQ(endpoint("10.0.0.17"), "10.0.0.17 10001");
    EXPECT_EQ(endpoint("door-3.example"), "door-3.example 10001");
    EXPECT_EQ(endpoint("door:1"), "door 1");
    EXPECT_EQ(endpoint("10.0.0.17:65535"), "10.0.0.17 65535");
}

TEST(BridgeEndpoint, NeedsAHostAndAPortThatIsOne) {
    for (const char* wrong : {"", ":", ":10001", "door:", "door:0", "door:65536", "door:x",
                              "door:1:2", "::1", "door:-1"}) {
        EXPECT_EQ(endpoint(wrong), "") << wrong;
        EXPECT_NE(checkEndpoint(wrong), "") << wrong;
    }
    EXPECT_EQ(checkEndpoint("door:1"), "");
}

TEST(HostRange, HasAFirstAndALastHost) {
    EXPECT_EQ(hosts("10.0.0.1-254"), "10.0.0.1 to 10.0.0.254, 254");
    EXPECT_EQ(hosts("10.0.0.7-8"), "10.0.0.7 to 10.0.0.8, 2");
    EXPECT_EQ(hosts("10.0.0.7-7"), "10.0.0.7 to 10.0.0.7, 1");
    EXPECT_EQ(hosts("10.0.0.7"), "10.0.0.7 to 10.0.0.7, 1");
}

TEST(HostRange, LeavesOutTheNetworkAndTheBroadcastAddress) {
    for (const char* wrong :
         {"", "10.0.0", "10.0.0.0", "10.0.0.0-5", "10.0.0.255", "10.0.0.1-255", "10.0.0.5-4",
          "10.0.0.1-", "10.0.0.1-x", "10.0.0.1-2-3", "10.0.0.1-10.0.0.2", "10.0.0.1-257"}) {
        EXPECT_EQ(hosts(wrong), "") << wrong;
        EXPECT_NE(checkHosts(wrong), "") << wrong;
    }
    EXPECT_EQ(checkHosts("10.0.0.1-2"), "");
}

} // namespace

} // namespace zel::cli
