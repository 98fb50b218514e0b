// SPDX-License-Identifier: MIT
// Preloaded into an application, gives it the demonstration reader in place of real devices:
//     LD_PRELOAD=libzelsim.so application
#include "sim/demo/bench.h"

#include <cstdio>

namespace {

__attribute__((constructor)) void installAtLoad() {
    if (!zel::sim::installDemo())
        std::fputs("zelsim: the library already holds a device; the simulator isn't in use\n",
                   stderr);
}

} // namespace
