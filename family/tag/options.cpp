// SPDX-License-Identifier: MIT
// Settings of a reader that stand outside the ten records.
#include "family/tag/services.h"
#include "frame/state/state.h"
#include "frame/zelTagLines.h"

using namespace zel;

namespace {

constexpr int kSecurityByte = 126; // of uSFD of configuration 0, whichever is active
constexpr int kSecurityBit = 0x80;

// Marks block 3, which carries two of these options; the other three go nowhere.
int store(std::uint32_t tsTagCfg::*option, short value) {
    tsTagCfg& config = activeConfig(activeRecord());
    config.*option = static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
    config.bDirtyExt = 1;
    return 1;
}

int load(std::uint32_t tsTagCfg::*option) {
    return static_cast<std::int16_t>(activeConfig(activeRecord()).*option);
}

} // namespace

int zeltag_GetEnhanceSecurityFlag() {
    return activeRecord().Cfg[0].uSFD.bytes[kSecurityByte] & kSecurityBit;
}

void zeltag_SetEnhanceSecurityFlag(short value) {
    tsTagCfg& config = activeRecord().Cfg[0];
    config.uSFD.bytes[kSecurityByte] = value != 0 ? kSecurityBit : 0;
    config.bDirtySepFld = 1;
}

int zeltag_SetAZERTYShiftLock(short value) { return store(&tsTagCfg::AZERTYShiftLock, value); }
int zeltag_GetAZERTYShiftLock() { return load(&tsTagCfg::AZERTYShiftLock); }

int zeltag_SetExtendedPrecisionMath(short value) {
    return store(&tsTagCfg::ExtendedPrecisionMath, value);
}
int zeltag_GetExtendedPrecisionMath() { return load(&tsTagCfg::ExtendedPrecisionMath); }

int zeltag_Set64BytesInPackets(short value) { return store(&tsTagCfg::b64BytesInPackets, value); }
int zeltag_Get64BytesInPackets() { return load(&tsTagCfg::b64BytesInPackets); }

int zeltag_SetEasyReadMode(short value) { return store(&tsTagCfg::bEasyReadMode, value); }
int zeltag_GetEasyReadMode() { return load(&tsTagCfg::bEasyReadMode); }

int zeltag_SetPrependCSN(short value) { return store(&tsTagCfg::bPrependCSN, value); }
int zeltag_GetPrependCSN() { return load(&tsTagCfg::bPrependCSN); }

int zeltag_UseAsciiCommandProtocol(short flag) {
    useACPMode = flag;
    return 1;
}
