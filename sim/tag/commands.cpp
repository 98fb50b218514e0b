// SPDX-License-Identifier: MIT
// Names of commands and of their sub-commands. A # of a name stands for the next argument.
#include "sim/tag/commands.h"

#include "sim/tag/settings.h"

#include <algorithm>
#include <iterator>

namespace zel::sim {

namespace {

// The first row whose bytes are those of the command names it; kAny is a byte that doesn't matter.
constexpr int kAny = -1;

struct CommandName {
    int match[5];
    const char* name;
    int arguments[2] = {0, 0}; // which bytes of the command stand for each #
};

constexpr CommandName kNames[] = {
    {{0x80, kAny, kAny, kAny, kAny}, "block 0"},
    {{0x81, kAny, kAny, kAny, kAny}, "block 1"},
    {{0x82, kAny, kAny, kAny, kAny}, "block 2"},
    {{0x83, kAny, kAny, kAny, kAny}, "block 3"},
    {{0x84, kAny, kAny, kAny, kAny}, "card type"},
    {{0x85, kAny, 0x00, 0x10, kAny}, "page # of fields", {1}},
    {{0x85, kAny, 0x01, 0x00, kAny}, "key 1 page #", {1}},
    {{0x85, kAny, 0x11, 0x00, kAny}, "key 2 page #", {1}},
    {{0x85, kAny, kAny, kAny, kAny}, "page"},
    {{0x88, kAny, kAny, kAny, kAny}, "card data"},
    {{0x89, 0x01, kAny, kAny, kAny}, "multi: query"},
    {{0x89, 0x03, kAny, kAny, kAny}, "multi: version of unit # slot #", {2, 3}},
    {{0x89, 0x04, kAny, kAny, kAny}, "multi: card types page #", {2}},
    {{0x89, 0x81, kAny, kAny, kAny}, "multi: select #", {2}},
    {{0x89, 0x82, kAny, kAny, kAny}, "multi: move set # to #", {2, 3}},
    {{0x89, 0x90, kAny, 0x00, 0x01}, "multi: key reference #", {5}},
    {{0x89, 0x90, kAny, 0x00, 0x02}, "multi: file reference #", {5}},
    {{0x89, 0x90, kAny, 0xFF, kAny}, "multi: reference end"},
    {{0x89, 0x90, kAny, kAny, kAny}, "multi: reference page #", {3}},
    {{0x89, kAny, kAny, kAny, kAny}, "multi"},
    {{0x8A, kAny, kAny, kAny, kAny}, "LUID"},
    {{0x8C, 0x01, kAny, kAny, kAny}, "service: part number #", {2}},
    {{0x8C, 0x02, kAny, kAny, kAny}, "service: queued identifier page #", {2}},
    {{0x8C, 0x03, kAny, kAny, kAny}, "service: beep #", {2}},
    {{0x8C, 0x04, 0x04, kAny, kAny}, "service: firmware version #", {3}},
    {{0x8C, 0x04, 0x07, kAny, kAny}, "service: firmware file #", {3}},
    {{0x8C, 0x05, kAny, kAny, kAny}, "service: serial number page #", {2}},
    {{0x8C, 0x06, kAny, kAny, kAny}, "service: volume"},
    {{0x8C, 0x07, kAny, kAny, kAny}, "service: radio"},
    {{0x8C, 0x86, kAny, kAny, kAny}, "service: set volume #", {2}},
    {{0x8C, 0x87, kAny, kAny, kAny}, "service: set radio #", {2}},
    {{0x8C, kAny, kAny, kAny, kAny}, "service"},
    {{0x8D, kAny, kAny, kAny, kAny}, "identifier page"},
    {{0x8E, kAny, kAny, kAny, kAny}, "bit count"},
    {{0x8F, kAny, kAny, kAny, kAny}, "identifier"},
    {{0x90, kAny, kAny, kAny, kAny}, "commit"},
    {{0xA0, kAny, kAny, kAny, kAny}, "factory defaults"},
    {{0xF0, kAny, kAny, kAny, kAny}, "enter boot loader: micro #", {1}},
};

bool matches(const CommandName& row, const TagBlock& command) {
    return std::equal(std::begin(row.match), std::end(row.match), command.begin(),
                      [](int wanted, int byte) { return wanted == kAny || wanted == byte; });
}

} // namespace

std::string tagCommandName(std::span<const std::uint8_t> payload) {
    TagBlock bytes = {};
    std::copy_n(payload.begin(), std::min(payload.size(), bytes.size()), bytes.begin());
    const auto row = std::find_if(std::begin(kNames), std::end(kNames),
                                  [&](const CommandName& name) { return matches(name, bytes); });
    if (row == std::end(kNames))
        return "";
    std::string text;
    const int* argument = row->arguments;
    for (const char* next = row->name; *next != '\0'; ++next)
        text += *next == '#' ? std::to_string(bytes[static_cast<std::size_t>(*argument++)])
                             : std::string(1, *next);
    return text;
}

} // namespace zel::sim
