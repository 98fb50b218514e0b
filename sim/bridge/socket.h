// SPDX-License-Identifier: MIT
// An IPv4 socket that nobody waits on and no other program inherits, closed with its owner.
#pragma once

#include "sim/bridge/probes.h"

#include <netinet/in.h>
#include <span>
#include <sys/types.h>
#include <utility>

namespace zel::sim {

class Socket {
public:
    enum class Kind { Stream, Datagram };

    Socket() = default;
    Socket(Socket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    Socket& operator=(Socket&& other) noexcept;
    ~Socket() { close(); }

    // Bound to the address and a port, 0 for any free one. Not open when it fails; errno says why.
    static Socket bound(Kind kind, const Ipv4Address& address, std::uint16_t port);

    bool isOpen() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }
    std::uint16_t port() const;
    bool hasSomething() const; // to receive or to accept

    bool listen() const;
    Socket accept() const;

    // As the system's calls of these names: a count, or -1 with errno.
    ssize_t receive(std::span<std::uint8_t> room) const;
    ssize_t receiveFrom(std::span<std::uint8_t> room, sockaddr_in& sender) const;
    ssize_t send(std::span<const std::uint8_t> bytes) const;
    ssize_t sendTo(std::span<const std::uint8_t> bytes, const sockaddr_in& receiver) const;

    // Closes; errno stays what it was.
    void close();

    // Closes at once, with a reset: what wasn't sent is lost.
    void abort();

private:
    explicit Socket(int descriptor);

    int descriptor_ = -1;
};

} // namespace zel::sim
