// SPDX-License-Identifier: MIT
// The platform's own USB backend; the build chooses the one file that defines it.
#pragma once

#include "transport/usb_backend.h"

namespace zel {

const UsbBackend& hidrawUsbBackend(); // Linux
const UsbBackend& iokitUsbBackend();  // macOS
const UsbBackend& noUsbBackend();     // elsewhere: finds nothing

inline const UsbBackend& platformUsbBackend() { return ZEL_PLATFORM_USB_BACKEND(); }

} // namespace zel
