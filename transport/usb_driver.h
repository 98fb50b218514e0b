// SPDX-License-Identifier: MIT
// USB HID devices by feature reports: enumerate, open, close, exchange.
//
// A report buffer is the report ID, then `length` bytes of payload. The `device` argument of the
// exchanges is ignored: both work on the handle of the active record.
#pragma once

#include "frame/zelTagExport.h"
#include "transport/usb_backend.h"

ZELTAGAPI_BEGIN

// Takes a found device: its name, its open handle, the matching row of the filter list or -1.
typedef void (*zelFoundDevice)(char* name, void* handle, int row);

// Starts the backend unless it runs. 1 ready, 0 not.
ZELTAGAPI_EXPORT int UsbDriver_Init(void);

// Stops the backend if it runs.
ZELTAGAPI_EXPORT void UsbDriver_Exit(void);

// Opens every proximity reader attached and hands each to `found`. Only the built-in vendor and
// product ID asks for any. Ends at the first reader that can't be opened. 1 when at least one was
// handed over and none failed.
ZELTAGAPI_EXPORT int UsbDriver_Generator(unsigned int vendor, unsigned int product,
                                         zelFoundDevice found);

// Closes a handle; 0 and all ones are nothing to close. Always 1.
ZELTAGAPI_EXPORT int UsbDriver_Close(void* handle);

// Opens nothing: handles come from the enumeration. Both always return 0.
ZELTAGAPI_EXPORT void* UsbDriver_CreateFile(const char* name);
ZELTAGAPI_EXPORT void* UsbDriver_tagAdv_CreateFile(const char* name);

// Claims every name as ours and leaves `out` alone. Always 1.
ZELTAGAPI_EXPORT int UsbDriver_IsDevOurs(const char* name, unsigned int vendor,
                                         unsigned int product, void* out);

// Sets one feature report, at most six times, with 80 ms after each failure. 1 sent, 0 gave up.
ZELTAGAPI_EXPORT int UsbDriver_SendFR(int length, int device, const unsigned char* buffer);

// Gets one feature report into buffer[1] onward, once. 1 received, 0 failed.
ZELTAGAPI_EXPORT int UsbDriver_RecvFR(int length, int device, unsigned char* buffer);

// The place where a reader that pushes data would be awaited. Returns 1 at once.
ZELTAGAPI_EXPORT int UsbDriver_WaitForData(void* handle, int length, unsigned char* buffer);

ZELTAGAPI_END
