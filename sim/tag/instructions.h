// SPDX-License-Identifier: MIT
// What a simulated proximity reader makes of the instructions of its byte-stream form.
#pragma once

#include "sim/tag/reader.h"

#include <cstdint>
#include <span>
#include <vector>

namespace zel::sim {

// The first byte of a header.
namespace instruction {
constexpr std::uint8_t kIdentifier = 0x00;
constexpr std::uint8_t kBlock = 0x01;
constexpr std::uint8_t kCommit = 0x02;
constexpr std::uint8_t kFactoryDefaults = 0x03;
constexpr std::uint8_t kLuid = 0x04;
constexpr std::uint8_t kWriteLuid = 0x06;
constexpr std::uint8_t kMulti = 0x09; // TagPlus commands; fields in the old form
constexpr std::uint8_t kFields = 0x0A;
constexpr std::uint8_t kService = 0x0C;
constexpr std::uint8_t kSpeed = 0x0D;
constexpr std::uint8_t kWriteBlock = 0x81;
constexpr std::uint8_t kWriteFields = 0x8A; // in the new form; in the old one it is kFields
} // namespace instruction

struct TagHeader {
    std::uint8_t ins = 0;
    std::uint8_t p1 = 0;
    std::uint8_t p2 = 0;
    std::uint8_t length = 0;
};

struct TagStatus {
    std::uint8_t sw1 = 0x90;
    std::uint8_t sw2 = 0x00;
};

inline constexpr TagStatus kNoCard = {0x6A, 0x82};
inline constexpr TagStatus kUnknownInstruction = {0x6D, 0x00};
inline constexpr TagStatus kFailure = {0x6F, 0x00};

// How the answer to a header is framed.
enum class TagForm {
    Refused,  // the status word in place of the procedure byte
    Read,     // procedure byte, data, status word
    Bare,     // procedure byte and data
    AtOnce,   // instruction, P1, P2, eight bytes of data, status word
    Write,    // procedure byte; behind the host's data the status word
    NoAnswer, // the status word alone: there is nothing to tell
};

struct TagOutcome {
    TagForm form = TagForm::Refused;
    std::vector<std::uint8_t> data = {};
    TagStatus status = kUnknownInstruction;
};

class TagInstructions {
public:
    explicit TagInstructions(TagReader& reader) : reader_(reader) {}

    // Carries an instruction out; of one that writes it only tells the form.
    TagOutcome run(const TagHeader& header);

    // Carries one out that writes.
    void write(const TagHeader& header, std::span<const std::uint8_t> data);

private:
    TagOutcome identifier(std::size_t length);
    TagOutcome block(const TagHeader& header);
    TagOutcome luid(const TagHeader& header);
    TagOutcome multi(const TagHeader& header);
    TagOutcome state();
    TagOutcome fields(std::size_t length);
    TagOutcome service(const TagHeader& header);
    TagOutcome volume(const TagHeader& header);
    TagOutcome speed(const TagHeader& header);
    bool canWrite(const TagHeader& header) const;
    bool hasExtendedFields() const;
    void writeFields(const TagBlock& firstPage, std::span<const std::uint8_t> data);

    TagReader& reader_;
    std::uint8_t speedCode_ = 0;
};

} // namespace zel::sim
