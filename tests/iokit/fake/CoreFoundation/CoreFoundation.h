// SPDX-License-Identifier: MIT
// As much of CoreFoundation as the macOS USB backend uses, with the platform's own signatures.
#pragma once

#include <cstdint>

using SInt32 = std::int32_t;
using Boolean = unsigned char;
using CFIndex = long;
using CFTypeID = unsigned long;
using CFTypeRef = const void*;
using CFAllocatorRef = const struct FakeAllocatorTag*;
using CFStringRef = const struct FakeStringTag*;
using CFNumberRef = const struct FakeNumberTag*;
using CFSetRef = const struct FakeSetTag*;
using CFDictionaryRef = const struct FakeDictionaryTag*;
using CFNumberType = CFIndex;

enum : CFNumberType { kCFNumberSInt32Type = 3 };

extern "C" {

extern const CFAllocatorRef kCFAllocatorDefault;

CFStringRef fakeConstantString(const char* text);
#define CFSTR(literal) fakeConstantString("" literal "")

void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFNumberGetTypeID();
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
CFIndex CFSetGetCount(CFSetRef set);
void CFSetGetValues(CFSetRef set, const void** values);
}
