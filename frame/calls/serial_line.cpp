// SPDX-License-Identifier: MIT
// The exported calls on the line of the active device.
#include "base/data_by_byte.h"
#include "family/band/band.h"
#include "family/tag/tag.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"
#include "transport/port.h"

using namespace zel;

namespace {

// The open stream of the record that iActDev names, whether in use or not.
CPort* openStream(const void* buffer, unsigned size) {
    CPort* const port = activeRecord().pPort;
    return port && buffer && size != 0 && port->IsConn() ? port : nullptr;
}

} // namespace

int comConnect() {
    initialize();
    return forFamily(zeltag_comConnect, zelband_comConnect, nullptr);
}

int comConnectPort(unsigned short port) {
    return forFamily(zeltag_comConnectPort, zelband_comConnectPort, nullptr, port);
}

int ComDisconnect() { return forFamily(zeltag_ComDisconnect, zelband_ComDisconnect, nullptr); }

std::int64_t ReadSerialPort(unsigned char* buffer, unsigned int size) {
    CPort* const port = openStream(buffer, size);
    return port ? port->Read(reinterpret_cast<char*>(buffer), size) : 0;
}

std::int64_t WriteSerialPort(const unsigned char* buffer, unsigned int size) {
    CPort* const port = openStream(buffer, size);
    if (!port)
        return 0;
    const std::int64_t count = port->Write(reinterpret_cast<const char*>(buffer), size);
    port->FlushTx();
    return count;
}

std::int64_t QuickReadSerialPort(unsigned char* buffer, unsigned int size) {
    CPort* const port = openStream(buffer, size);
    return port ? port->QuickRead(reinterpret_cast<char*>(buffer), size) : 0;
}

int readSerialPort_char(short index) {
    static constinit DataByByte<1024> read;
    return read.at(index, ReadSerialPort);
}

int quickReadSerialPort_char(short index) {
    static constinit DataByByte<1024> read;
    return read.at(index, QuickReadSerialPort);
}

void SetSerialTimeouts(int, int, int) {}
