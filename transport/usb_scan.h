// SPDX-License-Identifier: MIT
// What the families' scans of USB share: the record of a found device.
#pragma once

#include "frame/state/state.h"
#include "transport/usb_driver.h"

#include <cstdint>

namespace zel {

// Fills the record cbIndex for a USB device and counts it; null with the handle closed when the
// table is full. Without a handle the record holds 0.
tsDevDat* takeRecord(const char* name, void* handle, int row, Product product);

// Enumerates with a family's callback. With `did`, answers from the record after the first new one:
// stores its device ID, gives it the connects' error word and returns its handle; else -1.
std::intptr_t scanUsb(unsigned vendor, unsigned product, zelFoundDevice found, unsigned short* did);

} // namespace zel
