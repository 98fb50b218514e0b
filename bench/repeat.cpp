// SPDX-License-Identifier: MIT
// Goes one way a number of times: what an instruction counter watches.
#include "bench/ways.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments) {
    const zel::bench::Way* const way = count == 3 ? zel::bench::findWay(arguments[1]) : nullptr;
    if (!way || !way->begin()) {
        std::fputs("usage: bench_repeat WAY TIMES, where what the way needs is\n", stderr);
        return 1;
    }
    int result = 0;
    for (long left = std::strtol(arguments[2], nullptr, 10); left > 0; --left)
        result = way->once();
    way->end();
    std::printf("%d\n", result);
    return 0;
}
