// SPDX-License-Identifier: MIT
// Lines of text of a proximity reader: commands and answers.
#pragma once

#include "cli/trace/message.h"

namespace zel::cli {

// Whether these are commands of the ASCII protocol.
bool areLines(ByteView bytes);

// Sent or received: what isn't known to be settings is secret, but for the ends of lines.
Message messageOfLines(ByteView bytes);

} // namespace zel::cli
