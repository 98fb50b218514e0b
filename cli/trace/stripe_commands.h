// SPDX-License-Identifier: MIT
// Commands of a magnetic stripe reader and their replies, on USB and on a line.
#pragma once

#include "cli/trace/message.h"

namespace zel::cli {

// 24 bytes whose last one ends a line.
bool isStripeFrame(ByteView bytes);

// Keeps the command for its reply.
Message stripeCommand(ByteView bytes, std::string name, Bytes& command);
Message stripeReply(ByteView bytes, const Bytes& command);

} // namespace zel::cli
