// SPDX-License-Identifier: MIT
// Ownership of USB handles in the device table.
#include "transport/usb_handles.h"

#include "transport/usb_driver.h"

#include <algorithm>

namespace zel {

void closeHandle(tsDevDat& record) {
    void* const handle = record.hDev;
    if (handle == noHandle())
        return;
    UsbDriver_Close(handle);
    for (tsDevDat& other : DevDat)
        if (other.hDev == handle)
            other.hDev = nullptr;
    record.hDev = noHandle();
}

void replaceHandle(tsDevDat& record, void* handle) {
    void* const old = record.hDev;
    record.hDev = handle;
    const bool stillHeld = std::any_of(std::begin(DevDat), std::end(DevDat),
                                       [=](const tsDevDat& other) { return other.hDev == old; });
    if (!stillHeld)
        UsbDriver_Close(old);
}

} // namespace zel
