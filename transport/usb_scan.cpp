// SPDX-License-Identifier: MIT
// Fills records of found USB devices.
#include "transport/usb_scan.h"

#include "base/text.h"
#include "transport/usb_handles.h"

namespace zel {

namespace {

bool isTableFull() { return cbIndex < 0 || cbIndex >= kMaxDevices || iDevsFnd >= kMaxDevices; }

} // namespace

tsDevDat* takeRecord(const char* name, void* handle, int row, Product product) {
    if (isTableFull()) {
        UsbDriver_Close(handle);
        return nullptr;
    }
    tsDevDat& record = DevDat[cbIndex];
    replaceHandle(record, handle ? handle : UsbDriver_CreateFile(name));
    record.iVidPidIdx = row;
    record.iProduct = product;
    record.iDevType = 0;
    copyText(record.szDevName, name);
    ++cbIndex;
    ++iDevsFnd;
    return &record;
}

std::intptr_t scanUsb(unsigned vendor, unsigned product, zelFoundDevice found,
                      unsigned short* did) {
    const int before = cbIndex;
    UsbDriver_Generator(vendor, product, found);
    const int index = before + 1;
    if (!did || cbIndex <= before || index < 0 || index >= kMaxDevices)
        return -1;
    tsDevDat& record = DevDat[index];
    *did = record.iDID;
    record.lLastErr = static_cast<std::int64_t>(lLastCnctErr);
    return reinterpret_cast<std::intptr_t>(record.hDev);
}

} // namespace zel
