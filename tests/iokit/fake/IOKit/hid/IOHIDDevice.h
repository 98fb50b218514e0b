// SPDX-License-Identifier: MIT
// As much of a HID device as the macOS USB backend uses, with the platform's own signatures.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>
#include <IOKit/hid/IOHIDKeys.h>

using IOHIDDeviceRef = struct FakeHidDeviceTag*;

extern "C" {

IOHIDDeviceRef IOHIDDeviceCreate(CFAllocatorRef allocator, io_service_t service);
io_service_t IOHIDDeviceGetService(IOHIDDeviceRef device);
CFTypeRef IOHIDDeviceGetProperty(IOHIDDeviceRef device, CFStringRef key);
IOReturn IOHIDDeviceOpen(IOHIDDeviceRef device, IOOptionBits options);
IOReturn IOHIDDeviceClose(IOHIDDeviceRef device, IOOptionBits options);
IOReturn IOHIDDeviceSetReport(IOHIDDeviceRef device, IOHIDReportType type, CFIndex reportId,
                              const std::uint8_t* report, CFIndex size);
IOReturn IOHIDDeviceGetReport(IOHIDDeviceRef device, IOHIDReportType type, CFIndex reportId,
                              std::uint8_t* report, CFIndex* size);
}
