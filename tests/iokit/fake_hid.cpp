// SPDX-License-Identifier: MIT
// The fake's HID manager, its devices and their registry entries.
#include "tests/iokit/fake_objects.h"

#include <IOKit/hid/IOHIDDevice.h>
#include <IOKit/hid/IOHIDManager.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace zel::test;

namespace {

std::string nameOfAllocator(CFAllocatorRef allocator) {
    return allocator == kCFAllocatorDefault ? "default" : nameOf(allocator);
}

std::string nameOfType(IOHIDReportType type) {
    return type == kIOHIDReportTypeFeature ? "feature" : std::to_string(type);
}

std::string hexBytes(const std::uint8_t* bytes, CFIndex size) {
    std::string text;
    for (CFIndex i = 0; i < size; ++i) {
        char byte[4];
        std::snprintf(byte, sizeof byte, "%s%02X", i ? " " : "", bytes[i]);
        text += byte;
    }
    return text;
}

const char* nameOfResult(bool success) { return success ? "success" : "error"; }
IOReturn resultOf(bool success) { return success ? kIOReturnSuccess : kIOReturnError; }

FakeObject* addProperty(const FakeProperty& property) {
    if (const auto* const text = std::get_if<std::string>(&property))
        return &addObject({FakeKind::String, "text " + *text, false});
    const auto* const number = std::get_if<std::int64_t>(&property);
    if (!number)
        return nullptr;
    FakeObject& object = addObject({FakeKind::Number, "number " + std::to_string(*number), false});
    object.number = *number;
    return &object;
}

std::string ofDevice(const char* what, int device) {
    return std::string(what) + " " + std::to_string(device);
}

// The attached device whose entry has this path; -1 for none.
int deviceWithPath(const char* path) {
    const std::vector<FakeHidDevice>& devices = fakeIokit().devices;
    const auto found = std::find_if(devices.begin(), devices.end(), [=](const FakeHidDevice& one) {
        return one.hasEntry && !one.path.empty() && one.path == path;
    });
    return found == devices.end() ? -1 : static_cast<int>(found - devices.begin());
}

} // namespace

IOHIDManagerRef IOHIDManagerCreate(CFAllocatorRef allocator, IOOptionBits options) {
    FakeObject* const manager =
        fakeIokit().createsManager ? &addObject({FakeKind::Manager, "manager", true}) : nullptr;
    noteCall("IOHIDManagerCreate", {nameOfAllocator(allocator), std::to_string(options)},
             nameOf(manager));
    return refer<IOHIDManagerRef>(manager);
}

void IOHIDManagerSetDeviceMatching(IOHIDManagerRef manager, CFDictionaryRef matching) {
    noteCall("IOHIDManagerSetDeviceMatching", {nameOf(manager), nameOf(matching)});
}

IOReturn IOHIDManagerOpen(IOHIDManagerRef manager, IOOptionBits options) {
    const bool success = fakeIokit().opensManager;
    noteCall("IOHIDManagerOpen", {nameOf(manager), std::to_string(options)}, nameOfResult(success));
    if (FakeObject* const opened = findObject(static_cast<const void*>(manager)))
        opened->isOpen = success;
    return resultOf(success);
}

IOReturn IOHIDManagerClose(IOHIDManagerRef manager, IOOptionBits options) {
    noteCall("IOHIDManagerClose", {nameOf(manager), std::to_string(options)});
    if (FakeObject* const closed = findObject(static_cast<const void*>(manager)))
        closed->isOpen = false;
    return kIOReturnSuccess;
}

CFSetRef IOHIDManagerCopyDevices(IOHIDManagerRef manager) {
    FakeObject* const set =
        fakeIokit().copiesSet ? &addObject({FakeKind::Set, "set", true}) : nullptr;
    noteCall("IOHIDManagerCopyDevices", {nameOf(manager)}, nameOf(set));
    return refer<CFSetRef>(set);
}

CFTypeRef IOHIDDeviceGetProperty(IOHIDDeviceRef device, CFStringRef key) {
    const FakeObject* const asked = findObject(static_cast<const void*>(device));
    const std::string keyText = nameOf(key);
    FakeObject* property = nullptr;
    if (asked && keyText == kIOHIDVendorIDKey)
        property = addProperty(deviceOf(*asked).vendor);
    if (asked && keyText == kIOHIDProductIDKey)
        property = addProperty(deviceOf(*asked).product);
    noteCall("IOHIDDeviceGetProperty", {nameOf(device), keyText}, nameOf(property));
    return property;
}

