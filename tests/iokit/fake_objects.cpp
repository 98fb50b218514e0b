// SPDX-License-Identifier: MIT
// Keeps the fake's script, objects and calls. All stay reachable to the end of the process, since
// the library also stops its backend while the process exits.
#include "tests/iokit/fake_objects.h"

#include <algorithm>
#include <deque>
#include <utility>

namespace zel::test {

namespace {

struct World {
    FakeIokit script = {};
    std::deque<FakeObject> objects = {}; // an object's port is its place, counted from 1
    std::string calls = {};
    std::vector<const void**> arraysLeft = {}; // of the sets that a scan before the reset kept
};

World& world() {
    static World* const world = new World;
    return *world;
}

} // namespace

FakeIokit& fakeIokit() { return world().script; }

void resetFakeIokit() {
    World next;
    next.arraysLeft = world().arraysLeft;
    for (const FakeObject& object : world().objects)
        if (object.values)
            next.arraysLeft.push_back(object.values);
    world() = std::move(next);
}

std::string takeCalls() { return std::exchange(world().calls, {}); }

void noteCall(std::string_view line) { world().calls.append(line).append("\n"); }

void noteCall(std::string_view function, std::initializer_list<std::string> arguments,
              std::string_view result) {
    std::string line(function);
    const char* separator = "(";
    for (const std::string& argument : arguments) {
        line.append(separator).append(argument);
        separator = ", ";
    }
    line += ")";
    if (!result.empty())
        line.append(" = ").append(result);
    noteCall(line);
}

std::string heldObjects() {
    std::string lines;
    for (const FakeObject& object : world().objects)
        if (object.isOwned && object.references > 0)
            lines += object.name + (object.isOpen ? " open\n" : "\n");
    return lines;
}

FakeObject& addObject(const FakeObject& object) { return world().objects.emplace_back(object); }

FakeObject* findObject(const void* reference) {
    for (FakeObject& object : world().objects)
        if (&object == reference)
            return &object;
    return nullptr;
}

FakeObject* findObject(io_object_t port) {
    const bool isKnown = port > 0 && port <= world().objects.size();
    return isKnown ? &world().objects[port - 1] : nullptr;
}

io_object_t portOf(const FakeObject& object) {
    io_object_t port = 1;
    while (findObject(port) != &object)
        ++port;
    return port;
}

FakeHidDevice& deviceOf(const FakeObject& object) {
    return world().script.devices.at(static_cast<std::size_t>(object.device));
}

void releaseObject(FakeObject& object) {
    --object.references;
    if (object.kind != FakeKind::Set)
        return;
    object.values = nullptr;
    for (FakeObject& member : world().objects)
        if (member.kind == FakeKind::Device && !member.isOwned)
            member.references = 0;
}

std::string nameOf(const FakeObject* object, bool isNull) {
    if (isNull)
        return "null";
    if (!object)
        return "unknown";
    return object->references > 0 ? object->name : "released " + object->name;
}

std::string nameOf(const void* reference) { return nameOf(findObject(reference), !reference); }
std::string nameOf(io_object_t port) { return nameOf(findObject(port), port == 0); }

} // namespace zel::test
