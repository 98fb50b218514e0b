// SPDX-License-Identifier: MIT
// Identifiers to read, and where they go.
#pragma once

#include "tests/steps/sights.h"

namespace zel::test::steps {

// The caller's buffer and the library's own one, filled with what isn't an identifier.
void prepareId();

// A queued identifier's pages, its age and the words about it, and activeIDBuf; and a reader that
// holds one.
extern const std::vector<Sight> kQueuedSights;
void prepareQueued();

} // namespace zel::test::steps
