// SPDX-License-Identifier: MIT
// USB HID on macOS: the HID manager lists the devices, and each one is opened by its registry path.
//
// A device of the manager's set belongs to the manager; the library opens a second object of its
// own on the same registry entry, which lives until close().
#include "transport/usb_platform.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitKeys.h>
#include <IOKit/IOKitLib.h>
#include <IOKit/hid/IOHIDDevice.h>
#include <IOKit/hid/IOHIDKeys.h>
#include <IOKit/hid/IOHIDManager.h>
#include <mach/port.h>

#include <cstddef>
#include <new>
#include <utility>

namespace {

// IOKit's default port. Its two names there, the older one deprecated, the newer one missing from
// older systems, both stand for the null port.
constexpr mach_port_t kDefaultPort = MACH_PORT_NULL;

constinit IOHIDManagerRef manager = nullptr;

// The snapshot of list(): the manager's set and its devices in the set's own order. Plain pointers:
// stop() also runs while static objects are destroyed.
constinit CFSetRef deviceSet = nullptr;
constinit const void** devices = nullptr;

IOHIDDeviceRef listedDevice(int index) {
    return static_cast<IOHIDDeviceRef>(const_cast<void*>(devices[index]));
}

int start() {
    manager = IOHIDManagerCreate(kCFAllocatorDefault, kIOHIDOptionsTypeNone);
    if (!manager)
        return 0;
    IOHIDManagerSetDeviceMatching(manager, nullptr);
    // Opening fails when any device attached refuses; listing needs no open device.
    IOHIDManagerOpen(manager, kIOHIDOptionsTypeNone);
    return 1;
}

void stop() {
    IOHIDManagerClose(manager, kIOHIDOptionsTypeNone);
    CFRelease(std::exchange(manager, nullptr));
}

// Forgets a list that a failed open() left: its set and array stay allocated, once for each device
// that vanishes during a scan.
int list() {
    IOHIDManagerSetDeviceMatching(manager, nullptr);
    devices = nullptr;
    deviceSet = IOHIDManagerCopyDevices(manager);
    if (!deviceSet)
        return 0;
    const CFIndex count = CFSetGetCount(deviceSet);
    devices = new (std::nothrow) const void*[static_cast<std::size_t>(count)];
    if (!devices)
        return 0;
    CFSetGetValues(deviceSet, devices);
    return static_cast<int>(count);
}

void unlist() {
    delete[] std::exchange(devices, nullptr);
    if (deviceSet)
        CFRelease(std::exchange(deviceSet, nullptr));
}

unsigned numberProperty(IOHIDDeviceRef device, CFStringRef key) {
    SInt32 value = 0;
    const CFTypeRef property = IOHIDDeviceGetProperty(device, key);
    if (property && CFGetTypeID(property) == CFNumberGetTypeID())
        CFNumberGetValue(static_cast<CFNumberRef>(property), kCFNumberSInt32Type, &value);
    return static_cast<unsigned>(value);
}

void ids(int index, unsigned* vendor, unsigned* product) {
    const IOHIDDeviceRef device = listedDevice(index);
    *vendor = numberProperty(device, CFSTR(kIOHIDVendorIDKey));
    *product = numberProperty(device, CFSTR(kIOHIDProductIDKey));
}

// A device without a path has an empty name, for which there is no entry. What a failed open holds,
// entry or device, stays held.
void* open(int index, char* name) {
    const io_service_t service = IOHIDDeviceGetService(listedDevice(index));
    IORegistryEntryGetPath(service, kIOServicePlane, name);
    const io_registry_entry_t entry = IORegistryEntryFromPath(kDefaultPort, name);
    if (entry == MACH_PORT_NULL)
        return nullptr;
    const IOHIDDeviceRef device = IOHIDDeviceCreate(kCFAllocatorDefault, entry);
    if (!device || IOHIDDeviceOpen(device, kIOHIDOptionsTypeNone) != kIOReturnSuccess)
        return nullptr;
    IOObjectRelease(entry);
    return device;
}

void close(void* handle) {
    const auto device = static_cast<IOHIDDeviceRef>(handle);
    IOHIDDeviceClose(device, kIOHIDOptionsTypeNone);
    CFRelease(device);
}

int setFeature(void* handle, unsigned char reportId, const unsigned char* data, long size) {
    const IOReturn result = IOHIDDeviceSetReport(static_cast<IOHIDDeviceRef>(handle),
                                                 kIOHIDReportTypeFeature, reportId, data, size);
    return result == kIOReturnSuccess ? 1 : 0;
}

int getFeature(void* handle, unsigned char reportId, unsigned char* data, long* size) {
    CFIndex length = *size;
    const IOReturn result = IOHIDDeviceGetReport(static_cast<IOHIDDeviceRef>(handle),
                                                 kIOHIDReportTypeFeature, reportId, data, &length);
    if (result != kIOReturnSuccess)
        return 0;
    *size = length;
    return 1;
}

constexpr UsbBackend kBackend = {start,  stop,  list,       ids,       open,
                                 unlist, close, setFeature, getFeature};

} // namespace

const UsbBackend& zel::iokitUsbBackend() { return kBackend; }
