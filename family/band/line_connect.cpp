// SPDX-License-Identifier: MIT
// Finds magnetic stripe readers on serial lines and gives each a record.
#include "family/band/band.h"
#include "transport/line_scan.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/serial_lines.h"

#include <utility>

using namespace zel;

namespace {

constexpr unsigned kBaud = 9600;

bool isToBeTried(int port) {
    return !IsComPortInUse(port) && (isInSearchRange(port) || CheckVirtualMap(port) != 0);
}

bool isPresent(tsDevDat& record, int index) {
    const std::int16_t before = std::exchange(iActDev, static_cast<std::int16_t>(index));
    const bool answers = zelband_IsDevicePresent() != 0;
    if (!answers)
        freePort(record);
    iActDev = before;
    return answers;
}

// A line that can't be opened leaves its port object for the next one.
bool tryLine(CPort& line, tsDevDat& record, int port) {
    line.SetBaud(kBaud);
    line.SetParity(0);
    line.SetStopBits(0);
    line.SetTimeoutFor_zelBand();
    record.iDevType = 1;
    line.SetPort(static_cast<unsigned long>(port));
    return line.Connect() && isPresent(record, static_cast<int>(&record - DevDat));
}

// A line's name goes to record 0, whichever record takes the device.
void count(tsDevDat& record, int port) {
    record.iProduct = kBand;
    ++iDevsFnd;
    nameAfterLine(DevDat[0], port);
}

} // namespace

// Goes on behind the devices that stand in the table.
bool zel::band::scanLines() {
    prepareVirtualMap();
    bool found = false;
    for (int port = 1; port <= static_cast<int>(kMostPorts); ++port) {
        tsDevDat* const record = nextRecord();
        if (!record || !isToBeTried(port))
            continue;
        CPort* const line = freshPort(*record);
        if (!line)
            return false;
        if (tryLine(*line, *record, port)) {
            count(*record, port);
            found = true;
        }
    }
    return found;
}

int zelband_ComConnect(std::int64_t* did) { return connectLines(did, band::scanLines); }

int zelband_comConnect() {
    std::int64_t did = 0;
    return zelband_ComConnect(&did);
}

int zelband_ComConnectPort(unsigned short port, std::int64_t* did) {
    return connectOneLine(port, did, zelband_ComConnect);
}

int zelband_comConnectPort(unsigned short port) {
    std::int64_t did = 0;
    return zelband_ComConnectPort(port, &did);
}

int zelband_ComDisconnect() {
    CPort* const port = activeRecord().pPort;
    return port ? port->Disconnect() : 0;
}
