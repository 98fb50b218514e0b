// SPDX-License-Identifier: MIT
// The search for network bridges, and the question for a MAC address, where anything answers. An
// input is which of the two and whether the host has sockets at all, then the datagrams.
#include "frame/zelTagNetwork.h"
#include "fuzz/support/any_stream.h"
#include "transport/tcp_socket.h"

using namespace zel::fuzz;

namespace {

constexpr int kFirstHost = 40;
constexpr int kLastHost = 44;

void find() {
    const int found = socket_FindXport(192, 168, 7, kFirstHost, kLastHost);
    require(found >= 0 && found <= 255 && !socket_IsOpen());
}

// Without an answer it is the default, whose first byte is that of every known maker.
void askMac() {
    unsigned char mac[7] = {1, 1, 1, 1, 1, 1, 0x5A};
    require(socket_GetMACAddress(192, 168, 7, 42, nullptr) == 0);
    socket_GetMACAddress(192, 168, 7, 42, mac);
    require(mac[0] == 0 && (mac[1] == 0x20 || mac[1] == 0x1D) && mac[6] == 0x5A);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t way = input.byte();
    constexpr Datagrams kFates[] = {Datagrams::Go, Datagrams::Go, Datagrams::GetLost,
                                    Datagrams::HaveNoSocket};
    answerDatagrams(input, kFates[way / 2 % 4]);
    if (way % 2 != 0)
        find();
    else
        askMac();
    return 0;
}
