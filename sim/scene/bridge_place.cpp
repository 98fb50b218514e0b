// SPDX-License-Identifier: MIT
// A device of a scene behind a network bridge of this machine.
#include "sim/bridge/address_text.h"
#include "sim/scene/place.h"

namespace zel::sim {

namespace {

constexpr std::size_t kWithinAnAnswer = 3; // bytes; the shortest answer with data has four

} // namespace

bool BridgePlace::start(const BridgeOptions& options) {
    options_ = options;
    bridge_.emplace(device_.onStream(), options);
    return bridge_->start();
}

std::string BridgePlace::text() const {
    if (!bridge_)
        return "bridge";
    return "bridge " + toText(options_.address) + ":" + std::to_string(bridge_->port());
}

// Without power a bridge neither answers a probe nor takes a client.
void BridgePlace::setPresent(bool isPresent) {
    if (!bridge_)
        return;
    for (const Probe probe : kProbes)
        bridge_->probeFaults(probe).silent = !isPresent;
    if (isPresent) {
        bridge_->listen();
        return;
    }
    bridge_->refuse();
    bridge_->hangUp();
}

void BridgePlace::plug() { setPresent(true); }

void BridgePlace::unplug() { setPresent(false); }

bool BridgePlace::fail(const FaultOrder& order) {
    if (!bridge_)
        return false;
    StreamFaults& faults = bridge_->streamFaults();
    switch (order.kind) {
    case FaultKind::None:
        faults = {};
        return true;
    case FaultKind::Dribble:
        faults.dribble = 1;
        return true;
    case FaultKind::Silence:
        faults.silent = true;
        return true;
    case FaultKind::Close:
    case FaultKind::Reset:
        faults.endsAfter = kWithinAnAnswer;
        faults.endsWithReset = order.kind == FaultKind::Reset;
        return true;
    default:
        return false;
    }
}

Names BridgePlace::faults() { return {"none", "dribble", "silence", "close", "reset"}; }

bool BridgePlace::dribbles() const { return bridge_ && bridge_->streamFaults().dribble > 0; }

} // namespace zel::sim
