// SPDX-License-Identifier: MIT
// The vendor and product IDs by which the families' devices are known on USB.
#pragma once

#include "frame/zelTagAPI.h"

namespace zel {

struct UsbIdentity {
    unsigned short vendor;
    unsigned short product;
};

constexpr UsbIdentity kTagIdentity = {ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT};
constexpr UsbIdentity kBandIdentity = {0x5A3E, 0x9D2B};
constexpr UsbIdentity kEchoIdentity = {0x8E4A, 0x9D2A};

} // namespace zel
