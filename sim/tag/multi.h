// SPDX-License-Identifier: MIT
// What a simulated TagPlus reader does beside a plain one: select among configurations, tell card
// types and versions, move stored sets, take blobs.
#pragma once

#include "sim/tag/blobs.h"
#include "sim/tag/settings.h"

namespace zel::sim {

class TagMulti {
public:
    TagMulti(const TagOptions& options, TagMemory& memory) : options_(options), memory_(memory) {}

    // Carries a command out; the result is the reply, all zeros where the reader refuses. A plain
    // reader refuses everything.
    TagBlock run(const TagBlock& command);

    TagBlobs& blobs() { return blobs_; }
    const TagBlobs& blobs() const { return blobs_; }

    static bool isMove(const TagBlock& command);

private:
    TagBlock state() const;
    TagBlock version(const TagBlock& command) const;
    TagBlock cardTypes(std::size_t page) const;
    TagBlock select(const TagBlock& command);

    const TagOptions& options_;
    TagMemory& memory_;
    TagBlobs blobs_;
};

} // namespace zel::sim
