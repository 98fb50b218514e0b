// SPDX-License-Identifier: MIT
// The exported single operations of a reader.
#include "family/tag/services.h"
#include "base/text.h"
#include "base/text_by_character.h"
#include "family/band/band.h"
#include "frame/calls/dispatch.h"
#include "frame/state/lock.h"
#include "frame/zelTagAPI.h"

using namespace zel;

namespace {

constexpr int kUnknown = -1;
constexpr char kHidName[] = "linux";

} // namespace

int BeepNow(unsigned char code, short isLong) {
    const LibraryLock lock;
    return hasActiveDevice() ? forFamily(zeltag_BeepNow, zelband_BeepNow, nullptr, code, isLong)
                             : 0;
}

int SetBeeperVolume(unsigned char volume) { return forDevice(zeltag_SetBeeperVolume, volume); }

int GetBeeperVolume() { return forDeviceOr(kUnknown, zeltag_GetBeeperVolume); }

int SetBTLEConfiguration(unsigned char configuration) {
    return forDevice(zeltag_SetBTLEConfiguration, configuration);
}

int GetBTLEConfiguration() { return forDeviceOr(kUnknown, zeltag_GetBTLEConfiguration); }

int IsBTLEPresent() { return forDeviceOr(kUnknown, zeltag_IsBTLEPresent); }

int ReadBaudRate() { return forDeviceOr(kUnknown, zeltag_ReadBaudRate); }

int WriteBaudRate(unsigned char code) { return forDevice(zeltag_WriteBaudRate, code); }

void SetBaudRate(unsigned int rate) { defaultbaudrate = rate; }

// A magnetic stripe reader has its device ID and its version, as unit 0.
unsigned int GetFirmwareVersion(short unit, short slot) {
    const bool isBand = activeProduct() == kBand && unit == 0;
    if (isBand && slot == 0)
        return activeRecord().iDID;
    if (isBand && slot == 1)
        return activeRecord().iFWVer;
    return forTag(zeltag_GetFirmwareVersion, unit, slot);
}

char* GetFullFWVersion() { return hasActiveDevice() ? activeRecord().szFullFWVer : nullptr; }

char* GetFWFilename() { return hasActiveDevice() ? activeRecord().szFWFile : nullptr; }

char* getPartNumberString() { return hasActiveDevice() ? activeRecord().szPartNum : nullptr; }

int getPartNumberString_char(short index) {
    static constinit TextOut<sizeof(tsDevDat::szPartNum)> partNumber;
    if (!hasActiveDevice())
        return 0;
    return partNumber.at(index, [](auto& text) { copyText(text, activeRecord().szPartNum); });
}

unsigned char* getESN() {
    const bool served = hasActiveTag() && activeRecord().iDevType == 0;
    return served ? zeltag_getESN() : nullptr;
}

int GetEnhanceSecurityFlag() { return forTag(zeltag_GetEnhanceSecurityFlag); }

void SetEnhanceSecurityFlag(short value) {
    if (hasActiveTag())
        zeltag_SetEnhanceSecurityFlag(value);
}

int SetAZERTYShiftLock(short value) { return forTag(zeltag_SetAZERTYShiftLock, value); }
int GetAZERTYShiftLock() { return forTag(zeltag_GetAZERTYShiftLock); }

int SetExtendedPrecisionMath(short value) { return forTag(zeltag_SetExtendedPrecisionMath, value); }
int GetExtendedPrecisionMath() { return forTag(zeltag_GetExtendedPrecisionMath); }

int Set64BytesInPackets(short value) { return forTagOr(0, zeltag_Set64BytesInPackets, value); }
int Get64BytesInPackets() { return forTagOr(0, zeltag_Get64BytesInPackets); }

int SetEasyReadMode(short value) { return forTagOr(0, zeltag_SetEasyReadMode, value); }
int GetEasyReadMode() { return forTagOr(0, zeltag_GetEasyReadMode); }

int SetPrependCSN(short value) { return forTagOr(0, zeltag_SetPrependCSN, value); }
int GetPrependCSN() { return forTagOr(0, zeltag_GetPrependCSN); }

int WriteSEKeyRefrence(unsigned char* data, int length, int keyNumber) {
    return forDeviceOr(0, zeltag_WriteSEKeyRefrence, data, length, keyNumber);
}

int WriteEV1FileRefrence(unsigned char* data, int length) {
    return forDeviceOr(0, zeltag_WriteEV1FileRefrence, data, length);
}

int UseAsciiCommandProtocol(short flag) { return forTag(zeltag_UseAsciiCommandProtocol, flag); }

int GetHIDGuid(const char** name) {
    if (name)
        *name = kHidName;
    return 1;
}
