// SPDX-License-Identifier: MIT
// Sockets by the system's calls that every platform has.
#include "sim/bridge/socket.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zel::sim {

namespace {

// Where a send can't be told to raise no signal, the socket can.
#ifdef MSG_NOSIGNAL
constexpr int kNoSignal = MSG_NOSIGNAL;
#else
constexpr int kNoSignal = 0;
#endif

void setOption(int descriptor, int level, int option) {
    const int on = 1;
    setsockopt(descriptor, level, option, &on, sizeof on);
}

sockaddr_in asSystemAddress(const Ipv4Address& address, std::uint16_t port) {
    sockaddr_in system = {};
    system.sin_family = AF_INET;
    system.sin_port = htons(port);
    static_assert(sizeof system.sin_addr == sizeof address);
    std::memcpy(&system.sin_addr, address.data(), address.size());
    return system;
}

} // namespace

Socket::Socket(int descriptor) : descriptor_(descriptor) {
    if (!isOpen())
        return;
    fcntl(descriptor_, F_SETFD, FD_CLOEXEC);
    fcntl(descriptor_, F_SETFL, O_NONBLOCK);
#ifdef SO_NOSIGPIPE
    setOption(descriptor_, SOL_SOCKET, SO_NOSIGPIPE);
#endif
}

Socket& Socket::operator=(Socket&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

Socket Socket::bound(Kind kind, const Ipv4Address& address, std::uint16_t port) {
    Socket made(::socket(AF_INET, kind == Kind::Stream ? SOCK_STREAM : SOCK_DGRAM, 0));
    if (!made.isOpen())
        return made;
    if (kind == Kind::Stream) // a port whose last connection has just ended can be had again
        setOption(made.descriptor_, SOL_SOCKET, SO_REUSEADDR);
    const sockaddr_in system = asSystemAddress(address, port);
    if (bind(made.descriptor_, reinterpret_cast<const sockaddr*>(&system), sizeof system) != 0)
        made.close();
    return made;
}

std::uint16_t Socket::port() const {
    sockaddr_in system = {};
    socklen_t size = sizeof system;
    getsockname(descriptor_, reinterpret_cast<sockaddr*>(&system), &size);
    return ntohs(system.sin_port);
}

bool Socket::hasSomething() const {
    pollfd end = {descriptor_, POLLIN, 0};
    return poll(&end, 1, 0) > 0;
}

bool Socket::listen() const { return ::listen(descriptor_, SOMAXCONN) == 0; }

Socket Socket::accept() const {
    Socket client(::accept(descriptor_, nullptr, nullptr));
    if (client.isOpen()) // bytes that trickle aren't gathered
        setOption(client.descriptor_, IPPROTO_TCP, TCP_NODELAY);
    return client;
}

ssize_t Socket::receive(std::span<std::uint8_t> room) const {
    const ssize_t size = recv(descriptor_, room.data(), room.size(), 0);
#ifdef TCP_QUICKACK // a host that gathers its bytes waits for this before it sends the next ones
    if (size > 0)
        setOption(descriptor_, IPPROTO_TCP, TCP_QUICKACK);
#endif
    return size;
}

ssize_t Socket::receiveFrom(std::span<std::uint8_t> room, sockaddr_in& sender) const {
    socklen_t size = sizeof sender;
    return recvfrom(descriptor_, room.data(), room.size(), 0, reinterpret_cast<sockaddr*>(&sender),
                    &size);
}

ssize_t Socket::send(std::span<const std::uint8_t> bytes) const {
    return ::send(descriptor_, bytes.data(), bytes.size(), kNoSignal);
}

ssize_t Socket::sendTo(std::span<const std::uint8_t> bytes, const sockaddr_in& receiver) const {
    return sendto(descriptor_, bytes.data(), bytes.size(), kNoSignal,
                  reinterpret_cast<const sockaddr*>(&receiver), sizeof receiver);
}

void Socket::close() {
    const int error = errno;
    if (isOpen())
        ::close(std::exchange(descriptor_, -1));
    errno = error;
}

void Socket::abort() {
    const linger atOnce = {1, 0};
    setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

} // namespace zel::sim
