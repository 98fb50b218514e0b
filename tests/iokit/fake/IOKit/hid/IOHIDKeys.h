// SPDX-License-Identifier: MIT
// Property keys, options and report types of HID devices.
#pragma once

#define kIOHIDVendorIDKey "VendorID"
#define kIOHIDProductIDKey "ProductID"

enum { kIOHIDOptionsTypeNone = 0, kIOHIDOptionsTypeSeizeDevice = 1 };

enum IOHIDReportType {
    kIOHIDReportTypeInput = 0,
    kIOHIDReportTypeOutput = 1,
    kIOHIDReportTypeFeature = 2
};
