// SPDX-License-Identifier: MIT
// The records that this family shares with the proximity readers; they stand in configuration 0.
#include "family/band/band.h"
#include "frame/state/state.h"
#include "frame/zelTagErrors.h"
#include "frame/zelTagSettings.h"

using namespace zel;

namespace {

tsTagCfg& config() { return activeRecord().Cfg[0]; }

int succeed() {
    activeRecord().lLastErr = 0;
    return 1;
}

// Whether there is a record to work on; the error word tells if not.
bool begin(const void* record, std::int64_t base) {
    activeRecord().lLastErr = record ? base : base | ZELTAGAPI_ERR_NULL;
    return record != nullptr;
}

} // namespace

int zelband_GetFlags(sCfgFlags* record) {
    if (!begin(record, ZELTAGAPI_ERR_GET))
        return 0;
    *record = config().sCfgFlags;
    return succeed();
}

int zelband_SetFlags(sCfgFlags* record) {
    if (!begin(record, ZELTAGAPI_ERR_SET))
        return 0;
    config().sCfgFlags = *record;
    config().bDirtyIDFrmt1 = 1;
    return succeed();
}

int zelband_GetTimeParms(sTimeParms* record) {
    if (!begin(record, ZELTAGAPI_ERR_GET))
        return 0;
    *record = config().sTimeParms;
    return succeed();
}

int zelband_SetTimeParms(sTimeParms* record) {
    if (!begin(record, ZELTAGAPI_ERR_SET) || !CheckUserTimeParms(record, 0))
        return 0;
    const std::int16_t kept = config().sTimeParms.iTPCfgFlg3;
    config().sTimeParms = *record;
    config().sTimeParms.iTPCfgFlg3 = kept;
    config().bDirtyTime = 1;
    return succeed();
}

int zelband_getTimeParms_iUSBKeyPrsTm() {
    return static_cast<std::int16_t>(activeRecord().Band.KeyPressTime);
}

int zelband_getTimeParms_iUSBKeyRlsTm() {
    return static_cast<std::int16_t>(activeRecord().Band.KeyReleaseTime);
}

int zelband_setTimeParms_iUSBKeyPrsTm(short time) {
    activeRecord().Band.KeyPressTime = static_cast<std::uint16_t>(time);
    return 1;
}

int zelband_setTimeParms_iUSBKeyRlsTm(short time) {
    activeRecord().Band.KeyReleaseTime = static_cast<std::uint16_t>(time);
    return 1;
}
