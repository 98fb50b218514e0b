// SPDX-License-Identifier: MIT
// Hexadecimal pairs, and text with the escapes of C.
#include "sim/wire/byte_text.h"

#include <algorithm>
#include <string_view>

namespace zel::sim {

namespace {

bool isText(std::uint8_t byte) {
    return (byte >= 0x20 && byte < 0x7F) || byte == '\r' || byte == '\n';
}

std::string quoted(std::span<const std::uint8_t> bytes) {
    std::string text = "\"";
    for (const std::uint8_t byte : bytes) {
        if (byte == '\r' || byte == '\n') {
            text += byte == '\r' ? "\\r" : "\\n";
            continue;
        }
        if (byte == '"' || byte == '\\')
            text += '\\';
        text += static_cast<char>(byte);
    }
    return text + '"';
}

} // namespace

std::string hexOf(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty())
            text += ' ';
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0x0F];
    }
    return text;
}

std::string chunkOf(std::span<const std::uint8_t> bytes) {
    const bool isAllText = !bytes.empty() && std::all_of(bytes.begin(), bytes.end(), isText);
    return isAllText ? quoted(bytes) : hexOf(bytes);
}

} // namespace zel::sim
