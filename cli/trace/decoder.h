// SPDX-License-Identifier: MIT
// Turns the bytes between a host and one device into named messages with their secrets told.
//
// What is shown is told by lists of what is known to be harmless; everything else is secret.
#pragma once

#include "cli/trace/message.h"

#include <memory>

namespace zel::cli {

class Decoder {
public:
    Decoder() = default;
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
    virtual ~Decoder() = default;

    // What went out, and whether that went well.
    virtual Message sent(ByteView bytes, bool isTaken) = 0;

    // The whole answer to it; empty where none came.
    virtual Message received(ByteView bytes) = 0;

    // Whether a piece begins a message of its own behind the pieces sent so far.
    virtual bool beginsAnew(ByteView sent, ByteView piece) const = 0;
};

// By the families of sim/demo/names.h, as zelTagTrace.h tells products.
std::unique_ptr<Decoder> reportDecoder(int product, std::size_t reportSize);
std::unique_ptr<Decoder> streamDecoder();

} // namespace zel::cli