io_service_t IOHIDDeviceGetService(IOHIDDeviceRef device) {
    const FakeObject* const asked = findObject(static_cast<const void*>(device));
    io_service_t service = MACH_PORT_NULL;
    if (asked && deviceOf(*asked).hasService)
        service = portOf(
            addObject({FakeKind::Port, ofDevice("service", asked->device), false, asked->device}));
    noteCall("IOHIDDeviceGetService", {nameOf(device)}, nameOf(service));
    return service;
}

kern_return_t IORegistryEntryGetPath(io_registry_entry_t entry, const io_name_t plane,
                                     io_string_t path) {
    const FakeObject* const asked = findObject(entry);
    const std::string text = asked ? deviceOf(*asked).path : std::string();
    const bool success = !text.empty();
    if (success)
        std::memcpy(path, text.c_str(), text.size() + 1);
    noteCall("IORegistryEntryGetPath", {nameOf(entry), plane}, success ? text : "error");
    return resultOf(success);
}

io_registry_entry_t IORegistryEntryFromPath(mach_port_t port, const io_string_t path) {
    const int device = deviceWithPath(path);
    io_registry_entry_t entry = MACH_PORT_NULL;
    if (device >= 0)
        entry = portOf(addObject({FakeKind::Port, ofDevice("entry", device), true, device}));
    noteCall("IORegistryEntryFromPath", {std::to_string(port), path}, nameOf(entry));
    return entry;
}

kern_return_t IOObjectRelease(io_object_t object) {
    noteCall("IOObjectRelease", {nameOf(object)});
    if (FakeObject* const released = findObject(object))
        releaseObject(*released);
    return kIOReturnSuccess;
}

IOHIDDeviceRef IOHIDDeviceCreate(CFAllocatorRef allocator, io_service_t service) {
    const FakeObject* const entry = findObject(service);
    FakeObject* device = nullptr;
    if (entry && deviceOf(*entry).canBeCreated)
        device =
            &addObject({FakeKind::Device, ofDevice("device", entry->device), true, entry->device});
    noteCall("IOHIDDeviceCreate", {nameOfAllocator(allocator), nameOf(service)}, nameOf(device));
    return refer<IOHIDDeviceRef>(device);
}

IOReturn IOHIDDeviceOpen(IOHIDDeviceRef device, IOOptionBits options) {
    FakeObject* const opened = findObject(static_cast<const void*>(device));
    const bool success = opened && deviceOf(*opened).canBeOpened;
    noteCall("IOHIDDeviceOpen", {nameOf(device), std::to_string(options)}, nameOfResult(success));
    if (opened)
        opened->isOpen = success;
    return resultOf(success);
}

IOReturn IOHIDDeviceClose(IOHIDDeviceRef device, IOOptionBits options) {
    noteCall("IOHIDDeviceClose", {nameOf(device), std::to_string(options)});
    if (FakeObject* const closed = findObject(static_cast<const void*>(device)))
        closed->isOpen = false;
    return kIOReturnSuccess;
}

IOReturn IOHIDDeviceSetReport(IOHIDDeviceRef device, IOHIDReportType type, CFIndex reportId,
                              const std::uint8_t* report, CFIndex size) {
    int& failing = fakeIokit().failingSends;
    const bool success = failing == 0;
    if (failing > 0)
        --failing;
    noteCall("IOHIDDeviceSetReport",
             {nameOf(device), nameOfType(type), std::to_string(reportId), hexBytes(report, size)},
             nameOfResult(success));
    return resultOf(success);
}

IOReturn IOHIDDeviceGetReport(IOHIDDeviceRef device, IOHIDReportType type, CFIndex reportId,
                              std::uint8_t* report, CFIndex* size) {
    const bool success = !fakeIokit().failsReceives;
    noteCall("IOHIDDeviceGetReport",
             {nameOf(device), nameOfType(type), std::to_string(reportId), std::to_string(*size)},
             nameOfResult(success));
    if (!success)
        return kIOReturnError;
    const std::vector<unsigned char>& reply = fakeIokit().reply;
    *size = std::min(*size, static_cast<CFIndex>(reply.size()));
    std::copy_n(reply.begin(), *size, report);
    return kIOReturnSuccess;
}
