// SPDX-License-Identifier: MIT
// Finds proximity readers on serial lines and gives each a record.
#include "family/tag/tag.h"
#include "frame/zelTagAPI.h"
#include "transport/line_scan.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/serial_lines.h"
#include "transport/tcp_socket.h"

using namespace zel;

namespace {

// The record was made fit for the line, and its stream is open.
bool isPresent(tsDevDat& record, int port) {
    iActDev = iDevsFnd;
    if (!zeltag_IsDevicePresent()) {
        freePort(record);
        return false;
    }
    record.bTagOpen = 1;
    record.iProduct = kTag;
    nameAfterLine(record, port);
    ++iDevsFnd;
    return true;
}

// A line that can't be opened leaves its port object for the next one.
bool tryLine(int port) {
    CheckVirtualMap(port);
    tsDevDat* const record = nextRecord();
    if (!record)
        return false;
    zeltag_SetSerialPort(static_cast<unsigned short>(port), defaultbaudrate);
    return record->pPort && record->pPort->Connect() && isPresent(*record, port);
}

bool scan() {
    iDevsFnd = 0;
    iActDev = 0;
    prepareVirtualMap();
    bool found = false;
    for (int port = 1; port <= static_cast<int>(kMostPorts); ++port)
        if (isInSearchRange(port) && tryLine(port))
            found = true;
    return found;
}

} // namespace

void zeltag_SetSerialPort(unsigned short port, unsigned int rate) {
    tsDevDat* const record = nextRecord();
    CPort* const line = record ? freshPort(*record) : nullptr;
    if (!line)
        return;
    record->iDevType = 1;
    line->SetPort(port);
    line->SetBaud(rate);
    line->SetParity(0);
    line->SetStopBits(0);
    line->SetTimeoutFor_zelTag();
}

int zeltag_ComConnect(std::int64_t* did) { return connectLines(did, scan); }

int zeltag_comConnect() {
    std::int64_t did = 0;
    return zeltag_ComConnect(&did);
}

int zeltag_ComConnectPort(unsigned short port, std::int64_t* did) {
    return connectOneLine(port, did, zeltag_ComConnect);
}

int zeltag_comConnectPort(unsigned short port) {
    std::int64_t did = 0;
    return zeltag_ComConnectPort(port, &did);
}

int zeltag_ComDisconnect() {
    closeConnectSocket();
    CPort* const port = activeRecord().pPort;
    return port ? port->Disconnect() : 0;
}
