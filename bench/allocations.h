// SPDX-License-Identifier: MIT
// Counts what the process allocates, whichever library asks.
#pragma once

namespace zel::bench {

// Calls of malloc(), calloc(), realloc() and their aligned sisters so far; operator new makes them.
long allocationCount();

} // namespace zel::bench
