// SPDX-License-Identifier: MIT
// The host's end of a connection to a simulated bridge: plain sockets that wait two seconds at
// most.
#pragma once

#include "sim/bridge/probes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zel::test {

using Bytes = std::vector<std::uint8_t>;

class HostSocket {
public:
    // A TCP connection; not open, with the reason in error(), when nobody listens.
    static HostSocket connected(const sim::Ipv4Address& address, std::uint16_t port);
    // A UDP socket.
    static HostSocket datagrams();

    HostSocket(HostSocket&& other) noexcept;
    HostSocket& operator=(HostSocket&&) = delete;
    ~HostSocket() { close(); }

    bool isOpen() const { return descriptor_ >= 0; }
    int error() const { return error_; }

    void send(const Bytes& bytes);
    void sendTo(const sim::Ipv4Address& address, std::uint16_t port, const Bytes& datagram);

    // As many of the bytes as there is room for now, and what is there to read now.
    std::size_t sendSome(std::span<const std::uint8_t> bytes) const;
    Bytes receiveSome() const;

    // So many bytes; fewer when the connection ended, see error(), or nothing came in time.
    Bytes receive(std::size_t count);

    // A datagram and who sent it.
    Bytes receiveFrom(sim::Ipv4Address& sender);

    // Whether the other end has closed and everything it sent is read.
    bool isAtEnd();
    bool hasSomething(int waitMilliseconds = 0) const;

    void close();
    void abort(); // with a reset

private:
    explicit HostSocket(int descriptor) : descriptor_(descriptor) {}

    int descriptor_;
    int error_ = 0;
};

} // namespace zel::test
