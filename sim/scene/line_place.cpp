// SPDX-License-Identifier: MIT
// A device of a scene at the end of a simulated serial line.
#include "sim/scene/place.h"
#include "sim/wire/line.h"

namespace zel::sim {

LinePlace::LinePlace(Apparatus& device, std::string path) : path_(std::move(path)) {
    lines().attach(path_, device.onStream());
}

void LinePlace::plug() { lines().failOpens(path_, false); }

void LinePlace::unplug() {
    lines().hangUp(path_);
    lines().failOpens(path_);
}

void LinePlace::clearFaults() {
    lines().failOpens(path_, false);
    lines().silence(path_, false);
    lines().dribble(path_, 0);
    dribbles_ = false;
}

bool LinePlace::fail(const FaultOrder& order) {
    switch (order.kind) {
    case FaultKind::None:
        clearFaults();
        return true;
    case FaultKind::Open:
        lines().failOpens(path_);
        return true;
    case FaultKind::Silence:
        lines().silence(path_);
        return true;
    case FaultKind::Dribble:
        lines().dribble(path_, 1);
        dribbles_ = true;
        return true;
    case FaultKind::HangUp:
        lines().hangUp(path_);
        return true;
    default:
        return false;
    }
}

Names LinePlace::faults() { return {"none", "open", "silence", "dribble", "hang-up"}; }

} // namespace zel::sim
