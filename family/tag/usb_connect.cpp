// SPDX-License-Identifier: MIT
// Finds proximity readers on USB and gives each a record; then the family's whole search.
#include "family/tag/tag.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "transport/tcp_socket.h"
#include "transport/usb_identity.h"
#include "transport/usb_scan.h"

#include <iterator>

using namespace zel;

namespace {

constexpr int kRows = std::size(decltype(zelTagVidPid.rows){});

bool isTagAdv(int row) {
    if (row < 0 || row >= kRows)
        return false;
    const tsVidPidRow& entry = zelTagVidPid.rows[row];
    return entry.vendor == kTagAdvIdentity.vendor && entry.product == kTagAdvIdentity.product;
}

// No row of the device filter list stands for a reader on the network.
bool connectNetwork() {
    if (!zeltag_IPConnect(ipAdr0, ipAdr1, ipAdr2, ipAdr3, ipPortNum))
        return false;
    activeRecord().iProduct = kTag;
    activeRecord().iVidPidIdx = -1;
    return true;
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
    closeConnectSocket();
    lLastCnctErr = 0;
    if (searchesUsb())
        zeltag_USBDeviceConnect(kTagIdentity.vendor, kTagIdentity.product, nullptr);
    if (iDevsFnd == before && searchesLines() && !zeltag_comConnect())
        lLastCnctErr |= kConnectFailed;
    if (iDevsFnd == before && searchesNetwork() && !connectNetwork())
        return 0;
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
