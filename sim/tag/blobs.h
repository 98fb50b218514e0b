// SPDX-License-Identifier: MIT
// What a simulated TagPlus reader is sent for its secure element, four bytes a chunk: key and file
// references, and key blobs, which it also hands back.
#pragma once

#include "sim/tag/settings.h"

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace zel::sim {

// A blob as it arrived; one of kind 1 or 2 is a reference.
struct TagBlob {
    std::uint8_t kind;                   // 1 key reference, 2 file reference
    std::uint8_t number;                 // of the key
    std::uint8_t length;                 // as told when it was opened
    std::vector<std::uint8_t> data = {}; // whole chunks of four bytes
    bool isClosed = false;               // saved
    std::uint8_t fourth = 0;             // last byte of the header

    bool isReference() const { return kind == 1 || kind == 2; }
    bool operator==(const TagBlob&) const = default;
};

// What goes wrong with a report on a chunk.
enum class BlobFault {
    None,
    Refused,   // the reader takes no such report
    NoAnswer,  // it takes the report and gives no reply
    WrongEcho, // the reply's fourth byte is another
};

using TagReference = TagBlob;

class TagBlobs {
public:
    static constexpr std::uint8_t kHeader = 0;  // in place of a chunk's number
    static constexpr std::uint8_t kSave = 0xFF; // likewise

    // Carries a command out; the result is the reply, all zeros where the reader refuses.
    TagBlock read(const TagBlock& command);
    TagBlock write(const TagBlock& command);

    // Keeps over a loss of power what was saved until now.
    void commit() { committed_ = blobs_; }
    void powerUp();

    // Lets the reports on a chunk fail, written or read, until told otherwise.
    void fail(std::uint8_t chunk, BlobFault fault) { faults_[chunk] = fault; }
    BlobFault faultOf(std::span<const std::uint8_t> payload) const;

    // In the order of their coming; the latest of a kind and number is the one that is read.
    const std::vector<TagBlob>& all() const { return blobs_; }
    std::vector<TagReference> references() const;

    // Whether a command ends the writing of a blob.
    static bool isSave(const TagBlock& command);
    bool isReferenceLast() const { return !blobs_.empty() && blobs_.back().isReference(); }

    // Empty for a command on a reference or on something else.
    std::string nameOf(std::span<const std::uint8_t> payload) const;

private:
    void open(const TagBlock& command);
    void take(const TagBlock& command);
    bool select(const TagBlock& command);
    bool writesReference() const { return isOpen_ && isReferenceLast(); }

    std::vector<TagBlob> blobs_;
    std::vector<TagBlob> committed_;
    std::vector<std::uint8_t> selected_; // data of the blob under read
    bool isOpen_ = false;                // the last blob waits for chunks
    bool isSelected_ = false;
    std::map<std::uint8_t, BlobFault> faults_;
};

} // namespace zel::sim
