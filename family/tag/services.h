// SPDX-License-Identifier: MIT
// Single operations of a reader beside its configuration. The exported calls of the same names
// without the prefix tell what each does; a text is good until the next call of the same operation.
#pragma once

#include "frame/zelTagExport.h"

namespace zel::tag {

// Units and slots of FWVerTbl that hold versions.
constexpr int kFirmwareUnits = 3;
constexpr int kFirmwareSlots = 5;

} // namespace zel::tag

ZELTAGAPI_BEGIN

// Whether the reader commits fast: a reader of two or four configurations, or one that tells its
// beeper volume. Asks for the volume first in any case.
ZELTAGAPI_EXPORT int IsFastWriteReader(void);

ZELTAGAPI_EXPORT int zeltag_BeepNow(unsigned char code, short isLong);
ZELTAGAPI_EXPORT int zeltag_SetBeeperVolume(unsigned char volume);
ZELTAGAPI_EXPORT int zeltag_GetBeeperVolume(void);
ZELTAGAPI_EXPORT int zeltag_SetBTLEConfiguration(unsigned char configuration);
ZELTAGAPI_EXPORT int zeltag_GetBTLEConfiguration(void);
ZELTAGAPI_EXPORT int zeltag_IsBTLEPresent(void);
ZELTAGAPI_EXPORT int zeltag_ReadBaudRate(void);
ZELTAGAPI_EXPORT int zeltag_WriteBaudRate(unsigned char code);

// Asks a multi-configuration reader for a version word and keeps it in FWVerTbl; 0 for none.
ZELTAGAPI_EXPORT unsigned int zeltag_SendGetFirmwareVersion(int unit, int slot);
ZELTAGAPI_EXPORT unsigned int zeltag_GetFirmwareVersion(short unit, short slot);
ZELTAGAPI_EXPORT char* zeltag_GetFWFilename(void);
ZELTAGAPI_EXPORT char* zeltag_GetFullFWVersion(void);
ZELTAGAPI_EXPORT char* zeltag_getPartNumberString(void);
ZELTAGAPI_EXPORT unsigned char* zeltag_getESN(void);

ZELTAGAPI_EXPORT int zeltag_GetEnhanceSecurityFlag(void);
ZELTAGAPI_EXPORT void zeltag_SetEnhanceSecurityFlag(short value);
ZELTAGAPI_EXPORT int zeltag_SetAZERTYShiftLock(short value);
ZELTAGAPI_EXPORT int zeltag_GetAZERTYShiftLock(void);
ZELTAGAPI_EXPORT int zeltag_SetExtendedPrecisionMath(short value);
ZELTAGAPI_EXPORT int zeltag_GetExtendedPrecisionMath(void);
ZELTAGAPI_EXPORT int zeltag_Set64BytesInPackets(short value);
ZELTAGAPI_EXPORT int zeltag_Get64BytesInPackets(void);
ZELTAGAPI_EXPORT int zeltag_SetEasyReadMode(short value);
ZELTAGAPI_EXPORT int zeltag_GetEasyReadMode(void);
ZELTAGAPI_EXPORT int zeltag_SetPrependCSN(short value);
ZELTAGAPI_EXPORT int zeltag_GetPrependCSN(void);

ZELTAGAPI_EXPORT int zeltag_WriteSEKeyRefrence(unsigned char* data, int length, int keyNumber);
ZELTAGAPI_EXPORT int zeltag_WriteEV1FileRefrence(unsigned char* data, int length);

ZELTAGAPI_END
