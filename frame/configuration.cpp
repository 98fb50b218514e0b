// SPDX-License-Identifier: MIT
// The exported calls on a whole configuration and its records, as far as a product serves them.
#include "frame/lock.h"
#include "frame/state.h"
#include "frame/zelTagAPI.h"

using namespace zel;

int ReadCfg() {
    const LibraryLock lock;
    return hasActiveDevice() ? unsupportedValue() : 0;
}

int WriteCfg() {
    const LibraryLock lock;
    return hasActiveDevice() ? unsupportedValue() : 0;
}

int GetFlags2(struct sCfgFlags2*) { return unsupportedValue(); }
