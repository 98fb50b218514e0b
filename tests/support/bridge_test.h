// SPDX-License-Identifier: MIT
// A freshly loaded library and network bridges on the loopback network, which work during the
// pauses of the library.
#pragma once

#include "sim/bridge/bridge.h"
#include "tests/support/library_test.h"
#include "tests/support/loopback.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zel::test {

class BridgeTest : public LibraryTest {
protected:
    BridgeTest();
    ~BridgeTest() override;

    // The network of the bridges; no other test program listens there.
    static std::uint8_t a() { return loopbackHost(0)[0]; }
    static std::uint8_t b() { return loopbackHost(0)[1]; }
    static std::uint8_t c() { return loopbackHost(0)[2]; }

    // A bridge at a.b.c.lastByte until the end of the test. The TCP port is any free one at 0; the
    // bridge tells it.
    sim::Bridge& addBridge(std::uint8_t lastByte, std::shared_ptr<sim::StreamDevice> device,
                           std::uint16_t tcpPort = 0);

    // What each pause of the library lets the bridges do.
    void pumpBridges();

private:
    std::vector<std::unique_ptr<sim::Bridge>> bridges_;
};

} // namespace zel::test
