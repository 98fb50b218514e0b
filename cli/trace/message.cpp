// SPDX-License-Identifier: MIT
// Writes messages down, secrets masked.
#include "cli/trace/message.h"

#include <algorithm>
#include <fmt/format.h>

namespace zel::cli {

namespace {

bool isText(std::uint8_t byte) {
    return (byte >= 0x20 && byte < 0x7F) || byte == '\r' || byte == '\n';
}

std::string quotedByte(std::uint8_t byte) {
    if (byte == '\r' || byte == '\n')
        return byte == '\r' ? "\\r" : "\\n";
    const std::string escape = byte == '"' || byte == '\\' ? "\\" : "";
    return escape + static_cast<char>(byte);
}

std::string quoted(const Message& message, bool showsSecrets) {
    std::string text = "\"";
    for (std::size_t place = 0; place < message.bytes.size(); ++place)
        text += showsSecrets || !message.isSecret[place] ? quotedByte(message.bytes[place]) : "*";
    return text + '"';
}

std::string inPairs(const Message& message, bool showsSecrets) {
    std::string text;
    for (std::size_t place = 0; place < message.bytes.size(); ++place) {
        text += place > 0 ? " " : "";
        text += showsSecrets || !message.isSecret[place]
                    ? fmt::format("{:02X}", message.bytes[place])
                    : "**";
    }
    return text;
}

} // namespace

bool Message::holdsSecrets() const {
    return std::find(isSecret.begin(), isSecret.end(), true) != isSecret.end();
}

Message secretBehind(std::size_t shown, ByteView bytes, std::string name) {
    Message message{
        {bytes.begin(), bytes.end()}, std::vector<bool>(bytes.size(), true), std::move(name)};
    const auto end = static_cast<std::ptrdiff_t>(std::min(shown, bytes.size()));
    std::fill(message.isSecret.begin(), message.isSecret.begin() + end, false);
    return message;
}

Message allSecret(ByteView bytes, std::string name) {
    return secretBehind(0, bytes, std::move(name));
}

Message allShown(ByteView bytes, std::string name) {
    return secretBehind(bytes.size(), bytes, std::move(name));
}

std::string asText(const Message& message, bool showsSecrets) {
    const Bytes& bytes = message.bytes;
    const bool quotes = message.isText && std::all_of(bytes.begin(), bytes.end(), isText);
    return quotes ? quoted(message, showsSecrets) : inPairs(message, showsSecrets);
}

} // namespace zel::cli
