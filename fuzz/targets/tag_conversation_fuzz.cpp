// SPDX-License-Identifier: MIT
// A proximity reader on USB that answers anything. An input is the operation, what is known of the
// reader, then its answers.
#include "fuzz/support/any_reader.h"
#include "fuzz/support/tag_reader.h"

using namespace zel::fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t way = input.byte();
    const std::uint8_t known = input.byte();
    plugAnyReader(1, input);
    knowTag(known);
    if ((way & 0x80) != 0)
        failFirstSend();
    const int result = runTag((way & 0x3F) % kTagOperations);
    require(result == 0 || result == 1);
    requireSoundTag();
    return 0;
}
