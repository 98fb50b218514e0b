// SPDX-License-Identifier: MIT
// Connect, send and receive on the process's one TCP socket.
#include "transport/tcp_socket.h"

#include "base/pause.h"
#include "frame/state/state.h"
#include "transport/ipv4.h"
#include "transport/observer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace zel;

namespace {

constexpr int kNoSocket = -2;
constexpr int kNoConnection = -3;
constexpr useconds_t kPause = 20'000; // µs, behind a send and before each receive
constexpr int kReceivePolls = 5;

constinit int theSocket = -1;
constinit char peer[sizeof "255.255.255.255:65535"] = "";

Observed exchange() {
    return {ZELTAGAPI_TRACE_TCP, peer, static_cast<int>(activeRecord().iProduct)};
}

// A peer that closed must not end the process by a signal: by a flag of the call where the platform
// has it, else by an option of the socket.
#ifdef MSG_NOSIGNAL
constexpr int kQuietly = MSG_NOSIGNAL;
void silence(int) {}
#else
constexpr int kQuietly = 0;
void silence(int fd) {
    const int on = 1;
    setsockopt(fd, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
}
#endif

// A connect that a signal interrupts goes on by itself.
bool finishConnect(int fd) {
    pollfd ready = {fd, POLLOUT, 0};
    while (poll(&ready, 1, -1) < 0 && errno == EINTR) {
    }
    int error = 0;
    socklen_t size = sizeof error;
    return getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

bool connectTo(int fd, const sockaddr_in& to) {
    if (connect(fd, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0)
        return true;
    return errno == EINTR && finishConnect(fd);
}

// A class byte and its header are two small sends: none waits for the answer to the other.
void prepare(int fd) {
    const int on = 1;
    setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    fcntl(fd, F_SETFD, FD_CLOEXEC);
    silence(fd);
}

} // namespace

void zel::replaceSocket(int fd) { theSocket = fd; }

void zel::closeConnectSocket() {
    if (tcpipUSBmode)
        socket_Close();
    tcpipUSBmode = false;
}

int socket_Open(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d,
                std::uint16_t port) {
    socket_Close();
    std::snprintf(peer, sizeof peer, "%u.%u.%u.%u:%u", a, b, c, d, port);
    Observed opening(ZELTAGAPI_TRACE_TCP, peer);
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    if (fd < 0)
        return kNoSocket;
    prepare(fd);
    if (!connectTo(fd, socketAddress({a, b, c, d}, port))) {
        close(fd);
        opening.tell(ZELTAGAPI_TRACE_OPEN, false);
        return kNoConnection;
    }
    fcntl(fd, F_SETFL, O_NONBLOCK);
    theSocket = fd;
    opening.tell(ZELTAGAPI_TRACE_OPEN, true);
    return 0;
}

int socket_Close() {
    if (theSocket == -1)
        return 0;
    Observed closing(ZELTAGAPI_TRACE_TCP, peer);
    const int result = close(theSocket);
    if (result == 0)
        theSocket = -1;
    closing.tell(ZELTAGAPI_TRACE_CLOSE, result == 0);
    return result;
}

bool socket_IsOpen() { return theSocket != -1; }

int socket_Send(const char* buffer, int size) {
    if (theSocket == -1 || size < 0)
        return 0;
    Observed sending = exchange();
    const ssize_t sent = send(theSocket, buffer, static_cast<std::size_t>(size), kQuietly);
    sending.tell(ZELTAGAPI_TRACE_SEND, sent == size, buffer, size);
    pauseFor(kPause);
    return static_cast<int>(sent);
}

int socket_Recv(char* buffer, int size) {
    if (theSocket == -1 || size < 0)
        return 0;
    Observed receiving = exchange();
    std::memset(buffer, 0, static_cast<std::size_t>(size));
    int total = 0;
    ssize_t last = 0;
    for (int poll = 0; poll < kReceivePolls && total < size; ++poll) {
        pauseFor(kPause);
        last = recv(theSocket, buffer + total, static_cast<std::size_t>(size - total), 0);
        total += last > 0 ? static_cast<int>(last) : 0;
    }
    receiving.tell(ZELTAGAPI_TRACE_RECEIVE, total > 0 || size == 0, buffer, total);
    return static_cast<int>(last);
}
