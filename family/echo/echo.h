// SPDX-License-Identifier: MIT
// The presence sensor family: its exported operations.
#pragma once

#include "frame/zelTagExport.h"

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

// LEDFlagsS of the active record, whatever its product, sign-extended; -1 with no active device.
ZELTAGAPI_EXPORT int zelecho_GetLEDCtrl(void);

// Stores LEDFlagsS there and marks nothing for writing. The flags, or 0 with no active device.
ZELTAGAPI_EXPORT int zelecho_SetLEDCtrl(short flags);

ZELTAGAPI_END
