// SPDX-License-Identifier: MIT
// Finds proximity readers behind network bridges and gives each a record.
#include "family/tag/tag.h"
#include "frame/zelTagAPI.h"
#include "transport/line_scan.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/tcp_socket.h"

#include <algorithm>
#include <cstdio>

using namespace zel;

namespace {

constexpr unsigned kBaud = 9600;
constexpr std::uint8_t kFirstHost = 1;
constexpr std::uint8_t kLastHost = 254;

// As the caller gave it; a last byte of 0 stands for all hosts of the network.
struct Bridge {
    std::uint8_t a, b, c, d;
    std::uint16_t port;
};

// The name tells the address as given, also where a scan found another host.
void fill(tsDevDat& record, const Bridge& bridge, std::uint8_t host) {
    const std::uint8_t address[] = {bridge.a, bridge.b, bridge.c, host};
    std::copy(std::begin(address), std::end(address), record.IPAddr);
    record.bTagOpen = 1;
    record.iProduct = kTag;
    const std::uint8_t* const mac = record.MACAddr;
    std::snprintf(record.szDevName, sizeof record.szDevName,
                  "MAC:%02X:%02X:%02X:%02X:%02X:%02X TCP/IP:%d.%d.%d.%d;Port:%d", mac[0], mac[1],
                  mac[2], mac[3], mac[4], mac[5], bridge.a, bridge.b, bridge.c, bridge.d,
                  bridge.port);
    ++iDevsFnd;
}

bool isPresent() {
    iActDev = iDevsFnd;
    return zeltag_IsDevicePresent() != 0;
}

void askMac(tsDevDat& record, const Bridge& bridge) {
    socket_GetMACAddress(bridge.a, bridge.b, bridge.c, bridge.d, record.MACAddr);
}

bool tryStream(tsDevDat& record, const Bridge& bridge, std::uint8_t host) {
    CPort* const stream = freshPort(record);
    if (!stream)
        return false;
    record.iDevType = 1;
    stream->SetTcpIp(bridge.a, bridge.b, bridge.c, host);
    stream->SetPort(bridge.port);
    stream->SetBaud(kBaud);
    stream->SetParity(0);
    stream->SetStopBits(0);
    stream->SetTimeoutFor_zelTag();
    askMac(record, bridge);
    if (!stream->Connect())
        return false;
    if (!isPresent()) {
        freePort(record);
        return false;
    }
    fill(record, bridge, host);
    return true;
}

// For a bridge that would carry reports. They go to the record's USB handle all the same, so only a
// handle that is still open answers. The address given is opened, not the host's.
bool tryReports(tsDevDat& record, const Bridge& bridge, std::uint8_t host) {
    freePort(record);
    record.iDevType = 0;
    tcpipUSBmode = true;
    askMac(record, bridge);
    if (socket_Open(bridge.a, bridge.b, bridge.c, bridge.d, bridge.port) != 0)
        return false;
    if (!isPresent()) {
        closeConnectSocket();
        return false;
    }
    fill(record, bridge, host);
    return true;
}

int scan(const Bridge& bridge, bool (*tryHost)(tsDevDat&, const Bridge&, std::uint8_t)) {
    const bool isOne = bridge.d != 0;
    bool found = false;
    for (int host = isOne ? bridge.d : kFirstHost; host <= (isOne ? bridge.d : kLastHost); ++host) {
        tsDevDat* const record = nextRecord();
        if (record && tryHost(*record, bridge, static_cast<std::uint8_t>(host)))
            found = true;
    }
    return found ? 1 : 0;
}

} // namespace

int zeltag_IPConnect_Serial(unsigned char a, unsigned char b, unsigned char c, unsigned char d,
                            unsigned short port) {
    return scan({a, b, c, d, port}, tryStream);
}

int zeltag_IPConnect_USBFR(unsigned char a, unsigned char b, unsigned char c, unsigned char d,
                           unsigned short port) {
    return scan({a, b, c, d, port}, tryReports);
}

int zeltag_IPConnect(unsigned char a, unsigned char b, unsigned char c, unsigned char d,
                     unsigned short port) {
    const int found = zeltag_IPConnect_Serial(a, b, c, d, port);
    return found != 0 ? found : zeltag_IPConnect_USBFR(a, b, c, d, port);
}
