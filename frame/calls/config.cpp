// SPDX-License-Identifier: MIT
// The exported calls on a whole configuration.
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "family/tag/multi_config.h"
#include "family/tag/read_config.h"
#include "family/tag/write_config.h"
#include "frame/calls/dispatch.h"
#include "frame/state/lock.h"
#include "frame/zelTagAPI.h"

using namespace zel;

namespace {

// Stored sets of configurations.
constexpr int kCurrent = 1;
constexpr int kUser = 2;
constexpr int kFactory = 3;

} // namespace

int ReadCfg() {
    const LibraryLock lock;
    return hasActiveDevice() ? forFamily(zeltag_ReadCfg, zelband_ReadCfg, zelecho_ReadCfg) : 0;
}

int WriteCfg() {
    const LibraryLock lock;
    return hasActiveDevice() ? forFamily(zeltag_WriteCfg, zelband_WriteCfg, zelecho_WriteCfg) : 0;
}

int ResetFactoryDflts() {
    return forFamily(zeltag_ResetFactoryDflts, zelband_ResetFactoryDflts,
                     zelecho_ResetFactoryDflts);
}

int ResetUserDflts() {
    return activeProduct() == kEcho ? zelecho_ResetUserDflts()
                                    : forTag(PlusBlockMove, kUser, kCurrent);
}

int SaveUserDflts() {
    return activeProduct() == kEcho ? zelecho_SaveUserDflts()
                                    : forTag(PlusBlockMove, kCurrent, kUser);
}

int zelTagPlusDefaults() {
    forTag(PlusBlockMove, kFactory, kUser);
    return forTag(PlusBlockMove, kFactory, kCurrent);
}
