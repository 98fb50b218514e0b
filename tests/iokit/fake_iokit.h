// SPDX-License-Identifier: MIT
// A scripted IOKit: it answers as a test tells it and notes each call as a line of text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zel::test {

// A property that is missing, a number, or a text.
using FakeProperty = std::variant<std::monostate, std::int64_t, std::string>;

// An attached device and where its opening fails.
struct FakeHidDevice {
    FakeProperty vendor = 0x5A3E;
    FakeProperty product = 0x9D23;
    std::string path = {}; // empty: it has none
    bool hasService = true;
    bool hasEntry = true;
    bool canBeCreated = true;
    bool canBeOpened = true;
};

struct FakeIokit {
    bool createsManager = true;
    bool opensManager = true;
    bool copiesSet = true;
    std::vector<FakeHidDevice> devices = {};
    int failingSends = 0; // the next reports set that fail; -1: all
    bool failsReceives = false;
    std::vector<unsigned char> reply = {}; // what a received report holds
};

// Detached with everything known of it; the calls noted so far are forgotten.
void resetFakeIokit();

// The script that the calls follow.
FakeIokit& fakeIokit();

// The calls since the last take, one a line: name(arguments) = result.
std::string takeCalls();

// Adds a line of the test's own to the calls.
void noteCall(std::string_view line);

// The names of what is created or copied and not released, one a line; "open" behind those that
// are.
std::string heldObjects();

} // namespace zel::test
