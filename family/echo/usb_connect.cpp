// SPDX-License-Identifier: MIT
// Finds presence sensors on USB and gives each a record.
#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "transport/usb_identity.h"
#include "transport/usb_scan.h"

using namespace zel;

void zelecho_FoundDevice(char* name, void* handle, int row) {
    if (tsDevDat* const record = takeRecord(name, handle, row, kEcho))
        record->Echo.bEchoOpen = 1;
}

intptr_t zelecho_USBDeviceConnect(unsigned short vendor, unsigned short product,
                                  unsigned short* did) {
    return scanUsb(vendor, product, zelecho_FoundDevice, did);
}

int zelecho_USBConnect() {
    const int before = iDevsFnd;
    lLastCnctErr = 0;
    if (searchesUsb())
        zelecho_USBDeviceConnect(kEchoIdentity.vendor, kEchoIdentity.product, nullptr);
    SetActDev(static_cast<short>(iDevsFnd - 1));
    return iDevsFnd > before ? 1 : 0;
}

int zelecho_usbConnect() { return zelecho_USBConnect(); }
