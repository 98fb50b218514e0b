// SPDX-License-Identifier: MIT
// The host's sockets.
#include "tests/support/host_socket.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace zel::test {

namespace {

constexpr int kPatience = 2000; // ms

sockaddr_in asSystemAddress(const sim::Ipv4Address& address, std::uint16_t port) {
    sockaddr_in system = {};
    system.sin_family = AF_INET;
    system.sin_port = htons(port);
    std::memcpy(&system.sin_addr, address.data(), address.size());
    return system;
}

} // namespace

HostSocket HostSocket::connected(const sim::Ipv4Address& address, std::uint16_t port) {
    HostSocket made(socket(AF_INET, SOCK_STREAM, 0));
    fcntl(made.descriptor_, F_SETFD, FD_CLOEXEC);
    const sockaddr_in system = asSystemAddress(address, port);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&system);
    if (connect(made.descriptor_, generic, sizeof system) != 0) {
        made.error_ = errno;
        made.close();
    }
    return made;
}

HostSocket HostSocket::datagrams() {
    HostSocket made(socket(AF_INET, SOCK_DGRAM, 0));
    fcntl(made.descriptor_, F_SETFD, FD_CLOEXEC);
    return made;
}

HostSocket::HostSocket(HostSocket&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), error_(other.error_) {}

void HostSocket::send(const Bytes& bytes) {
    if (::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0)
        error_ = errno;
}

std::size_t HostSocket::sendSome(std::span<const std::uint8_t> bytes) const {
    const ssize_t size =
        ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

Bytes HostSocket::receiveSome() const {
    Bytes bytes(1 << 16);
    const ssize_t size = recv(descriptor_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return bytes;
}

void HostSocket::sendTo(const sim::Ipv4Address& address, std::uint16_t port,
                        const Bytes& datagram) {
    const sockaddr_in system = asSystemAddress(address, port);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&system);
    if (sendto(descriptor_, datagram.data(), datagram.size(), 0, generic, sizeof system) < 0)
        error_ = errno;
}

Bytes HostSocket::receive(std::size_t count) {
    Bytes bytes(count);
    std::size_t size = 0;
    while (size < count && hasSomething(kPatience)) {
        const ssize_t got = recv(descriptor_, bytes.data() + size, count - size, 0);
        if (got < 0)
            error_ = errno;
        if (got <= 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

Bytes HostSocket::receiveFrom(sim::Ipv4Address& sender) {
    Bytes datagram(512);
    sockaddr_in system = {};
    socklen_t size = sizeof system;
    auto* const generic = reinterpret_cast<sockaddr*>(&system);
    if (!hasSomething(kPatience))
        return {};
    const ssize_t got = recvfrom(descriptor_, datagram.data(), datagram.size(), 0, generic, &size);
    std::memcpy(sender.data(), &system.sin_addr, sender.size());
    datagram.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return datagram;
}

bool HostSocket::isAtEnd() {
    std::uint8_t next = 0;
    if (!hasSomething(kPatience))
        return false;
    const ssize_t got = recv(descriptor_, &next, 1, MSG_PEEK);
    if (got < 0)
        error_ = errno;
    return got <= 0;
}

bool HostSocket::hasSomething(int waitMilliseconds) const {
    pollfd end = {descriptor_, POLLIN, 0};
    return poll(&end, 1, waitMilliseconds) > 0;
}

void HostSocket::close() {
    if (isOpen())
        ::close(std::exchange(descriptor_, -1));
}

void HostSocket::abort() {
    const linger atOnce = {1, 0};
    setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

} // namespace zel::test
