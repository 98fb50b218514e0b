// SPDX-License-Identifier: MIT
// Reads names of nodes and the lines of their attribute.
#include "transport/hidraw_node.h"

#include <charconv>
#include <system_error>

namespace zel {

namespace {

constexpr std::string_view kNodePrefix = "hidraw";
constexpr std::string_view kKey = "HID_ID=";
constexpr int kHexadecimal = 16;

// Moves to what stands behind the key of the first line that begins with it. Whether one does.
bool skipToIds(std::string_view& text) {
    while (!text.starts_with(kKey)) {
        const std::size_t lineEnd = text.find('\n');
        if (lineEnd == text.npos)
            return false;
        text.remove_prefix(lineEnd + 1);
    }
    text.remove_prefix(kKey.size());
    return true;
}

// Takes a number and the character behind it, which must be this one.
bool takeNumber(std::string_view& text, std::uint16_t& number, char terminator) {
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, kHexadecimal);
    if (error != std::errc() || rest == end || *rest != terminator)
        return false;
    text.remove_prefix(static_cast<std::size_t>(rest + 1 - text.data()));
    return true;
}

} // namespace

bool takesName(std::string_view name, HidrawNode& node) {
    if (!name.starts_with(kNodePrefix))
        return false;
    const char* const end = name.data() + name.size();
    const auto [rest, error] = std::from_chars(name.data() + kNodePrefix.size(), end, node.number);
    return error == std::errc() && rest == end;
}

// Takes a line "HID_ID=0003:00005A3E:00009D23": bus, vendor, product in hexadecimal. An ID wider
// than 16 bits is none of USB's, and a line that the page's end cut has no line end.
bool takesIds(std::string_view uevent, HidrawNode& node) {
    std::uint16_t bus = 0;
    HidrawNode told = node;
    if (!skipToIds(uevent) || !takeNumber(uevent, bus, ':') ||
        !takeNumber(uevent, told.vendor, ':') || !takeNumber(uevent, told.product, '\n'))
        return false;
    node = told;
    return true;
}

} // namespace zel
