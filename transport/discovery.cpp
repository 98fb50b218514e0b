// SPDX-License-Identifier: MIT
// Looks for network bridges and asks one for its MAC address, by datagrams.
#include "base/bytes.h"
#include "base/pause.h"
#include "frame/zelTagNetwork.h"
#include "transport/bridge_probe.h"
#include "transport/tcp_socket.h"

#include <algorithm>
#include <fcntl.h>
#include <optional>
#include <span>
#include <sys/socket.h>
#include <unistd.h>

using namespace zel;

namespace {

constexpr useconds_t kProbePause = 2'000'000; // µs
constexpr useconds_t kMacPause = 50'000;
constexpr int kMacPolls = 10;
constexpr MacAddress kDefaultMac = {0x00, 0x20, 0x4A, 0x00, 0x00, 0x00};

int openDatagrams() {
    const int fd = socket(AF_INET, SOCK_DGRAM, 0);
    if (fd >= 0)
        fcntl(fd, F_SETFD, FD_CLOEXEC);
    return fd;
}

bool sendProbe(int fd, std::span<const std::uint8_t> probe, const Ipv4& host, std::uint16_t port) {
    const sockaddr_in to = socketAddress(host, port);
    return sendto(fd, probe.data(), probe.size(), 0, reinterpret_cast<const sockaddr*>(&to),
                  sizeof to) == static_cast<ssize_t>(probe.size());
}

// What has come, without waiting; where from. Whether anything has.
bool receive(int fd, std::span<std::uint8_t> reply, Ipv4& sender) {
    sockaddr_in from = {};
    socklen_t size = sizeof from;
    fcntl(fd, F_SETFL, O_NONBLOCK);
    const ssize_t count =
        recvfrom(fd, reply.data(), reply.size(), 0, reinterpret_cast<sockaddr*>(&from), &size);
    sender = bytesOf(from.sin_addr);
    return count >= 0;
}

bool answersFirst(int fd, const Ipv4& host) {
    if (!sendProbe(fd, kFirstProbe, host, kFirstProbePort))
        return false;
    pauseFor(kProbePause);
    Reply reply = noReply();
    Ipv4 sender = {};
    return receive(fd, std::span(reply).first(kFirstReplyRoom), sender) &&
           isFirstReply(reply, host);
}

// The reply must come from the host, but for the first byte of its address: that is the answer.
std::optional<int> firstByteOfSecond(int fd, const Ipv4& host) {
    if (!sendProbe(fd, kSecondProbe, host, kSecondProbePort))
        return {};
    Reply reply = noReply();
    Ipv4 sender = {};
    const bool answers = receive(fd, reply, sender) && isSecondReply(reply) &&
                         std::equal(host.begin() + 1, host.end(), sender.begin() + 1);
    return answers ? std::optional<int>(sender[0]) : std::nullopt;
}

} // namespace

int socket_FindXport(int a, int b, int c, int first, int last) {
    const int fd = openDatagrams();
    replaceSocket(fd);
    if (fd < 0)
        return 0;
    std::optional<int> found; // may be 0, which ends the scan too
    for (int host = first; host <= last && !found; ++host) {
        const Ipv4 address = {lowByte(a), lowByte(b), lowByte(c), lowByte(host)};
        found = answersFirst(fd, address) ? host : firstByteOfSecond(fd, address);
    }
    socket_Close();
    return found.value_or(0);
}

int socket_GetMACAddress(unsigned char a, unsigned char b, unsigned char c, unsigned char d,
                         unsigned char* mac) {
    if (!mac)
        return 0;
    std::copy(kDefaultMac.begin(), kDefaultMac.end(), mac);
    const int fd = openDatagrams();
    if (fd < 0)
        return 0;
    const Ipv4 host = {a, b, c, d};
    if (sendProbe(fd, kSecondProbe, host, kSecondProbePort)) {
        Reply reply = noReply();
        Ipv4 sender = {};
        for (int poll = 0; poll < kMacPolls && reply[kMacAt] != 0; ++poll) {
            receive(fd, reply, sender);
            pauseFor(kMacPause);
        }
        if (isSecondReply(reply) && sender == host) {
            const MacAddress told = macOf(reply);
            std::copy(told.begin(), told.end(), mac);
        }
    }
    close(fd);
    return 1;
}
