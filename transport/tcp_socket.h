// SPDX-License-Identifier: MIT
// The one TCP socket of the process, for whichever device was connected last.
#pragma once

#include "frame/zelTagExport.h"

#include <cstdint>

ZELTAGAPI_BEGIN

// Connects to a.b.c.d, closing what was open before. 0; -2 no socket; -3 no connection.
ZELTAGAPI_EXPORT int socket_Open(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d,
                                 std::uint16_t port);

// 0, also with no socket; else the result of closing, with the socket still open.
ZELTAGAPI_EXPORT int socket_Close(void);

ZELTAGAPI_EXPORT bool socket_IsOpen(void);

// Sends once, then sleeps 20 ms whatever came of it. The count of that one send, or -1.
ZELTAGAPI_EXPORT int socket_Send(const char* buffer, int size);

// Receives in five polls at most, 20 ms before each, until `size` bytes came; the rest is zero. The
// result isn't the total but the value of the last receive: the size of a reply that came in one
// piece, that of the last piece otherwise, and -1 when the last poll brought nothing.
ZELTAGAPI_EXPORT int socket_Recv(char* buffer, int size);

// GetMyIpAddress().
ZELTAGAPI_EXPORT std::int64_t socket_GetMyIP(void);

// FindXport(). Takes the socket's place: forgets one that was open, and leaves none.
ZELTAGAPI_EXPORT int socket_FindXport(int a, int b, int c, int first, int last);

ZELTAGAPI_END

namespace zel {

// Gives the process's socket another descriptor; the old one isn't closed.
void replaceSocket(int fd);

// For the connects that hold the socket without a device record of its own: closes it when
// tcpipUSBmode says that one holds it, and clears that mark.
void closeConnectSocket();

} // namespace zel
