// SPDX-License-Identifier: MIT
// The datagrams by which a bridge is found, against bytes worked out by hand.
#include "sim/bridge/probes.h"

#include <gtest/gtest.h>

using namespace zel::sim;

namespace {

using Bytes = std::vector<std::uint8_t>;

// "ZTAGDISC", 1, 0
const Bytes kDiscovery = {0x5A, 0x54, 0x41, 0x47, 0x44, 0x49, 0x53, 0x43, 0x01, 0x00};
const Bytes kMacQuery = {0x00, 0x00, 0x00, 0xF6};

void expectOnlyTheseBytes(Probe probe, const Bytes& datagram) {
    EXPECT_TRUE(isProbe(probe, datagram));
    for (std::size_t i = 0; i < datagram.size(); ++i) {
        Bytes other = datagram;
        other[i] ^= 0x10;
        EXPECT_FALSE(isProbe(probe, other)) << "byte " << i;
    }
    Bytes longer = datagram;
    longer.push_back(0);
    EXPECT_FALSE(isProbe(probe, longer));
    const Bytes shorter(datagram.begin(), datagram.end() - 1);
    EXPECT_FALSE(isProbe(probe, shorter));
}

} // namespace

TEST(DiscoveryProbe, IsTenBytesOnPort11000) {
    EXPECT_EQ(portOf(Probe::Discovery), 11000);
    expectOnlyTheseBytes(Probe::Discovery, kDiscovery);
    EXPECT_FALSE(isProbe(Probe::Discovery, kMacQuery));
}

TEST(DiscoveryProbe, IsAnsweredWithTheAddressOfTheBridge) {
    const Bytes expected = {0x5A, 0x54, 0x41, 0x47, 0x44, 0x49, 0x53, 0x43,
                            0x02, 0x00,                                     // "ZTAGDISC"
                            0xF4, 0xF0, 0xF2, 0xF0,                         //
                            0x2D, 0x4E, 0x6F, 0x72, 0x76, 0x61, 0x6E, 0x65, // "-Norvane"
                            0x2F, 0x57, 0x65, 0x64, 0x67, 0x65,             // "/Wedge"
                            0x00, 0x68, 0xAB, 0x8A, 0x00, 0x00, 0x00, 0x00, //
                            0x0A, 0x14, 0x1E, 0x28};
    EXPECT_EQ(replyTo(Probe::Discovery, {10, 20, 30, 40}, {1, 2, 3, 4, 5, 6}), expected);
}

TEST(MacQuery, IsFourBytesOnPort30718) {
    EXPECT_EQ(portOf(Probe::MacQuery), 30718);
    expectOnlyTheseBytes(Probe::MacQuery, kMacQuery);
    EXPECT_FALSE(isProbe(Probe::MacQuery, kDiscovery));
}

TEST(MacQuery, IsAnsweredWithTheMacAddressBehindTwentyFourBytes) {
    const Bytes expected = {0x00, 0x00, 0x00, 0xF7, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x20, 0x4A, 0x12, 0x34, 0x56};
    EXPECT_EQ(replyTo(Probe::MacQuery, {10, 20, 30, 40}, {0x00, 0x20, 0x4A, 0x12, 0x34, 0x56}),
              expected);
}
