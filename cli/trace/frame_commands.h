// SPDX-License-Identifier: MIT
// Frames of a proximity reader on a byte stream: headers, data of a write, answers.
#pragma once

#include "cli/trace/message.h"

namespace zel::cli {

class FrameCommands {
public:
    // A class byte and what follows it.
    static bool isHeader(ByteView bytes);

    // Whether nothing more belongs to what was sent.
    bool isWhole(ByteView sent) const;

    // Whether these bytes are the data that a reader asked for.
    bool isData(ByteView bytes) const;

    Message sent(ByteView bytes);

    // The answer: procedure byte, data, status word, as far as they came.
    Message received(ByteView bytes);

private:
    bool answersHeader(ByteView bytes) const;

    Bytes header_;          // of the frame under way, behind the class byte
    bool asksData_ = false; // the procedure byte alone has come
    bool isLate_ = false;   // an answer that may hold secrets didn't come to its end
};

} // namespace zel::cli
