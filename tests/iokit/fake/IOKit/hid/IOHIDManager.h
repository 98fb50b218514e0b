// SPDX-License-Identifier: MIT
// As much of the HID manager as the macOS USB backend uses, with the platform's own signatures.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

using IOHIDManagerRef = struct FakeHidManagerTag*;

extern "C" {

IOHIDManagerRef IOHIDManagerCreate(CFAllocatorRef allocator, IOOptionBits options);
void IOHIDManagerSetDeviceMatching(IOHIDManagerRef manager, CFDictionaryRef matching);
IOReturn IOHIDManagerOpen(IOHIDManagerRef manager, IOOptionBits options);
IOReturn IOHIDManagerClose(IOHIDManagerRef manager, IOOptionBits options);
CFSetRef IOHIDManagerCopyDevices(IOHIDManagerRef manager);
}
