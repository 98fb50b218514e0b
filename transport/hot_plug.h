// SPDX-License-Identifier: MIT
// Keeps the device table in step with devices that arrive and leave.
//
// A record without a USB handle counts as a hole: also each one of a device on a byte stream. A
// record of an arrival holds the handle 0, which stands for no device and isn't a hole.
#pragma once

#include "frame/zelTagState.h"
#include "transport/usb_identity.h"

namespace zel {

// Adds a device by its name, which must be the prefix that tells the identity `named` and nothing
// more; the test whether the device is ours asks for `owned`. The fields that an arrival fills go
// to `filled`, or for null to the record that is added. 1 or 0.
int addArrival(const char* name, const UsbIdentity& named, const UsbIdentity& owned,
               tsDevDat* filled);

// Removes a device by its name in the table. 1 or 0.
int removeDevice(const char* name);

} // namespace zel

ZELTAGAPI_BEGIN

// Adds a record at the end, or, with `remove`, takes out the first record that holds a handle,
// whichever was passed. Then closes gaps, which shortens the table by one at most; device 0 becomes
// the active one. A null record only closes gaps. 1 when a record was added or removed.
ZELTAGAPI_EXPORT int ResetDevLst(tsDevDat* record, int remove);

ZELTAGAPI_END
