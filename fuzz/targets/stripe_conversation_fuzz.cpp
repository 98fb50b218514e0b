// SPDX-License-Identifier: MIT
// A stripe reader on USB that answers anything. An input is the operation, then its answers.
#include "fuzz/support/any_reader.h"
#include "fuzz/support/stripe_reader.h"

using namespace zel::fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t way = input.byte();
    const tsDevDat& record = plugAnyReader(2, input);
    if ((way & 0x80) != 0)
        failFirstSend();
    const int result = runStripe((way & 0x3F) % kStripeOperations);
    require(result == 0 || result == 1);
    require(record.iProduct == 2 && record.Cfg[0].bCfgValid == 0);
    return 0;
}
