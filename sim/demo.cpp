// SPDX-License-Identifier: MIT
// The demonstration bench on the simulated bus.
#include "sim/demo.h"

#include "sim/tag_reader.h"
#include "sim/usb_bus.h"

namespace zel::sim {

bool installDemo() {
    usbBus().clear();
    usbBus().plug(demoReader(), {TagReader::kVendor, TagReader::kProduct, "sim:zeltag-0"});
    return usbBus().install();
}

} // namespace zel::sim
