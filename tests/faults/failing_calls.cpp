// SPDX-License-Identifier: MIT
#include "tests/faults/failing_calls.h"

#include "tests/faults/allocations.h"

#include <climits>
#include <gtest/gtest.h>

namespace zel::test {

namespace {

#ifdef ZEL_SANITIZED
constexpr int kFewest = 0; // allocations of a call: libc's own aren't seen
#else
constexpr int kFewest = 1;
#endif

// Whether the call has so many allocations.
bool failNth(int nth, int times, const FailingCall& call, const Effect& effect,
             const std::string& wanted) {
    SCOPED_TRACE(std::to_string(nth) + (times > 1 ? " and all behind it" : ""));
    const long before = heldBlocks();
    int failures = 0;
    int result = 0;
    {
        const FailingAllocations failing(nth, times);
        result = call();
        failures = FailingAllocations::failures();
    }
    if (result == 1) {
        EXPECT_EQ(effect(), wanted) << "tells success";
    }
    EXPECT_EQ(call(), 1) << "the next call";
    EXPECT_EQ(effect(), wanted);
    EXPECT_EQ(heldBlocks(), before);
    return failures > 0;
}

} // namespace

void failEach(const FailingCall& call, const Effect& effect) {
    call(); // what is kept from the first one on
    EXPECT_EQ(call(), 1);
    const std::string wanted = effect();
    int nth = 0;
    for (const int times : {1, INT_MAX})
        for (nth = 1; failNth(nth, times, call, effect, wanted); ++nth) {
        }
    EXPECT_GT(nth, kFewest);
}

} // namespace zel::test
