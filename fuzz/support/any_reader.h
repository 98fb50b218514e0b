// SPDX-License-Identifier: MIT
// A reader on USB that answers anything: the bytes of an input, one answer behind the other.
//
// In front of each answer stands a byte that says what becomes of it:
//   0        it comes whole
//   1..127   it comes cut to so many bytes
//   128..254 it comes whole; of the reports behind it 1 to 8 aren't sent (low three bits)
//   255      it doesn't come, and has no bytes
// Behind the end of the input nothing comes any more.
#pragma once

#include "frame/zelTagState.h"
#include "fuzz/target.h"

namespace zel::fuzz {

// Makes the record 0 of a cleared table a device of a product that answers with an input.
// The input must live until the next call.
tsDevDat& plugAnyReader(std::uint32_t product, Input& answers);

// Of the reports from here on one isn't sent, however often it is tried, and the next one is late.
void failFirstSend();

} // namespace zel::fuzz
