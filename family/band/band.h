// SPDX-License-Identifier: MIT
// The magnetic stripe family: its exported operations.
#pragma once

#include "frame/zelTagExport.h"
#include "frame/zelTagRecords.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

// Defaults of every record: which field of which track is the active identifier.
ZELTAGAPI_EXPORT void zelband_Init(void);

// Closes all devices: USBDisconnect().
ZELTAGAPI_EXPORT void zelband_Exit(void);

// Fills the record cbIndex for a USB device and counts it. A device beyond the table is closed.
ZELTAGAPI_EXPORT void zelband_FoundDevice(char* name, void* handle, int row);

// Scans USB for the family's devices, as zeltag_USBDeviceConnect() does for its own; this transport
// finds none of this family.
ZELTAGAPI_EXPORT intptr_t zelband_USBDeviceConnect(unsigned short vendor, unsigned short product,
                                                   unsigned short* did);

// The family's part of USBConnect(): 1 when the table grew, else 0.
ZELTAGAPI_EXPORT int zelband_USBConnect(void);

// Whether the active reader answers, on a line after it was woken: 1 or 0.
ZELTAGAPI_EXPORT int zelband_IsDevicePresent(void);

// Appends the stripe readers that answer on the lines; a line that any record has a port object for
// is passed over. 1 when there is one: the first record is then the active one, and `did` receives
// its device ID.
ZELTAGAPI_EXPORT int zelband_ComConnect(int64_t* did);
ZELTAGAPI_EXPORT int zelband_comConnect(void);

// The same on one line, with an empty table only.
ZELTAGAPI_EXPORT int zelband_ComConnectPort(unsigned short port, int64_t* did);
ZELTAGAPI_EXPORT int zelband_comConnectPort(unsigned short port);

// Closes the active device's line: 1, or 0 without one.
ZELTAGAPI_EXPORT int zelband_ComDisconnect(void);

// The whole configuration: read, written with the flash command at the end, reset and read back.
ZELTAGAPI_EXPORT int zelband_ReadCfg(void);
ZELTAGAPI_EXPORT int zelband_WriteCfg(void);
ZELTAGAPI_EXPORT int zelband_ResetFactoryDflts(void);

// The family's forms of the public calls of the same names, see frame/zelTagBand.h and the others.
ZELTAGAPI_EXPORT int zelband_IsDataAvailable(void);
ZELTAGAPI_EXPORT int zelband_ClearDataAvailable(void);
ZELTAGAPI_EXPORT int zelband_ClearOverrun(void);
ZELTAGAPI_EXPORT char* zelband_GetTrackData(unsigned short track, short convert);
ZELTAGAPI_EXPORT unsigned char zelband_GetTrackData_BYTE(unsigned short track, short convert,
                                                         unsigned short index);
ZELTAGAPI_EXPORT char* zelband_GetTrackFieldOffset(unsigned short track, unsigned short field,
                                                   unsigned short offset, unsigned short length,
                                                   unsigned short terminator, short convert);
ZELTAGAPI_EXPORT int zelband_SetTrackEnables(unsigned short bits);
ZELTAGAPI_EXPORT int zelband_GetTrackEnables(void);

#define ZEL_flag(name, call)                                                                       \
    ZELTAGAPI_EXPORT int zelband_SetField##call(unsigned short field, short value);                \
    ZELTAGAPI_EXPORT int zelband_GetField##call(unsigned short field);
#define ZEL_byte(name, call)                                                                       \
    ZELTAGAPI_EXPORT int zelband_SetField##call(unsigned short field, unsigned short value);       \
    ZELTAGAPI_EXPORT int zelband_GetField##call(unsigned short field);
#define ZEL_FIELD(name, call, kind, most, comment) ZEL_##kind(name, call)
#include "frame/band_settings.def"
#undef ZEL_flag
#undef ZEL_byte
ZELTAGAPI_EXPORT int zelband_SetFieldKeydata(unsigned short field, unsigned short index,
                                             unsigned short value);
ZELTAGAPI_EXPORT int zelband_GetFieldKeydata(unsigned short field, unsigned short index);

ZELTAGAPI_EXPORT int zelband_SetActiveID(unsigned short track, unsigned short field,
                                         unsigned short offset, unsigned short terminator);
ZELTAGAPI_EXPORT int zelband_GetActiveID(unsigned char* buffer, short size);
ZELTAGAPI_EXPORT int zelband_GetActiveID32(unsigned char* buffer, short size);
ZELTAGAPI_EXPORT int zelband_getActiveID(short size);
ZELTAGAPI_EXPORT int zelband_getActiveID32(short size);
ZELTAGAPI_EXPORT int zelband_getActiveID_byte(short index);
ZELTAGAPI_EXPORT int zelband_GetQueuedID(short first, short second);
ZELTAGAPI_EXPORT int64_t zelband_GetQueuedID_index(short index);

// Of the queue: 0 asks the reader and tells the age, 1 tells a byte of the last answer.
ZELTAGAPI_EXPORT int64_t zelband_GetQueuedAge(unsigned short which);

ZELTAGAPI_EXPORT int64_t zelband_GetSystemUptime(void);
ZELTAGAPI_EXPORT int64_t zelband_GetSystemCardsRead(void);
ZELTAGAPI_EXPORT int zelband_GetSystemInternalCount(int index);

ZELTAGAPI_EXPORT int zelband_SetLED(unsigned short index, short colour);
ZELTAGAPI_EXPORT int zelband_GetLED(unsigned short index);
ZELTAGAPI_EXPORT int zelband_GetLEDCtrl(struct sLEDCtrl* record);
ZELTAGAPI_EXPORT int zelband_SetLEDCtrl(struct sLEDCtrl* record);
ZELTAGAPI_EXPORT int zelband_SetBeeper(unsigned short kind, unsigned short count, short isLong);
ZELTAGAPI_EXPORT int zelband_GetBeeper(unsigned short kind);
ZELTAGAPI_EXPORT int zelband_BeepNow(unsigned char count, short isLong);

ZELTAGAPI_EXPORT int zelband_GetFlags(struct sCfgFlags* record);
ZELTAGAPI_EXPORT int zelband_SetFlags(struct sCfgFlags* record);
ZELTAGAPI_EXPORT int zelband_GetTimeParms(struct sTimeParms* record);
ZELTAGAPI_EXPORT int zelband_SetTimeParms(struct sTimeParms* record);
ZELTAGAPI_EXPORT int zelband_getTimeParms_iUSBKeyPrsTm(void);
ZELTAGAPI_EXPORT int zelband_getTimeParms_iUSBKeyRlsTm(void);
ZELTAGAPI_EXPORT int zelband_setTimeParms_iUSBKeyPrsTm(short time);
ZELTAGAPI_EXPORT int zelband_setTimeParms_iUSBKeyRlsTm(short time);

ZELTAGAPI_EXPORT int zelband_SetRawPayload_index(short index, short value);
ZELTAGAPI_EXPORT int zelband_GetRawPayload_index(short index);

// Tells of an arrival or a removal, see ChkAddArrival().
ZELTAGAPI_EXPORT int zelband_ChkAddArrival(const char* name);
ZELTAGAPI_EXPORT int zelband_ChkDelRemoval(const char* name);

// A character of the active device's name as GetDevName() tells it; index 0 takes a fresh copy.
ZELTAGAPI_EXPORT int zelband_getDevName_char(short index);

ZELTAGAPI_END

namespace zel::band {

// The scan of zelband_ComConnect() alone: whether a reader answered.
bool scanLines();

} // namespace zel::band
