// SPDX-License-Identifier: MIT
// Counts the feature reports of each way with settings: prints `way sends gets` lines.
#include "bench/plain_readers.h"
#include "bench/ways.h"

#include <cstdio>
#include <cstdlib>

using namespace zel::bench;

int main() {
    for (const Way& way : settingsWays()) {
        if (!way.begin())
            return EXIT_FAILURE;
        const ExchangeCount before = exchangeCount();
        const bool isDone = way.once() > 0;
        const ExchangeCount after = exchangeCount();
        way.end();
        if (!isDone)
            return EXIT_FAILURE;
        std::printf("%s %ld %ld\n", way.name, after.sends - before.sends, after.gets - before.gets);
    }
    return EXIT_SUCCESS;
}
