// SPDX-License-Identifier: MIT
// A line whose other end is the test's: what the host wrote shows in the trace before each pause,
// what the device says behind it.
#pragma once

#include "sim/wire/byte_text.h"
#include "tests/support/library_test.h"
#include "transport/line_opener.h"
#include "transport/port.h"
#include "transport/tcp_socket.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace zel::test {

inline std::string times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

class PortTest : public LibraryTest {
protected:
    static constexpr const char* kPath = "/dev/line";

    PortTest() {
        opened_.clear();
        opensFail_ = false;
        CPort_UseOpener(openLine);
        SetComLinux(1, kPath);
        onPause([this](std::uint64_t us) { pass(us); });
    }
    ~PortTest() override {
        USBDisconnect();
        socket_Close();
        CPort_UseOpener(nullptr);
        hangUp();
        baudrate = 9600;
    }

    void say(std::string_view bytes) {
        EXPECT_EQ(::write(device_, bytes.data(), bytes.size()), std::ssize(bytes));
    }
    // Says it at the end of the pause of this number, from 1.
    void sayAfter(int pause, const std::string& bytes) { due_[pause] += bytes; }
    void hangUp() {
        if (device_ != -1)
            close(std::exchange(device_, -1));
    }

    // Fills the line until it takes nothing more; it takes again at the pause of this number.
    void jamUntil(int pause) {
        const std::string some(1024, '?');
        for (ssize_t count = 1; count > 0;) {
            count = send(host_, some.data(), some.size(), MSG_DONTWAIT);
            jam_ += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
        EXPECT_GT(jam_, 0U);
        deafUntil_ = pause;
    }

    // What the device has got since it was asked last.
    std::string taken() {
        std::vector<char> room(1 << 16);
        std::string all;
        for (ssize_t count = 1; count > 0;) {
            count = recv(device_, room.data(), room.size(), MSG_DONTWAIT);
            all.append(room.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        }
        all.erase(0, std::exchange(jam_, 0));
        return all;
    }

    void noteTaken() {
        if (pauses_ < deafUntil_)
            return;
        const std::string text = device_ == -1 ? "" : taken();
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
        if (!text.empty())
            bus().note("> " + sim::chunkOf(std::span(bytes, text.size())));
    }

    std::string trace() {
        noteTaken();
        return bus().takeTrace();
    }

    static inline std::vector<std::string> opened_; // paths
    static inline bool opensFail_ = false;
    static inline int host_ = -1;   // the library's end of the line opened last
    static inline int device_ = -1; // the test's
    int pauses_ = 0;

private:
    static int openLine(const char* path) {
        opened_.emplace_back(path);
        std::array<int, 2> ends;
        if (opensFail_ || socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0)
            return -1;
        if (device_ != -1)
            close(device_);
        host_ = ends[0];
        device_ = ends[1];
        return host_;
    }

    void pass(std::uint64_t us) {
        constexpr int kPatience = 100'000; // a write that never ends would hold the test for good
        if (++pauses_ > kPatience) {
            std::fputs("the library doesn't end its wait\n", stderr);
            std::abort();
        }
        noteTaken();
        bus().note("~ " + std::to_string(us / 1000) + " ms");
        if (const auto due = due_.find(pauses_); due != due_.end())
            say(due->second);
    }

    std::map<int, std::string> due_;
    std::size_t jam_ = 0;
    int deafUntil_ = 0;
};

} // namespace zel::test
