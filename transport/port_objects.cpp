// SPDX-License-Identifier: MIT
// Ownership of port objects in the device table.
#include "transport/port_objects.h"

#include "transport/port.h"

#include <new>

namespace zel {

CPort* freshPort(tsDevDat& record) {
    if (record.pPort)
        record.pPort->Disconnect();
    else
        record.pPort = new (std::nothrow) CPort;
    return record.pPort;
}

void freePort(tsDevDat& record) {
    CPort* const port = record.pPort;
    if (!port)
        return;
    port->Disconnect();
    for (tsDevDat& other : DevDat)
        if (other.pPort == port)
            other.pPort = nullptr;
    delete port;
}

} // namespace zel
