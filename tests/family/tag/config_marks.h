// SPDX-License-Identifier: MIT
// What of configuration 0 of record 0 is marked to be written.
#pragma once

#include "frame/zelTagState.h"

namespace zel::test {

// As the bits of the commit.
inline unsigned marks() {
    const tsTagCfg& marked = DevDat[0].Cfg[0];
    return marked.bDirtyIDFrmt1 | marked.bDirtyTime << 1 | marked.bDirtyIDFrmt2 << 2 |
           marked.bDirtyExt << 3 | marked.bDirtySepFld << 5 | DevDat[0].bLUIDDirty << 7;
}

inline void markAll() {
    tsTagCfg& marked = DevDat[0].Cfg[0];
    marked.bDirtyIDFrmt1 = marked.bDirtyIDFrmt2 = marked.bDirtyTime = 1;
    marked.bDirtyExt = marked.bDirtySepFld = DevDat[0].bLUIDDirty = 1;
}

} // namespace zel::test
