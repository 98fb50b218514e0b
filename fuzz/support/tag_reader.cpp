// SPDX-License-Identifier: MIT
// Operations of a proximity reader and what holds after each.
#include "fuzz/support/tag_reader.h"

#include "family/tag/card_data.h"
#include "family/tag/multi_config.h"
#include "family/tag/read_config.h"
#include "family/tag/services.h"
#include "family/tag/tag.h"
#include "family/tag/write_config.h"
#include "frame/zelTagState.h"
#include "fuzz/target.h"

#include <cstring>
#include <initializer_list>

namespace zel::fuzz {

namespace {

constexpr unsigned char kCanary = 0x5A;

int readId(int (*read)(unsigned char*, short)) {
    unsigned char id[33];
    std::memset(id, kCanary, sizeof id);
    const int bits = read(id, sizeof id - 1);
    require(id[sizeof id - 1] == kCanary && bits >= 0 && bits <= 255);
    return 1;
}

int readTexts() {
    for (const char* text :
         {zeltag_GetFWFilename(), zeltag_GetFullFWVersion(), zeltag_getPartNumberString()})
        require(!text || std::strlen(text) <= 8);
    zeltag_getESN();
    return 1;
}

int askServices() {
    for (int slot = -1; slot < 6; ++slot)
        zeltag_SendGetFirmwareVersion(slot + 1, slot);
    zeltag_GetFirmwareVersion(1, 1);
    zeltag_GetBeeperVolume();
    zeltag_GetBTLEConfiguration();
    zeltag_IsBTLEPresent();
    zeltag_ReadBaudRate();
    return zeltag_BeepNow(2, 1) & 1;
}

// Sub-command by sub-command, as a writer that changed all of it.
int writeAll() {
    tsDevDat& record = DevDat[0];
    tsTagCfg& config = record.Cfg[record.iActConfig % ZELTAGAPI_MAX_CONFIGS];
    config.bDirtyIDFrmt1 = config.bDirtyIDFrmt2 = config.bDirtyTime = 1;
    config.bDirtyExt = config.bDirtySepFld = record.bLUIDDirty = 1;
    config.sHashKeyData.key[0][0] = 1;
    config.uSFD.bytes[3] = record.bPartNumOK != 0 ? 2 : 17; // pages: as many as there are, or more
    return zeltag_WriteCfg();
}

int writeReference() {
    unsigned char reference[32] = {};
    require(zeltag_WriteSEKeyRefrence(nullptr, 1, 3) == 0);
    require(zeltag_WriteEV1FileRefrence(reference, -1) == 0);
    return zeltag_WriteSEKeyRefrence(reference, sizeof reference, 3) |
           zeltag_WriteEV1FileRefrence(reference, sizeof reference - 1);
}

// Buffers that hold less than an identifier, or aren't there.
int readShortId() {
    unsigned char id[5] = {0, 0, 0, 0, kCanary};
    zeltag_GetActiveID(id, sizeof id - 1);
    zeltag_GetActiveID32(id, sizeof id - 1);
    require(id[sizeof id - 1] == kCanary);
    return zeltag_GetActiveID(nullptr, 8) | zeltag_GetActiveID32(nullptr, 8);
}

int readOwnBuffers() {
    zeltag_getActiveID(8);
    zeltag_getActiveID32(-1);
    zeltag_getActiveCardData();
    for (const short index : std::initializer_list<short>{-1, 0, 255, 256})
        require(zeltag_getActiveCardData_byte(index) >= 0);
    return zeltag_GetQueuedID(0, 0);
}

int readOthers() {
    DevDat[0].bTagAdv = 1;
    zeltag_GetActiveID(nullptr, 0);
    for (short slot = -1; slot < 6; ++slot)
        zeltag_GetFirmwareVersion(slot, slot);
    zeltag_GetFirmwareVersion(1, 9);
    zeltag_WriteBaudRate(2);
    zeltag_BeepNow(0, 0);
    return WrtIDFrmtParms2(&DevDat[0].Cfg[0]) | PlusBlockMove(1, 2);
}

int readRaw() {
    for (short place = -1; place < 12; ++place)
        zeltag_SetRawPayload_index(place, 0x8E);
    for (short place = -1; place < 12; ++place)
        require(zeltag_GetRawPayload_index(place) >= 0);
    return 1;
}

} // namespace

int runTag(int operation) {
    switch (operation) {
    case 0:
        return readId(zeltag_GetActiveID);
    case 1:
        return readId(zeltag_GetActiveID32);
    case 2:
        return zeltag_ReadCfg();
    case 3:
        return writeAll();
    case 4:
        return zeltag_GetQueuedID(1, 1);
    case 5:
        return zeltag_getActiveCardData();
    case 6:
        return SendGetTagPlus();
    case 7:
        return zeltag_GetCardTypeListFromDevice();
    case 8:
        return readTexts();
    case 9:
        return askServices();
    case 10:
        return zeltag_ResetFactoryDflts();
    case 11:
        return writeReference();
    case 12:
        return PlusBlockMove(1, 2);
    case 13:
        return readRaw();
    case 15:
        return zeltag_IsDevicePresent();
    case 16:
        return readShortId();
    case 17:
        return readOwnBuffers();
    case 18:
        return readOthers();
    case 19:
        return SendSetTagPlus();
    default:
        return zeltag_SetBeeperVolume(2) & zeltag_SetBTLEConfiguration(1);
    }
}

void requireSoundTag() {
    const tsDevDat& record = DevDat[0];
    require(record.iMaxConfig < ZELTAGAPI_MAX_CONFIGS && record.CardTypeList[1024] == 0);
    require(record.iActConfig < ZELTAGAPI_MAX_CONFIGS && iDevsFnd == 1 && record.iProduct == 1);
}

void knowTag(unsigned char known) {
    tsDevDat& record = DevDat[0];
    record.iTagPlusState = known % 3;
    record.iMaxConfig = (known >> 2) % ZELTAGAPI_MAX_CONFIGS;
    record.bSepFldOK = record.bPartNumOK = known >> 7;
    record.Cfg[0].sTimeParms.ExFeatures01 = static_cast<short>(known << 1 & 0xC0);
}

} // namespace zel::fuzz
