// SPDX-License-Identifier: MIT
// The demonstration bench on the simulated bus.
#include "sim/demo/bench.h"

#include "sim/tag/reader.h"
#include "sim/wire/usb_bus.h"

namespace zel::sim {

bool installDemo() {
    usbBus().clear();
    usbBus().plug(demoReader(), {TagReader::kVendor, TagReader::kProduct, "sim:zeltag-0"});
    return usbBus().install();
}

} // namespace zel::sim
