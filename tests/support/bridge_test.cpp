// SPDX-License-Identifier: MIT
// Lets the bridges work in real time while the library's pauses pass in virtual time.
#include "tests/support/bridge_test.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <utility>

namespace zel::test {

namespace {

// Real time that bytes have to arrive on the loopback network, where they need microseconds.
constexpr int kToTheBridge = 2;   // ms
constexpr int kFromTheBridge = 1; // ms

} // namespace

BridgeTest::BridgeTest() {
    onPause([this](std::uint64_t us) {
        bus().note("~ " + std::to_string(us / 1000) + " ms");
        pumpBridges();
    });
}

BridgeTest::~BridgeTest() { onPause({}); }

sim::Bridge& BridgeTest::addBridge(std::uint8_t lastByte, std::shared_ptr<sim::StreamDevice> device,
                                   std::uint16_t tcpPort) {
    const sim::BridgeOptions options = {.address = loopbackHost(lastByte), .port = tcpPort};
    bridges_.push_back(std::make_unique<sim::Bridge>(std::move(device), options));
    EXPECT_TRUE(bridges_.back()->start())
        << "port " << bridges_.back()->failedPort() << ": " << std::strerror(errno);
    return *bridges_.back();
}

void BridgeTest::pumpBridges() {
    std::vector<pollfd> ends;
    for (const auto& bridge : bridges_)
        bridge->addTo(ends);
    if (ends.empty())
        return;
    const int ready = poll(ends.data(), static_cast<nfds_t>(ends.size()), kToTheBridge);
    for (const auto& bridge : bridges_)
        bridge->pump(0);
    if (ready > 0)
        poll(nullptr, 0, kFromTheBridge);
}

} // namespace zel::test
