// SPDX-License-Identifier: MIT
// Closes every device and empties the table.
#include "family/tag/tag.h"
#include "frame/state/lock.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "transport/port_objects.h"
#include "transport/tcp_socket.h"
#include "transport/usb_handles.h"

using namespace zel;

namespace {

// What a record keeps: name, configuration, error word and all else not named here.
void release(tsDevDat& record) {
    startRecord(record);
    closeHandle(record);
    freePort(record);
    closeConnectSocket();
    settle(record.iProduct, kNoProduct);
}

} // namespace

int USBDisconnect() {
    const LibraryLock lock;
    for (tsDevDat& record : DevDat)
        release(record);
    freeAllPorts();
    iActDev = 0;
    iDevsFnd = 0;
    listIndex = 0;
    zeltag_ZeroCardTypeListFromDevice();
    return 1;
}
