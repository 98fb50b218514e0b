// SPDX-License-Identifier: MIT
// Platforms without a user-space HID driver: no device can be made.
#include "sim/uhid/device.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace zel::sim {

int openUhid() {
    errno = ENOSYS;
    return -1;
}

std::string uhidHint(int) {
    return "this system has no user-space HID driver; preload libzelsim or use a bridge";
}

UhidDevice::UhidDevice(int fd, UhidIdentity identity, UhidTransfers transfers)
    : fd_(fd), identity_(std::move(identity)), transfers_(std::move(transfers)) {}

UhidDevice::~UhidDevice() { close(fd_); }

bool UhidDevice::plug() { return false; }
bool UhidDevice::unplug() { return true; }
bool UhidDevice::serve() { return false; }

} // namespace zel::sim
