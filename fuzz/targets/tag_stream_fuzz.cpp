// SPDX-License-Identifier: MIT
// A proximity reader on a line or a socket that answers anything, frame by frame. An input is the
// operation and the transport, what is known of the reader, then what comes; without it there is no
// stream at all.
#include "fuzz/support/any_stream.h"
#include "fuzz/support/tag_reader.h"

using namespace zel::fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t way = input.byte();
    const std::uint8_t known = input.byte();
    useACPMode = 0;
    if ((way & 0x80) != 0)
        plugAnySocket(1, input);
    else
        plugAnyLine(1, input, (way & 0x40) != 0 ? Coming::Forever : Coming::Once);
    knowTag(known);
    if (input.isEmpty())
        DevDat[0].pPort = nullptr;
    const int result = runTag((way & 0x3F) % kTagOperations);
    require(result == 0 || result == 1);
    requireSoundTag();
    return 0;
}
