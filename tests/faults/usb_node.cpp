// SPDX-License-Identifier: MIT
// Identity and feature reports; a reader that refuses one stalls it.
#include "tests/faults/usb_node.h"

#include "sim/tag/reader.h"

#include <cerrno>
#include <linux/hidraw.h>
#include <linux/ioctl.h>
#include <span>

namespace zel::test {

namespace {

long tellIdentity(void* argument) {
    auto* const info = static_cast<hidraw_devinfo*>(argument);
    info->vendor = static_cast<std::int16_t>(sim::TagReader::kVendor);
    info->product = static_cast<std::int16_t>(sim::TagReader::kProduct);
    return 0;
}

} // namespace

long serveNode(sim::Device& device, unsigned long request, void* argument) {
    const std::span report(static_cast<std::uint8_t*>(argument), _IOC_SIZE(request));
    const auto done = [&](bool taken) { return taken ? static_cast<long>(report.size()) : -EPIPE; };
    switch (_IOC_NR(request)) {
    case _IOC_NR(HIDIOCGRAWINFO):
        return tellIdentity(argument);
    case _IOC_NR(HIDIOCSFEATURE(0)):
        return done(device.take(report[0], report.subspan(1)));
    case _IOC_NR(HIDIOCGFEATURE(0)):
        return done(device.answer(report[0], report.subspan(1)));
    default:
        return -ENOTTY;
    }
}

void loseRequest(sim::Device& device, unsigned long request, void* argument) {
    const std::span report(static_cast<std::uint8_t*>(argument), _IOC_SIZE(request));
    if (_IOC_NR(request) == _IOC_NR(HIDIOCSFEATURE(0)))
        device.sendLost(report.subspan(1));
    if (_IOC_NR(request) == _IOC_NR(HIDIOCGFEATURE(0)))
        device.replyLost();
}

} // namespace zel::test
