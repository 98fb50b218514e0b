// SPDX-License-Identifier: MIT
// Compares replies with the fixed bytes of the bridge.
#include "transport/bridge_probe.h"

#include <algorithm>
#include <string_view>

namespace zel {

namespace {

constexpr std::array<std::uint8_t, 9> kHead = {'Z', 'T', 'A', 'G', 'D', 'I', 'S', 'C', 2};
constexpr std::size_t kBodyAt = 10;
constexpr std::array<std::uint8_t, 4> kBody = {0xF4, 0xF0, 0xF2, 0xF0};
constexpr std::string_view kName = "-Norvane/Wedge";
constexpr std::size_t kMarkAt = 29;
constexpr std::array<std::uint8_t, 3> kMark = {0x68, 0xAB, 0x8A};
constexpr std::size_t kAddressAt = 36;

constexpr std::array<std::uint8_t, 4> kSecondHead = {0, 0, 0, 0xF7};
constexpr std::array<std::array<std::uint8_t, 3>, 2> kMakers = {
    {{0x00, 0x20, 0x4A}, {0x00, 0x1D, 0x4B}}};

template <class Bytes> bool holds(const Reply& reply, std::size_t at, const Bytes& bytes) {
    return std::equal(bytes.begin(), bytes.end(), reply.begin() + static_cast<std::ptrdiff_t>(at),
                      [](auto a, auto b) { return static_cast<std::uint8_t>(a) == b; });
}

} // namespace

bool isFirstReply(const Reply& reply, const Ipv4& address) {
    return holds(reply, 0, kHead) && holds(reply, kBodyAt, kBody) &&
           holds(reply, kBodyAt + kBody.size(), kName) && holds(reply, kMarkAt, kMark) &&
           holds(reply, kAddressAt, address);
}

bool isSecondReply(const Reply& reply) {
    return holds(reply, 0, kSecondHead) &&
           std::any_of(kMakers.begin(), kMakers.end(),
                       [&](const auto& maker) { return holds(reply, kMacAt, maker); });
}

MacAddress macOf(const Reply& reply) {
    MacAddress mac;
    std::copy_n(reply.begin() + kMacAt, mac.size(), mac.begin());
    return mac;
}

} // namespace zel
