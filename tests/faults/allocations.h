// SPDX-License-Identifier: MIT
// Memory that runs out: this program's own allocation functions, which fail on demand.
#pragma once

namespace zel::test {

// Within its scope the `nth` allocation fails, from 1, and so many of them behind each other.
class FailingAllocations {
public:
    FailingAllocations(int nth, int times);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    static int failures();
};

// Within its scope no block is counted and no allocation fails: it is that of a simulated device.
class Spared {
public:
    Spared();
    ~Spared();
    Spared(const Spared&) = delete;
    Spared& operator=(const Spared&) = delete;

private:
    long before_;
};

// Blocks that were allocated and not given back. Always 0 with a sanitizer, which looks itself.
long heldBlocks();

} // namespace zel::test
