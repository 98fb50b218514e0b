// SPDX-License-Identifier: MIT
// The proximity readers among the products.
#include "cli/device/reader_ids.h"

#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>
#include <span>

namespace zel::cli {

namespace {

// A row of the filter list is a reader by that; of the other products the plain reader is one.
constexpr ReaderId kReaders[] = {
    {ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT},
#define PRODUCT(name, vendor, product, text)
#define LISTED(name, vendor, product, filter, text) {0x##vendor, 0x##product},
#include "frame/products.def"
#undef LISTED
#undef PRODUCT
};

constexpr ReaderId kProducts[] = {
#define PRODUCT(name, vendor, product, text) {0x##vendor, 0x##product},
#define LISTED(name, vendor, product, filter, text) PRODUCT(name, vendor, product, text)
#include "frame/products.def"
#undef LISTED
#undef PRODUCT
};

bool isOneOf(std::span<const ReaderId> ids, const ReaderId& id) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

} // namespace

ReaderId usualReaderId() { return kReaders[0]; }

bool isReaderId(const ReaderId& id) { return isOneOf(kReaders, id); }

bool isProductId(const ReaderId& id) { return isOneOf(kProducts, id); }

std::string idText(int id) { return fmt::format("{:04x}", id); }

std::string udevLine(const ReaderId& id) {
    return fmt::format("SUBSYSTEM==\"hidraw\", ATTRS{{idVendor}}==\"{}\", "
                       "ATTRS{{idProduct}}==\"{}\", TAG+=\"uaccess\"",
                       idText(id.vendor), idText(id.product));
}

std::string udevHint(const ReaderId& id) {
    return fmt::format("install the package zeltag-udev, or put the line {} into "
                       "/etc/udev/rules.d/70-zeltag.rules, then unplug it and plug it in again",
                       udevLine(id));
}

} // namespace zel::cli
