// SPDX-License-Identifier: MIT
// As much of the IOKit registry as the macOS USB backend uses, with the platform's own signatures.
#pragma once

#include <cstdint>
#include <mach/port.h>

using kern_return_t = int;
using IOReturn = kern_return_t;
using IOOptionBits = std::uint32_t;
using io_object_t = mach_port_t;
using io_service_t = io_object_t;
using io_registry_entry_t = io_object_t;
using io_name_t = char[128];
using io_string_t = char[512];

#define kIOReturnSuccess 0
#define kIOReturnError static_cast<IOReturn>(0xE00002BC)

extern "C" {

kern_return_t IORegistryEntryGetPath(io_registry_entry_t entry, const io_name_t plane,
                                     io_string_t path);
io_registry_entry_t IORegistryEntryFromPath(mach_port_t port, const io_string_t path);
kern_return_t IOObjectRelease(io_object_t object);
}
