// SPDX-License-Identifier: MIT
// Closes USB handles once, however many records of the device table hold them.
#pragma once

#include "frame/state/state.h"

namespace zel {

// Closes the record's handle, if any. Other records that hold it hold 0 from then on, which stands
// for no device and is never closed.
void closeHandle(tsDevDat& record);

// Gives the record a handle. One that it held before is closed unless another record holds it too.
void replaceHandle(tsDevDat& record, void* handle);

} // namespace zel
