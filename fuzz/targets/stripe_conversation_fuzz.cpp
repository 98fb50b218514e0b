// SPDX-License-Identifier: MIT
// A stripe reader on USB that answers anything. An input is the operation, then its answers.
#include "fuzz/support/any_reader.h"
#include "fuzz/support/stripe_reader.h"

using namespace zel::fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int operation = input.byte() % kStripeOperations;
    const tsDevDat& record = plugAnyReader(2, input);
    const int result = runStripe(operation);
    require(result == 0 || result == 1);
    require(record.iProduct == 2 && record.Cfg[0].bCfgValid == 0);
    return 0;
}
