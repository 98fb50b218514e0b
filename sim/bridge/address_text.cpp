// SPDX-License-Identifier: MIT
// Numbers with a separator between them.
#include "sim/bridge/address_text.h"

#include <charconv>
#include <cstdio>

namespace zel::sim {

namespace {

template <class Bytes>
std::optional<Bytes> bytesIn(std::string_view text, char separator, int base) {
    Bytes bytes = {};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0 && (at == end || *at++ != separator))
            return {};
        const auto [next, error] = std::from_chars(at, end, bytes[i], base);
        if (error != std::errc())
            return {};
        at = next;
    }
    return at == end ? std::optional(bytes) : std::nullopt;
}

} // namespace

std::string toText(const Ipv4Address& address) {
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d.%d.%d", address[0], address[1], address[2], address[3]);
    return text;
}

std::string toText(const MacAddress& mac) {
    char text[18];
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", mac[0], mac[1], mac[2],
                  mac[3], mac[4], mac[5]);
    return text;
}

std::optional<Ipv4Address> ipv4In(std::string_view text) {
    const auto address = bytesIn<Ipv4Address>(text, '.', 10);
    return address == Ipv4Address{} ? std::nullopt : address;
}

std::optional<MacAddress> macIn(std::string_view text) {
    return bytesIn<MacAddress>(text, ':', 16);
}

} // namespace zel::sim
