// SPDX-License-Identifier: MIT
// Reads requests as they come whole, and keeps what the other end doesn't take at once.
#include "sim/server/client.h"

#include "sim/link/endpoint.h"
#include "sim/link/frames.h"
#include "sim/wire/line.h"

#include <cerrno>
#include <sys/socket.h>

namespace zel::sim {

namespace {

constexpr std::size_t kLongestRequest = 1U << 17; // bytes
constexpr std::size_t kLongestGreeting = 1024;
constexpr std::size_t kBacklog = 1U << 20; // bytes for who doesn't read: no more is asked

#ifdef MSG_NOSIGNAL
constexpr int kQuietly = MSG_NOSIGNAL;
#else
constexpr int kQuietly = 0;
#endif

bool wouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }

const char* errnoName(int error) {
    switch (error) {
    case ENOENT:
        return "ENOENT";
    case EACCES:
        return "EACCES";
    default:
        return "EIO";
    }
}

std::span<const std::uint8_t> bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

} // namespace

pollfd Client::waitsFor() const {
    const bool mayTake = output_.size() < kBacklog;
    const int events = (mayTake ? POLLIN : 0) | (output_.empty() ? 0 : POLLOUT);
    return {socket_.number(), static_cast<short>(events), 0};
}

bool Client::serve() {
    if (kind_ == Kind::Unknown && !takeGreeting())
        return false;
    if (kind_ == Kind::Unknown)
        return true;
    const bool stays = takeInput();
    return answerRequests() && deliver() && stays;
}

// Byte by byte: what follows the first line may be that of a serial line.
bool Client::takeGreeting() {
    char next = 0;
    while (input_.size() < kLongestGreeting) {
        const ssize_t count = recv(socket_.number(), &next, 1, 0);
        if (count <= 0)
            return count < 0 && wouldBlock();
        if (next == '\n')
            return greet();
        input_ += next;
    }
    return false;
}

bool Client::greet() {
    const std::string greeting = std::exchange(input_, {});
    if (greeting == kControlGreeting)
        kind_ = Kind::Control;
    else if (greeting == kUsbGreeting)
        kind_ = Kind::Usb;
    else if (greeting.starts_with(kLineGreeting))
        return becomeLine(greeting.substr(kLineGreeting.size()));
    return kind_ != Kind::Unknown;
}

// The status goes out first: behind it the bytes are the line's.
bool Client::becomeLine(const std::string& path) {
    const int error = lines().whyNotOpen(path);
    const std::string status = error == 0 ? std::string(kLineOpen) : errnoName(error);
    if (sendAll(socket_.number(), status + '\n') && lines().openOn(path, socket_.number()))
        socket_.release();
    return false;
}

bool Client::takeInput() {
    char piece[4096];
    while (input_.size() < kLongestRequest) {
        const ssize_t count = recv(socket_.number(), piece, sizeof piece, 0);
        if (count <= 0)
            return count < 0 && wouldBlock();
        input_.append(piece, static_cast<std::size_t>(count));
    }
    return true;
}

bool Client::answerRequests() {
    const auto answerNext = kind_ == Kind::Control ? &Client::answerLine : &Client::answerFrame;
    while (output_.size() < kBacklog) {
        const std::size_t before = input_.size();
        if (!(this->*answerNext)())
            return false;
        if (input_.size() == before)
            return before < kLongestRequest;
    }
    return true;
}

bool Client::answerLine() {
    const std::size_t end = input_.find('\n');
    if (end == std::string::npos)
        return true;
    output_ += toLine(control_.answer(input_.substr(0, end))) + '\n';
    input_.erase(0, end + 1);
    return true;
}

bool Client::answerFrame() {
    if (input_.size() < kFrameHead)
        return true;
    const auto size = frameSize(bytesOf(input_));
    if (!size)
        return false;
    if (input_.size() < kFrameHead + *size)
        return true;
    const auto answer = usb_.answer(bytesOf(input_).subspan(kFrameHead, *size));
    if (!answer)
        return false;
    output_.append(answer->begin(), answer->end());
    input_.erase(0, kFrameHead + *size);
    return true;
}

bool Client::deliver() {
    while (!output_.empty()) {
        const ssize_t sent = send(socket_.number(), output_.data(), output_.size(), kQuietly);
        if (sent <= 0)
            return sent < 0 && wouldBlock();
        output_.erase(0, static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace zel::sim
