// SPDX-License-Identifier: MIT
// Puts the bus and the lines behind the library's seams: the only calls of the library here, so
// that a program without it can have the devices.
#include "sim/wire/line.h"
#include "sim/wire/usb_bus.h"
#include "transport/line_opener.h"

namespace zel::sim {

namespace {

extern "C" {
static int openSimulatedLine(const char* path) { return lines().open(path); }
}

} // namespace

bool UsbBus::install() { return UsbDriver_UseBackend(&backend()) != 0; }

bool UsbBus::uninstall() { return UsbDriver_UseBackend(nullptr) != 0; }

void Lines::install() { CPort_UseOpener(openSimulatedLine); }

void Lines::uninstall() { CPort_UseOpener(nullptr); }

} // namespace zel::sim
