// SPDX-License-Identifier: MIT
// The vendor and product IDs by which the families' devices are known on USB.
#pragma once

#include "frame/zelTagAPI.h"

namespace zel {

struct UsbIdentity {
    unsigned short vendor;
    unsigned short product;
};

// kTagIdentity, kTagAdvIdentity, kBandIdentity and so on: one for each row.
#define PRODUCT(name, vendor, product, text)                                                       \
    constexpr UsbIdentity k##name##Identity = {0x##vendor, 0x##product};
#define LISTED(name, vendor, product, filter, text) PRODUCT(name, vendor, product, text)
#include "frame/products.def"
#undef LISTED
#undef PRODUCT

static_assert(kTagIdentity.vendor == ZELTAG_USB_VENDOR);
static_assert(kTagIdentity.product == ZELTAG_USB_PRODUCT);

} // namespace zel
