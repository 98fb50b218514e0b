// SPDX-License-Identifier: MIT
// What went over the wire at once, and which of its bytes hold what a card or a key holds.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zel::cli {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

struct Message {
    Bytes bytes;
    std::vector<bool> isSecret; // for each byte
    std::string name = {};      // what it is; empty: unknown
    bool isText = false;        // written as text as far as it is one

    bool holdsSecrets() const;
};

// Everything is secret; everything behind the first bytes; nothing.
Message allSecret(ByteView bytes, std::string name = {});
Message secretBehind(std::size_t shown, ByteView bytes, std::string name = {});
Message allShown(ByteView bytes, std::string name = {});

// Pairs of digits, or text in quotes; ** or * stands for a secret byte unless `showsSecrets`.
std::string asText(const Message& message, bool showsSecrets);

} // namespace zel::cli
