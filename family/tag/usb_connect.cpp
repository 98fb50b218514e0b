// SPDX-License-Identifier: MIT
// Finds proximity readers on USB and gives each a record.
#include "family/tag/tag.h"
#include "frame/state.h"
#include "frame/zelTagAPI.h"
#include "transport/usb_driver.h"
#include "transport/usb_handles.h"

#include <cstring>
#include <iterator>

namespace {

constexpr int kTagAdvVendor = 0x5A3E;
constexpr int kTagAdvProduct = 0x9D22;
constexpr int kRows = std::size(decltype(zelTagVidPid.rows){});

bool isTagAdv(int row) {
    if (row < 0 || row >= kRows)
        return false;
    const tsVidPidRow& entry = zelTagVidPid.rows[row];
    return entry.vendor == kTagAdvVendor && entry.product == kTagAdvProduct;
}

bool isTableFull() {
    return cbIndex < 0 || cbIndex >= zel::kMaxDevices || iDevsFnd >= zel::kMaxDevices;
}

void setName(tsDevDat& record, const char* name) {
    std::strncpy(record.szDevName, name, sizeof record.szDevName - 1);
    record.szDevName[sizeof record.szDevName - 1] = '\0';
}

} // namespace

void zeltag_FoundDevice(char* name, void* handle, int row) {
    if (isTableFull()) {
        UsbDriver_Close(handle);
        return;
    }
    tsDevDat& record = DevDat[cbIndex];
    record.bTagOpen = 1;
    void* device = nullptr;
    if (isTagAdv(row)) {
        record.bTagAdv = 1;
        device = UsbDriver_tagAdv_CreateFile(name);
    } else {
        device = UsbDriver_CreateFile(name);
    }
    zel::replaceHandle(record, handle ? handle : device);
    record.iVidPidIdx = row;
    record.iProduct = zel::kTag;
    record.iDevType = 0;
    setName(record, name);
    ++cbIndex;
    ++iDevsFnd;
}

// The record that answers is the one after the first new device.
intptr_t zeltag_USBDeviceConnect(unsigned short vendor, unsigned short product,
                                 unsigned short* did) {
    const int before = cbIndex;
    UsbDriver_Generator(vendor, product, zeltag_FoundDevice);
    const int index = before + 1;
    if (!did || cbIndex <= before || index < 0 || index >= zel::kMaxDevices)
        return -1;
    tsDevDat& record = DevDat[index];
    *did = record.iDID;
    record.lLastErr = static_cast<std::int64_t>(lLastCnctErr);
    return reinterpret_cast<intptr_t>(record.hDev);
}
