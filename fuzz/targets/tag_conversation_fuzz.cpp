// SPDX-License-Identifier: MIT
// A proximity reader on USB that answers anything. An input is the operation, what is known of the
// reader, then its answers.
#include "fuzz/support/any_reader.h"
#include "fuzz/support/tag_reader.h"

using namespace zel::fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int operation = input.byte() % kTagOperations;
    const std::uint8_t known = input.byte();
    plugAnyReader(1, input);
    knowTag(known);
    const int result = runTag(operation);
    require(result == 0 || result == 1);
    requireSoundTag();
    return 0;
}
