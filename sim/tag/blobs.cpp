// SPDX-License-Identifier: MIT
// The commands that write a blob and read it back: a header, chunks, the save.
#include "sim/tag/blobs.h"

#include "sim/tag/commands.h"

#include <algorithm>
#include <iterator>

namespace zel::sim {

namespace {

constexpr std::size_t kChunkSize = 4;
constexpr std::size_t kCommandSize = 8;

TagBlock echo(const TagBlock& command) { return {command[0], command[1], command[2], command[3]}; }

std::size_t endOf(std::size_t chunk) { return chunk * kChunkSize; }

bool isOnBlob(std::span<const std::uint8_t> payload) {
    return payload.size() == kCommandSize && payload[0] == opcode::kMulti &&
           (payload[1] == multi::kReadBlob || payload[1] == multi::kWriteBlob);
}

} // namespace

void TagBlobs::powerUp() {
    blobs_ = committed_;
    selected_.clear();
    isOpen_ = isSelected_ = false;
}

BlobFault TagBlobs::faultOf(std::span<const std::uint8_t> payload) const {
    if (!isOnBlob(payload))
        return BlobFault::None;
    const auto row = faults_.find(payload[3]);
    return row == faults_.end() ? BlobFault::None : row->second;
}

TagBlock TagBlobs::write(const TagBlock& command) {
    if (command[3] == kHeader)
        open(command);
    else if (isOpen_)
        take(command);
    else
        return {};
    return echo(command);
}

// A blob that wasn't saved by then stays cut off.
void TagBlobs::open(const TagBlock& command) {
    blobs_.push_back({.kind = command[4], .number = command[5], .length = command[6]});
    blobs_.back().fourth = command[7];
    isOpen_ = true;
}

void TagBlobs::take(const TagBlock& command) {
    TagBlob& blob = blobs_.back();
    const std::size_t chunk = command[3];
    if (chunk == kSave) {
        isOpen_ = false;
        blob.isClosed = true;
        return;
    }
    blob.data.resize(std::max(blob.data.size(), endOf(chunk)));
    std::copy_n(command.begin() + 4, kChunkSize,
                blob.data.begin() + static_cast<std::ptrdiff_t>(endOf(chunk - 1)));
}

// The header is echoed whole; a chunk past the blob's end is zeros.
TagBlock TagBlobs::read(const TagBlock& command) {
    if (command[3] == kHeader)
        return select(command) ? command : TagBlock{};
    if (!isSelected_)
        return {};
    TagBlock reply = echo(command);
    if (endOf(command[3]) <= selected_.size())
        std::copy_n(selected_.begin() + static_cast<std::ptrdiff_t>(endOf(command[3] - 1U)),
                    kChunkSize, reply.begin() + 4);
    return reply;
}

bool TagBlobs::select(const TagBlock& command) {
    const auto blob = std::find_if(blobs_.rbegin(), blobs_.rend(), [&](const TagBlob& held) {
        return held.isClosed && held.kind == command[4] && held.number == command[5];
    });
    isSelected_ = blob != blobs_.rend();
    selected_ = isSelected_ ? blob->data : std::vector<std::uint8_t>{};
    return isSelected_;
}

bool TagBlobs::isSave(const TagBlock& command) {
    return command[0] == opcode::kMulti && command[1] == multi::kWriteBlob && command[3] == kSave;
}

std::vector<TagReference> TagBlobs::references() const {
    std::vector<TagReference> references;
    std::copy_if(blobs_.begin(), blobs_.end(), std::back_inserter(references),
                 [](const TagBlob& blob) { return blob.isReference(); });
    return references;
}

std::string TagBlobs::nameOf(std::span<const std::uint8_t> payload) const {
    if (!isOnBlob(payload))
        return "";
    const bool isRead = payload[1] == multi::kReadBlob;
    const bool opensReference = payload[3] == kHeader && (payload[4] == 1 || payload[4] == 2);
    if (!isRead && (opensReference || (payload[3] != kHeader && writesReference())))
        return "";
    if (!isRead && payload[3] == kSave)
        return "multi: save blob";
    const std::string blob = isRead ? "multi: read blob" : "multi: write blob";
    return payload[3] == kHeader ? blob : blob + " chunk " + std::to_string(payload[3]);
}

} // namespace zel::sim
