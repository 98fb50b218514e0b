// SPDX-License-Identifier: MIT
// Reads addresses, ranges of them and ports.
#include "cli/command/address.h"

#include "cli/command/whole_number.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace zel::cli {

namespace {

constexpr std::uint16_t kBridgePort = 10001;
constexpr std::uint8_t kLastHost = 254;

// A last byte of 0 stands for a network and 255 for all of its hosts.
bool isHost(std::uint8_t lastByte) { return lastByte >= 1 && lastByte <= kLastHost; }

} // namespace

std::string asText(const Ipv4& address) { return fmt::format("{}", fmt::join(address, ".")); }

std::string asText(const Mac& mac) { return fmt::format("{:02X}", fmt::join(mac, ":")); }

std::optional<Ipv4> addressIn(std::string_view text) {
    Ipv4 address;
    for (std::uint8_t& byte : address) {
        const bool isLast = &byte == &address.back();
        const std::size_t end = isLast ? text.size() : text.find('.');
        const auto number = wholeNumber<std::uint8_t>(text.substr(0, end));
        if (!number || end == text.npos)
            return {};
        byte = *number;
        text.remove_prefix(isLast ? end : end + 1);
    }
    return address;
}

std::optional<Endpoint> endpointIn(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::string host(text.substr(0, colon));
    const auto port = colon == text.npos ? std::optional(kBridgePort)
                                         : wholeNumber<std::uint16_t>(text.substr(colon + 1));
    if (host.empty() || !port || *port == 0)
        return {};
    return Endpoint{host, *port};
}

Ipv4 HostRange::at(int index) const {
    Ipv4 address = first;
    address[3] = static_cast<std::uint8_t>(first[3] + index);
    return address;
}

std::optional<HostRange> hostsIn(std::string_view text) {
    const std::size_t dash = text.find('-');
    const auto first = addressIn(text.substr(0, dash));
    if (!first)
        return {};
    const auto last = dash == text.npos ? std::optional((*first)[3])
                                        : wholeNumber<std::uint8_t>(text.substr(dash + 1));
    if (!last || !isHost((*first)[3]) || !isHost(*last) || *last < (*first)[3])
        return {};
    return HostRange{*first, *last};
}

std::string checkEndpoint(const std::string& text) {
    return endpointIn(text) ? ""
                            : fmt::format("\"{}\" is no host; write it as 10.0.0.17, as a name, or "
                                          "with a port as 10.0.0.17:10001",
                                          text);
}

std::string checkHosts(const std::string& text) {
    return hostsIn(text) ? ""
                         : fmt::format("\"{}\" is no range of hosts; write it as 10.0.0.1-20, of "
                                       "1 to 254",
                                       text);
}

} // namespace zel::cli
