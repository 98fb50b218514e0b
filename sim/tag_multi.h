// SPDX-License-Identifier: MIT
// What a simulated TagPlus reader does beside a plain one: select among configurations, tell card
// types and versions, move stored sets, take key and file references.
#pragma once

#include "sim/tag_settings.h"

namespace zel::sim {

// A reference for the secure element, as it arrived.
struct TagReference {
    std::uint8_t kind;                   // 1 key, 2 file
    std::uint8_t number;                 // of the key
    std::uint8_t length;                 // as told when it was opened
    std::vector<std::uint8_t> data = {}; // whole pages of four bytes
    bool isClosed = false;

    bool operator==(const TagReference&) const = default;
};

class TagMulti {
public:
    TagMulti(const TagOptions& options, TagMemory& memory) : options_(options), memory_(memory) {}

    // Carries a command out; the result is the reply, all zeros where the reader refuses. A plain
    // reader refuses everything.
    TagBlock run(const TagBlock& command);

    void powerUp() { isOpen_ = false; }

    const std::vector<TagReference>& references() const { return references_; }

    static bool isMove(const TagBlock& command);
    static bool isReferenceEnd(const TagBlock& command);

private:
    TagBlock state() const;
    TagBlock version(const TagBlock& command) const;
    TagBlock cardTypes(std::size_t page) const;
    TagBlock select(const TagBlock& command);
    bool takeReference(const TagBlock& command);
    bool openReference(const TagBlock& command);

    const TagOptions& options_;
    TagMemory& memory_;
    std::vector<TagReference> references_;
    bool isOpen_ = false; // the last reference waits for pages
};

} // namespace zel::sim
