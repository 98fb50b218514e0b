// SPDX-License-Identifier: MIT
// The system calls of the library's streams, answered from an input.
#include "fuzz/support/any_stream.h"

#include "fuzz/support/any_reader.h"
#include "transport/line_opener.h"
#include "transport/port.h"
#include "transport/tcp_socket.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace zel::fuzz {

namespace {

constexpr int kLine = 1 << 28; // no descriptor of the process
constexpr int kSocket = kLine + 1;
constexpr std::uint8_t kNothing = 255;

Input* stream = nullptr;
Input whole(nullptr, 0); // what `stream` began with
bool isEndless = false;
Datagrams datagrams = Datagrams::Go;

bool isOurs(int fd) { return fd == kLine || fd == kSocket; }

ssize_t nothing() {
    errno = EAGAIN;
    return -1;
}

ssize_t readLine(std::uint8_t* to, std::size_t size) {
    std::size_t count = stream->fill({to, size});
    while (isEndless && count < size && !whole.isEmpty()) {
        *stream = whole;
        count += stream->fill({to + count, size - count});
    }
    return static_cast<ssize_t>(count);
}

// Whether something came, and how much of it there is room for.
bool comes(std::size_t& size) {
    if (stream->isEmpty())
        return false;
    const std::uint8_t count = stream->byte();
    size = std::min<std::size_t>(size, count);
    return count != kNothing;
}

ssize_t receive(void* to, std::size_t size) {
    if (!comes(size))
        return nothing();
    return static_cast<ssize_t>(stream->fill({static_cast<std::uint8_t*>(to), size}));
}

ssize_t receiveFrom(void* to, std::size_t size, sockaddr* sender) {
    if (!comes(size))
        return nothing();
    sockaddr_in from = {};
    from.sin_family = AF_INET;
    stream->fill({reinterpret_cast<std::uint8_t*>(&from.sin_addr), sizeof from.sin_addr});
    std::memcpy(sender, &from, sizeof from);
    return static_cast<ssize_t>(stream->fill({static_cast<std::uint8_t*>(to), size}));
}

void answerWith(Input& answers, Coming coming) {
    stream = &answers;
    whole = answers;
    isEndless = coming == Coming::Forever;
}

tsDevDat& plug(std::uint32_t product, Input& answers, CPort& port) {
    tsDevDat& record = plugAnyReader(product, answers);
    record.hDev = reinterpret_cast<void*>(UINTPTR_MAX);
    record.iDevType = 1;
    record.pPort = &port;
    return record;
}

CPort& makeLine() {
    static CPort port;
    CPort_UseOpener([](const char*) { return kLine; });
    std::strcpy(LinuxDevPath[1], "/dev/any");
    return port;
}

CPort& makeSocket() {
    static CPort port;
    port.SetTcpIp(127, 0, 0, 1);
    port.SetPort(10001);
    return port;
}

} // namespace

tsDevDat& plugAnyLine(std::uint32_t product, Input& answers, Coming coming) {
    static CPort& port = makeLine();
    answerWith(answers, coming);
    socket_Close(); // else the line's object would talk to it
    if (!port.IsConn())
        require(port.Connect());
    return plug(product, answers, port);
}

tsDevDat& plugAnySocket(std::uint32_t product, Input& answers) {
    static CPort& port = makeSocket();
    answerWith(answers, Coming::Once);
    if (!socket_IsOpen())
        require(port.Connect());
    return plug(product, answers, port);
}

void answerDatagrams(Input& answers, Datagrams fate) {
    datagrams = fate;
    answerWith(answers, Coming::Once);
}

} // namespace zel::fuzz

using namespace zel::fuzz;

#define ZEL_WRAPPED(result, name, ...)                                                             \
    extern "C" result __real_##name(__VA_ARGS__);                                                  \
    extern "C" result __wrap_##name(__VA_ARGS__);                                                  \
    result __wrap_##name(__VA_ARGS__)

ZEL_WRAPPED(ssize_t, read, int fd, void* to, std::size_t size) {
    return isOurs(fd) ? readLine(static_cast<std::uint8_t*>(to), size) : __real_read(fd, to, size);
}

ZEL_WRAPPED(ssize_t, write, int fd, const void* from, std::size_t size) {
    return isOurs(fd) ? static_cast<ssize_t>(size) : __real_write(fd, from, size);
}

ZEL_WRAPPED(int, close, int fd) { return isOurs(fd) ? 0 : __real_close(fd); }

ZEL_WRAPPED(int, fcntl, int fd, int command, long argument) {
    return isOurs(fd) ? 0 : __real_fcntl(fd, command, argument);
}

ZEL_WRAPPED(int, tcgetattr, int fd, termios* settings) {
    if (!isOurs(fd))
        return __real_tcgetattr(fd, settings);
    *settings = {};
    return 0;
}

ZEL_WRAPPED(int, tcsetattr, int fd, int when, const termios* settings) {
    return isOurs(fd) ? 0 : __real_tcsetattr(fd, when, settings);
}

ZEL_WRAPPED(int, tcflush, int fd, int queue) { return isOurs(fd) ? 0 : __real_tcflush(fd, queue); }

ZEL_WRAPPED(int, tcdrain, int fd) { return isOurs(fd) ? 0 : __real_tcdrain(fd); }

ZEL_WRAPPED(int, socket, int, int, int) {
    return datagrams == Datagrams::HaveNoSocket ? -1 : kSocket;
}

ZEL_WRAPPED(int, connect, int, const sockaddr*, socklen_t) { return 0; }

ZEL_WRAPPED(int, setsockopt, int, int, int, const void*, socklen_t) { return 0; }

ZEL_WRAPPED(ssize_t, send, int, const void*, std::size_t size, int) {
    return static_cast<ssize_t>(size);
}

ZEL_WRAPPED(ssize_t, recv, int, void* to, std::size_t size, int) { return receive(to, size); }

ZEL_WRAPPED(ssize_t, sendto, int, const void*, std::size_t size, int, const sockaddr*, socklen_t) {
    return datagrams == Datagrams::GetLost ? -1 : static_cast<ssize_t>(size);
}

ZEL_WRAPPED(ssize_t, recvfrom, int, void* to, std::size_t size, int, sockaddr* sender, socklen_t*) {
    return receiveFrom(to, size, sender);
}
