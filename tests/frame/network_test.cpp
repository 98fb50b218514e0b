// SPDX-License-Identifier: MIT
// What the exported calls on the network keep.
#include "tests/support/library_test.h"

#include <array>

namespace zel::test {

namespace {

class Network : public LibraryTest {
protected:
    ~Network() override { SetIpPort(0, 0, 0, 0, 0); }

    using Kept = std::array<int, 5>;
    static Kept kept() { return {ipAdr0, ipAdr1, ipAdr2, ipAdr3, ipPortNum}; }
};

} // namespace

TEST_F(Network, KeepsTheAddressAndThePort) {
    EXPECT_EQ(SetIpPort(192, 168, 255, 4, 65535), 1);
    EXPECT_EQ(kept(), (Kept{192, 168, 255, 4, 65535}));
    EXPECT_EQ(SetIpPort(1, 2, 3, 0, 0), 1);
    EXPECT_EQ(kept(), (Kept{1, 2, 3, 0, 0}));
    EXPECT_EQ(bus().takeTrace(), "");
}

} // namespace zel::test
