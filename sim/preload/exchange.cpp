// SPDX-License-Identifier: MIT
// One request, one answer.
#include "sim/preload/exchange.h"

#include "sim/link/endpoint.h"
#include "sim/link/frames.h"

#include <cerrno>
#include <cstdio>
#include <sys/socket.h>
#include <sys/time.h>
#include <utility>

namespace zel::sim {

namespace {

constexpr timeval kPatience = {5, 0}; // a simulator answers at once, or is gone

bool receiveAll(int descriptor, std::span<std::uint8_t> room) {
    while (!room.empty()) {
        const ssize_t count = recv(descriptor, room.data(), room.size(), 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        room = room.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

// Once: an application may look for devices again and again.
void tellOfNobody() {
    static bool isTold = false;
    if (!std::exchange(isTold, true))
        std::fprintf(stderr,
                     "libzelsim: no simulator listens at %s; start one with `zelsim run`, or unset "
                     "ZELSIM_SOCKET\n",
                     simulatorSocket().c_str());
}

} // namespace

bool Exchange::connect() {
    if (socket_.isOpen() && process_ == getpid())
        return true;
    socket_ = connectTo(simulatorSocket(), kUsbGreeting);
    process_ = getpid();
    ++generation_;
    if (!socket_.isOpen())
        tellOfNobody();
    else
        setsockopt(socket_.number(), SOL_SOCKET, SO_RCVTIMEO, &kPatience, sizeof kPatience);
    return socket_.isOpen();
}

std::optional<Exchange::Bytes> Exchange::ask(FrameWriter& request) {
    const std::lock_guard guard(mutex_);
    std::optional<Bytes> answer;
    if (connect() && sendAll(socket_.number(), request.take()))
        answer = receive();
    if (!answer)
        socket_.reset();
    return answer;
}

std::optional<Exchange::Bytes> Exchange::receive() const {
    Bytes head(kFrameHead);
    if (!receiveAll(socket_.number(), head))
        return {};
    const auto size = frameSize(head);
    if (!size)
        return {};
    Bytes answer(*size);
    if (!receiveAll(socket_.number(), answer))
        return {};
    return answer;
}

} // namespace zel::sim
