// SPDX-License-Identifier: MIT
// A serial line, a socket and datagrams on whose other end somebody answers anything. The linker
// sends the library's system calls here, so that the kernel takes no part.
#pragma once

#include "frame/zelTagState.h"
#include "fuzz/target.h"

namespace zel::fuzz {

// How the bytes of an input come.
enum class Coming {
    Once,   // each byte once, then silence
    Forever // from the first byte again, without end
};

// Makes the record 0 of a cleared table a device of a product on a line. The input must live until
// the next call.
tsDevDat& plugAnyLine(std::uint32_t product, Input& answers, Coming coming);

// The same on a socket. In front of the bytes of each receive stands a byte that says how many they
// are; with 255 nothing came.
tsDevDat& plugAnySocket(std::uint32_t product, Input& answers);

enum class Datagrams { Go, GetLost, HaveNoSocket };

// For datagrams alone: behind the byte of their size stands the sender's address.
void answerDatagrams(Input& answers, Datagrams fate);

} // namespace zel::fuzz
