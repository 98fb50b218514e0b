// SPDX-License-Identifier: MIT
// The presence sensor family: its exported operations.
#pragma once

#include "frame/zelTagEcho.h"
#include "frame/zelTagExport.h"
#include "frame/zelTagRecords.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

// An empty table, every record's sensor part cleared, all transports searched.
ZELTAGAPI_EXPORT void zelecho_Init(void);

// Does nothing.
ZELTAGAPI_EXPORT void zelecho_Exit(void);

// Fills the record cbIndex for a USB device and counts it. A device beyond the table is closed.
ZELTAGAPI_EXPORT void zelecho_FoundDevice(char* name, void* handle, int row);

// Scans USB for the family's devices, as zeltag_USBDeviceConnect() does for its own; this transport
// finds none of this family.
ZELTAGAPI_EXPORT intptr_t zelecho_USBDeviceConnect(unsigned short vendor, unsigned short product,
                                                   unsigned short* did);

// The family's part of USBConnect(): 1 when the table grew, else 0.
ZELTAGAPI_EXPORT int zelecho_USBConnect(void);

ZELTAGAPI_EXPORT int zelecho_usbConnect(void);

// The settings: read in six blocks of 250 ms each, then the IDs; written as far as they are marked,
// with a commit; factory and user defaults, each followed by 2 s and a read. 1 or 0.
ZELTAGAPI_EXPORT int zelecho_ReadCfg(void);
ZELTAGAPI_EXPORT int zelecho_WriteCfg(void);
ZELTAGAPI_EXPORT int zelecho_ResetFactoryDflts(void);
ZELTAGAPI_EXPORT int zelecho_ResetUserDflts(void);
ZELTAGAPI_EXPORT int zelecho_SaveUserDflts(void);

// The family's forms of the public calls of the same names, see frame/zelTagEcho.h.
ZELTAGAPI_EXPORT int zelecho_GetSonarParms(struct sSonarParms* record);
ZELTAGAPI_EXPORT int zelecho_SetSonarParms(struct sSonarParms* record);
ZELTAGAPI_EXPORT int zelecho_GetWalkAwayParms(struct sWalkAwayParms* record);
ZELTAGAPI_EXPORT int zelecho_SetWalkAwayParms(struct sWalkAwayParms* record);
ZELTAGAPI_EXPORT int zelecho_GetWalkUpParms(struct sWalkUpParms* record);
ZELTAGAPI_EXPORT int zelecho_SetWalkUpParms(struct sWalkUpParms* record);
ZELTAGAPI_EXPORT int zelecho_GetIdleParms(struct sIdleParms* record);
ZELTAGAPI_EXPORT int zelecho_SetIdleParms(struct sIdleParms* record);
ZELTAGAPI_EXPORT int zelecho_GetObjRangeInfo(struct sRangeInfo* record);
ZELTAGAPI_EXPORT int zelecho_HaltKBSends(int halt);

// Checks of the records. With fix 0 the first word out of range ORs its code into the active
// device's error word; the result is 0. With another fix such words are repaired and it is 1.
ZELTAGAPI_EXPORT int CheckSonarParms(struct sSonarParms* record, int fix);
ZELTAGAPI_EXPORT int CheckWalkAwayParms(struct sWalkAwayParms* record, int fix);
ZELTAGAPI_EXPORT int CheckWalkUpParms(struct sWalkUpParms* record, int fix);
ZELTAGAPI_EXPORT int CheckIdleParms(struct sIdleParms* record, int fix);

// bHaltKBSnd as the last halt command; the exported GetFlags() and SetFlags() don't come here.
ZELTAGAPI_EXPORT int zelecho_GetFlags(struct sCfgFlags* record);
ZELTAGAPI_EXPORT int zelecho_SetFlags(struct sCfgFlags* record);

// In place of an identifier: whether somebody is there, the distance, the LUID. Always 4.
ZELTAGAPI_EXPORT int zelecho_GetActiveID(unsigned char* buffer, short size);
ZELTAGAPI_EXPORT int zelecho_GetActiveID32(unsigned char* buffer, short size);

// A sensor has none of these: 0.
ZELTAGAPI_EXPORT int zelecho_getActiveID(short size);
ZELTAGAPI_EXPORT int zelecho_getActiveID32(short size);
ZELTAGAPI_EXPORT int zelecho_getActiveID_byte(short index);
ZELTAGAPI_EXPORT int zelecho_SetRawPayload_index(short index, short value);
ZELTAGAPI_EXPORT int zelecho_GetRawPayload_index(short index);
ZELTAGAPI_EXPORT int zelecho_GetQueuedID(short first, short second);
ZELTAGAPI_EXPORT int64_t zelecho_GetQueuedID_index(short index);
ZELTAGAPI_EXPORT int zelecho_GetTimeParms(struct sTimeParms* record);
ZELTAGAPI_EXPORT int zelecho_SetTimeParms(struct sTimeParms* record);

// Tells of an arrival, whose name goes to record 0, or of a removal; see ChkAddArrival().
ZELTAGAPI_EXPORT int zelecho_ChkAddArrival(const char* name);
ZELTAGAPI_EXPORT int zelEchoChkDelRemoval(const char* name);

// LEDFlagsS of the active record, whatever its product, sign-extended; -1 with no active device.
ZELTAGAPI_EXPORT int zelecho_GetLEDCtrl(void);

// Stores LEDFlagsS there and marks nothing for writing. The flags, or 0 with no active device.
ZELTAGAPI_EXPORT int zelecho_SetLEDCtrl(short flags);

ZELTAGAPI_END
