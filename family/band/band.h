// SPDX-License-Identifier: MIT
// The magnetic stripe family: its exported operations.
#pragma once

#include "frame/zelTagExport.h"

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

// A character of the active device's name as GetDevName() tells it; index 0 takes a fresh copy.
ZELTAGAPI_EXPORT int zelband_getDevName_char(short index);

ZELTAGAPI_END

namespace zel::band {

// The scan of zelband_ComConnect() alone: whether a reader answered.
bool scanLines();

} // namespace zel::band
