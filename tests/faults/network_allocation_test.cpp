// SPDX-License-Identifier: MIT
// A connect through a network bridge while its n-th allocation fails.
#include "tests/family/tag/network_test.h"
#include "tests/faults/allocations.h"
#include "tests/faults/failing_calls.h"

namespace zel::test {

namespace {

class FailingNetworkAllocation : public NetworkConnect {
protected:
    FailingNetworkAllocation() {
        traceNothing();
        onPause([this](std::uint64_t) {
            const Spared simulator;
            pumpBridges();
        });
    }
};

TEST_F(FailingNetworkAllocation, OfAConnect) {
    bridge(2);
    const auto connectBridge = [this] {
        USBDisconnect();
        return connectStream(2);
    };
    failEach(connectBridge, [] { return std::to_string(GetDevCnt()); });
}

} // namespace

} // namespace zel::test
