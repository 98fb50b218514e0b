// SPDX-License-Identifier: MIT
// Finds proximity readers on USB and gives each a record.
#include "family/tag/tag.h"
#include "frame/state.h"
#include "frame/zelTagAPI.h"
#include "transport/found_devices.h"

#include <iterator>

using namespace zel;

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

} // namespace

// Neither kind is opened by its name on this transport; UsbDriver_tagAdv_CreateFile() would be the
// keyboard-less kind's way.
void zeltag_FoundDevice(char* name, void* handle, int row) {
    void* const device = !handle && isTagAdv(row) ? UsbDriver_tagAdv_CreateFile(name) : handle;
    tsDevDat* const record = takeRecord(name, device, row, kTag);
    if (!record)
        return;
    record->bTagOpen = 1;
    if (isTagAdv(row))
        record->bTagAdv = 1;
}

intptr_t zeltag_USBDeviceConnect(unsigned short vendor, unsigned short product,
                                 unsigned short* did) {
    return scanUsb(vendor, product, zeltag_FoundDevice, did);
}

int zeltag_USBConnect() {
    const int before = iDevsFnd;
    lLastCnctErr = 0;
    if (searchesUsb())
        zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, nullptr);
    if (iDevsFnd == before)
        return 0;
    activeRecord().iProduct = kTag;
    return 1;
}

int zeltag_SetDevTypeSrch(short type) {
    const auto search = static_cast<std::uint16_t>(type);
    if (search > kNetwork && search != kAllTransports)
        return 0;
    iCnctDevType = search;
    return 1;
}
