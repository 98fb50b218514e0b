// SPDX-License-Identifier: MIT
// The file-scope state behind frame/state/state.h and the rules for touching the device table.
#include "frame/state/state.h"

#include "frame/state/device_table.h"

#include <algorithm>
#include <atomic>
#include <iterator>

namespace zel {

namespace {
constinit std::int16_t gUnsupportedErr = 0;
constinit std::uint32_t gConnectProduct = UINT32_MAX;
constinit std::int32_t iLastIDBits = 0;
constinit std::atomic<bool> disconnectRequested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");
} // namespace

bool hasActiveDevice() { return iActDev >= 0 && iActDev < iDevsFnd && iActDev < kMaxDevices; }

std::uint32_t activeProduct() {
    return hasActiveDevice() ? activeRecord().iProduct : std::uint32_t{kNoProduct};
}

tsDevDat& activeRecord() {
    const int index = iActDev;
    return DevDat[index >= 0 && index < kMaxDevices ? index : 0];
}

const tsTagCfg& activeConfig(const tsDevDat& record) {
    return record.Cfg[record.iActConfig < ZELTAGAPI_MAX_CONFIGS ? record.iActConfig : 0];
}

tsTagCfg& activeConfig(tsDevDat& record) {
    return const_cast<tsTagCfg&>(activeConfig(static_cast<const tsDevDat&>(record)));
}

void requestDisconnect() {
    iDevsFnd = 0;
    disconnectRequested = true;
}

bool takeDisconnectRequest() { return disconnectRequested.exchange(false); }

std::int16_t unsupportedValue() { return gUnsupportedErr; }
void setUnsupportedValue(std::int16_t value) { gUnsupportedErr = value; }

std::uint32_t connectProducts() { return gConnectProduct; }
void setConnectProducts(std::uint32_t mask) { gConnectProduct = mask; }

std::int32_t lastIdBits() { return iLastIDBits; }
void setLastIdBits(std::int32_t bits) { iLastIDBits = bits; }

std::int64_t queuedElement(const tsQueuedID& queued, int index) {
    if (index >= 0 && index < ZELTAGAPI_ID_SIZE)
        return queued.id[index];
    switch (index) {
    case 32:
        return queued.word40;
    case 33:
        return static_cast<std::int64_t>(queued.age);
    case 34:
        return queued.byte42;
    case 35:
        return queued.byte43;
    default:
        return 0;
    }
}

void startRecord(tsDevDat& record) {
    settle(record.bSepFldOK, 1);
    settle(record.bPartNumOK, 1);
    settle(record.bTagOpen, 0);
    settle(record.iTagPlusState, 0);
    settle(record.bTagAdv, 0);
}

void clearTable() { std::fill(std::begin(DevDat), std::end(DevDat), zelStartingRecord); }

} // namespace zel
