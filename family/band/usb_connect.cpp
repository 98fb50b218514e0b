// SPDX-License-Identifier: MIT
// Finds magnetic stripe readers on USB, where there are none on lines, and gives each a record.
#include "family/band/band.h"
#include "frame/state/state.h"
#include "transport/usb_identity.h"
#include "transport/usb_scan.h"

#include <algorithm>

using namespace zel;

namespace {

bool isOneOpen() {
    return std::any_of(DevDat, DevDat + std::clamp<int>(iDevsFnd, 0, kMaxDevices),
                       [](const tsDevDat& record) { return record.Band.bBandOpen != 0; });
}

} // namespace

void zelband_FoundDevice(char* name, void* handle, int row) {
    if (tsDevDat* const record = takeRecord(name, handle, row, kBand))
        record->Band.bBandOpen = 1;
}

intptr_t zelband_USBDeviceConnect(unsigned short vendor, unsigned short product,
                                  unsigned short* did) {
    return scanUsb(vendor, product, zelband_FoundDevice, did);
}

// Refuses while a found record belongs to such a reader already.
int zelband_USBConnect() {
    const int before = iDevsFnd;
    lLastCnctErr = 0;
    if (isOneOpen()) {
        lLastCnctErr |= kConnectFailed;
        return 0;
    }
    if (searchesUsb())
        zelband_USBDeviceConnect(kBandIdentity.vendor, kBandIdentity.product, nullptr);
    if (iDevsFnd == before && searchesLines() && !band::scanLines())
        lLastCnctErr |= kConnectFailed;
    return iDevsFnd > before ? 1 : 0;
}
