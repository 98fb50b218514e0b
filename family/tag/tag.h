// SPDX-License-Identifier: MIT
// The proximity reader family: its exported operations. zeltag_USBDeviceConnect() stands in the
// public header. All but zeltag_Init(), zeltag_Exit() and zeltag_FoundDevice() work on the active
// record.
#pragma once

#include "frame/zelTagExport.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

// Start-up defaults of the family: InitLocalParms().
ZELTAGAPI_EXPORT void zeltag_Init(void);

// Closes all devices: USBDisconnect().
ZELTAGAPI_EXPORT void zeltag_Exit(void);

// InitUSBParms(), InitSerialParms(), the defaults of every record and of the transport search.
ZELTAGAPI_EXPORT void InitLocalParms(void);

// An empty table, no socket in use.
ZELTAGAPI_EXPORT void InitUSBParms(void);

// An empty table, the port ranges, no ASCII protocol, no status word.
ZELTAGAPI_EXPORT void InitSerialParms(void);

// Fills the record cbIndex for a USB reader and counts it. A device beyond the table is closed.
ZELTAGAPI_EXPORT void zeltag_FoundDevice(char* name, void* handle, int row);

// The family's part of USBConnect(): 1 when the table grew, else 0 with lLastCnctErr set.
ZELTAGAPI_EXPORT int zeltag_USBConnect(void);

// Makes the record that the next device takes fit for a line: its port object, number and speed.
// Nothing where the table is full.
ZELTAGAPI_EXPORT void zeltag_SetSerialPort(unsigned short port, unsigned int rate);

// Empties the table and takes the proximity readers that answer on the lines into it. 1 when there
// are some, and not as many as stood there before: the first record is then the active one, and
// `did` receives its device ID.
ZELTAGAPI_EXPORT int zeltag_ComConnect(int64_t* did);
ZELTAGAPI_EXPORT int zeltag_comConnect(void);

// The same on one line, with an empty table only.
ZELTAGAPI_EXPORT int zeltag_ComConnectPort(unsigned short port, int64_t* did);
ZELTAGAPI_EXPORT int zeltag_comConnectPort(unsigned short port);

// Closes the active device's line: 1, or 0 without one.
ZELTAGAPI_EXPORT int zeltag_ComDisconnect(void);

// Appends the readers behind network bridges: at one address, or with d 0 at those of the hosts 1
// to 254. First as byte streams, then, where none answers, as reports, which only answers where a
// record still holds a live USB handle. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_IPConnect(unsigned char a, unsigned char b, unsigned char c,
                                      unsigned char d, unsigned short port);
ZELTAGAPI_EXPORT int zeltag_IPConnect_Serial(unsigned char a, unsigned char b, unsigned char c,
                                             unsigned char d, unsigned short port);
ZELTAGAPI_EXPORT int zeltag_IPConnect_USBFR(unsigned char a, unsigned char b, unsigned char c,
                                            unsigned char d, unsigned short port);

// Tells of an arrival, see ChkAddArrival().
ZELTAGAPI_EXPORT int zeltag_ChkAddArrival(const char* name);

// Chooses the transports that a connect tries: 0, 1, 2 or 65535 (also given as -1). 1, or 0
// refused.
ZELTAGAPI_EXPORT int zeltag_SetDevTypeSrch(short type);

// The family's forms of the calls on the table. zeltag_SetActDev() never moves the index on
// failure.
ZELTAGAPI_EXPORT int zeltag_SetActDev(short device);
ZELTAGAPI_EXPORT int zeltag_GetActDev(void);
ZELTAGAPI_EXPORT int zeltag_GetDevCnt(void);

// A character of the active device's name as GetDevName() tells it; index 0 takes a fresh copy.
ZELTAGAPI_EXPORT int zeltag_getDevName_char(short index);

// Whether the reader answers the query of its LUID: 1 or 0.
ZELTAGAPI_EXPORT int zeltag_IsDevicePresent(void);

// The family's part of GetActiveID() and GetActiveID32(): the bit count, or 0 with lLastErr set.
ZELTAGAPI_EXPORT int zeltag_GetActiveID(unsigned char* buffer, short size);
ZELTAGAPI_EXPORT int zeltag_GetActiveID32(unsigned char* buffer, short size);

// The family's part of getActiveID() and its like: into activeIDBuf.
ZELTAGAPI_EXPORT int zeltag_getActiveID(short size);
ZELTAGAPI_EXPORT int zeltag_getActiveID32(short size);

// Clears the active record's list of card types.
ZELTAGAPI_EXPORT void zeltag_ZeroCardTypeListFromDevice(void);

ZELTAGAPI_END
