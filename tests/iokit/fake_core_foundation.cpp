// SPDX-License-Identifier: MIT
// The fake's sets, numbers and texts. The two type questions are left out of the trace: they change
// nothing, and a comparison may ask them in either order.
#include "tests/iokit/fake_objects.h"

using namespace zel::test;

namespace {
const char defaultAllocator = 0;
}

// Not null as on the platform: the trace shows that it is passed and not just nothing.
const CFAllocatorRef kCFAllocatorDefault =
    static_cast<CFAllocatorRef>(static_cast<const void*>(&defaultAllocator));

CFStringRef fakeConstantString(const char* text) {
    return refer<CFStringRef>(&addObject({FakeKind::String, text, false}));
}

void CFRelease(CFTypeRef object) {
    noteCall("CFRelease", {nameOf(object)});
    if (FakeObject* const released = findObject(object))
        releaseObject(*released);
}

CFTypeID CFGetTypeID(CFTypeRef object) {
    const FakeObject* const asked = findObject(object);
    if (!asked)
        noteCall("CFGetTypeID", {nameOf(object)});
    return asked ? static_cast<CFTypeID>(asked->kind) : 0;
}

CFTypeID CFNumberGetTypeID() { return static_cast<CFTypeID>(FakeKind::Number); }

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    const FakeObject* const read = findObject(static_cast<CFTypeRef>(number));
    const bool isWord = type == kCFNumberSInt32Type;
    noteCall("CFNumberGetValue", {nameOf(number), isWord ? "SInt32" : std::to_string(type)});
    if (!read || !isWord)
        return 0;
    *static_cast<SInt32*>(value) = static_cast<SInt32>(read->number);
    return *static_cast<SInt32*>(value) == read->number;
}

CFIndex CFSetGetCount(CFSetRef set) {
    const std::size_t count = fakeIokit().devices.size();
    noteCall("CFSetGetCount", {nameOf(set)}, std::to_string(count));
    return static_cast<CFIndex>(count);
}

void CFSetGetValues(CFSetRef set, const void** values) {
    noteCall("CFSetGetValues", {nameOf(set)});
    if (FakeObject* const listed = findObject(static_cast<CFTypeRef>(set)))
        listed->values = values;
    for (int i = 0; i < static_cast<int>(fakeIokit().devices.size()); ++i)
        values[i] = &addObject({FakeKind::Device, "listed " + std::to_string(i), false, i});
}
