// SPDX-License-Identifier: MIT
// Ownership of port objects in the device table.
#include "transport/port_objects.h"

#include "transport/port.h"

#include <new>

namespace zel {

namespace {

// A record is plain data and may be copied or overwritten, so the objects are kept here as well.
struct OwnedPort : CPort {
    OwnedPort* next = nullptr;
};
constinit OwnedPort* firstPort = nullptr;

CPort* makePort() {
    auto* const port = new (std::nothrow) OwnedPort;
    if (port) {
        port->next = firstPort;
        firstPort = port;
    }
    return port;
}

void forgetInRecords(const CPort* port) {
    for (tsDevDat& record : DevDat)
        if (record.pPort == port)
            record.pPort = nullptr;
}

void free(OwnedPort*& owned) {
    OwnedPort* const port = owned;
    owned = port->next;
    port->Disconnect();
    forgetInRecords(port);
    delete port;
}

} // namespace

CPort* freshPort(tsDevDat& record) {
    if (record.pPort)
        record.pPort->Disconnect();
    else
        record.pPort = makePort();
    return record.pPort;
}

void freePort(tsDevDat& record) {
    for (OwnedPort** owned = &firstPort; *owned; owned = &(*owned)->next)
        if (*owned == record.pPort)
            return free(*owned);
}

void freeAllPorts() {
    while (firstPort)
        free(firstPort);
}

} // namespace zel
