// SPDX-License-Identifier: MIT
// The exported calls on the network.
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "transport/tcp_socket.h"

int SetIpPort(unsigned char a, unsigned char b, unsigned char c, unsigned char d,
              unsigned short port) {
    ipAdr0 = a;
    ipAdr1 = b;
    ipAdr2 = c;
    ipAdr3 = d;
    ipPortNum = port;
    return 1;
}

std::int64_t GetMyIpAddress() { return socket_GetMyIP(); }

int FindXport(unsigned short a, unsigned short b, unsigned short c, unsigned short first,
              unsigned short last) {
    return static_cast<std::int16_t>(socket_FindXport(a, b, c, first, last));
}
