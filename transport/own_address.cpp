// SPDX-License-Identifier: MIT
// This machine's IPv4 address.
#include "transport/ipv4.h"
#include "transport/tcp_socket.h"

#include <algorithm>
#include <ifaddrs.h>
#include <iterator>
#include <string_view>

using namespace zel;

namespace {

constexpr std::string_view kInterfaces[] = {"eth0", "wlan0", "eth1", "wlan1", "eth2", "wlan2"};

// An interface without an address has a null one.
bool isOurs(const ifaddrs& entry) {
    return entry.ifa_addr && entry.ifa_addr->sa_family == AF_INET &&
           std::find(std::begin(kInterfaces), std::end(kInterfaces), entry.ifa_name) !=
               std::end(kInterfaces);
}

// The first byte is the lowest, the last one the sign.
std::int64_t numberOf(const Ipv4& bytes) {
    const std::uint32_t number = bytes[0] | std::uint32_t{bytes[1]} << 8 |
                                 std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24;
    return static_cast<std::int32_t>(number);
}

} // namespace

// The order of the system's list decides, not that of the names.
std::int64_t socket_GetMyIP() {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0)
        return 0;
    const ifaddrs* entry = list;
    while (entry && !isOurs(*entry))
        entry = entry->ifa_next;
    const std::int64_t address =
        entry ? numberOf(bytesOf(reinterpret_cast<const sockaddr_in*>(entry->ifa_addr)->sin_addr))
              : 0;
    freeifaddrs(list);
    return address;
}
