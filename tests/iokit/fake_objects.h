// SPDX-License-Identifier: MIT
// The objects behind the fake's references and ports, and how they appear in the trace.
#pragma once

#include "tests/iokit/fake_iokit.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

#include <initializer_list>

namespace zel::test {

enum class FakeKind : CFTypeID { Manager = 1, Set, Device, String, Number, Port };

// Owned objects are the library's to release; the others belong to what they were asked of.
struct FakeObject {
    FakeKind kind;
    std::string name;
    bool isOwned;
    int device = -1; // the attached device that it stands for
    int references = 1;
    bool isOpen = false;
    std::int64_t number = 0;
    const void** values = nullptr; // the array that received a set's members
};

FakeObject& addObject(const FakeObject& object);

// The object of a reference or port; null for one that the fake never gave.
FakeObject* findObject(const void* reference);
FakeObject* findObject(io_object_t port);
io_object_t portOf(const FakeObject& object);

// The attached device of an object that the fake gave.
FakeHidDevice& deviceOf(const FakeObject& object);

// A member of a set goes with it.
void releaseObject(FakeObject& object);

// How an argument reads: its name, "released NAME", "unknown" or "null".
std::string nameOf(const FakeObject* object, bool isNull);
std::string nameOf(const void* reference);
std::string nameOf(io_object_t port);

void noteCall(std::string_view function, std::initializer_list<std::string> arguments,
              std::string_view result = {});

// A reference of the platform's type to an object.
template <class Reference> Reference refer(FakeObject* object) {
    return static_cast<Reference>(static_cast<void*>(object));
}

} // namespace zel::test
