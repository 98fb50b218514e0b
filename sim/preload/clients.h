// SPDX-License-Identifier: MIT
// The library's two seams as clients of a simulator in another process.
#pragma once

#include "transport/usb_backend.h"

namespace zel::sim {

// Connects with the first call that needs a device.
const UsbBackend& remoteBackend();

// A descriptor of the line, or -1 with errno; ENODEV where there is no simulator.
int openRemoteLine(const char* path);

} // namespace zel::sim
