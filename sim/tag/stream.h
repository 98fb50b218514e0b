// SPDX-License-Identifier: MIT
// A simulated proximity reader on a byte stream: frames that begin with the class byte 0xFA, and
// lines of text.
#pragma once

#include "sim/tag/ascii_protocol.h"
#include "sim/tag/instructions.h"
#include "sim/wire/fault_queue.h"
#include "sim/wire/fixed_replies.h"
#include "sim/wire/stream_device.h"

#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <utility>
#include <vector>

namespace zel::sim {

// What goes wrong with a frame.
enum class StreamFault {
    None,
    Silence,            // it is lost: not carried out, no answer
    WrongProcedureByte, // refused: a status word where the procedure byte is due
    WrongStatus,        // carried out, all data delivered, and a status word of failure
    ShortData,          // carried out; the answer ends half-way
    Garbage,            // carried out; random bytes, as many as the answer has
};

// What a reader understands. The presence probe is answered by each of them.
enum class TagSpeech { Both, Frames, Lines };

class TagStream : public StreamDevice {
public:
    explicit TagStream(std::shared_ptr<TagReader> reader, TagSpeech speech = TagSpeech::Both);

    TagReader& reader() { return *reader_; }
    TagAsciiProtocol& lineProtocol() { return lineProtocol_; }

    // Frames whose header came whole, those that went wrong among them.
    int commands() const { return commands_; }

    // Lets the next `count` frames behind `after` good ones go wrong. What is asked for later
    // follows what was asked for before; None forgets all of it.
    void fail(StreamFault fault, int count = 1, int after = 0);

    // As WrongStatus and WrongProcedureByte, with a status word of the caller's. A form of answer
    // without a status word stays as it is.
    void replyStatus(std::uint8_t sw1, std::uint8_t sw2, int count = 1);
    void refuse(std::uint8_t sw1, std::uint8_t sw2, int count = 1);

    // Delivers this data to each frame whose bytes behind the class byte begin so, an unknown one
    // too; the last one counts.
    void replyWith(std::vector<std::uint8_t> header, std::vector<std::uint8_t> data) {
        fixedData_.add(std::move(header), std::move(data));
    }

    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override;
    void restart() override;

private:
    using Bytes = std::vector<std::uint8_t>;
    enum class State { Idle, Header, Data };
    struct Trouble {
        StreamFault fault = StreamFault::None;
        TagStatus status = kFailure;
    };

    Bytes take(std::uint8_t byte);
    Bytes takeIdle(std::uint8_t byte);
    Bytes takeHeader(std::uint8_t byte);
    Bytes takeData(std::uint8_t byte);
    Bytes answerHeader();
    Bytes finishWrite();
    Bytes answerOf(TagOutcome outcome);
    Bytes spoil(Bytes answer);
    bool understandsFrame() const;
    bool isHeaderWhole() const;
    TagOutcome outcome();

    std::shared_ptr<TagReader> reader_;
    TagInstructions instructions_;
    TagAsciiProtocol lineProtocol_;
    TagSpeech speech_;
    State state_ = State::Idle;
    Bytes bytes_; // of the header, then of the data
    TagHeader header_;
    Trouble trouble_; // of the frame under way
    FaultQueue<Trouble> troubles_;
    FixedReplies<Bytes, Bytes> fixedData_;
    std::mt19937 random_;
    int commands_ = 0;
};

} // namespace zel::sim
