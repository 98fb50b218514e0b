// SPDX-License-Identifier: MIT
// The socket by which other processes reach a simulator: where it is, and both ways to open it.
#pragma once

#include "sim/link/descriptor.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zel::sim {

// What a connection is, by its first line: "control", "usb" or "line /dev/PATH".
inline constexpr std::string_view kControlGreeting = "control";
inline constexpr std::string_view kUsbGreeting = "usb";
inline constexpr std::string_view kLineGreeting = "line ";

// Where the status of a line's opening is good, in place of the name of an errno.
inline constexpr std::string_view kLineOpen = "ok";

// The name of the environment variable that tells the path.
inline constexpr const char* kSocketVariable = "ZELSIM_SOCKET";

// That of the variable; else "zelsim.sock" in the user's folder for such, else a name in /tmp.
std::string socketPath();

// A connection that told its first line. Not open when it fails; errno says why.
Descriptor connectTo(const std::string& path, std::string_view greeting);

// Sends all of it, without a signal where nobody reads. False: it doesn't arrive.
bool sendAll(int descriptor, std::span<const std::uint8_t> bytes);
bool sendAll(int descriptor, std::string_view text);

// A line without its end, read byte by byte: what follows stays in the socket. Nothing where the
// connection ends before, or the line is too long.
std::optional<std::string> readLine(int descriptor);

// The listening socket of a server, at a path that only its user may use. A file that is left of a
// server that is gone is replaced; the file goes with the listener.
class Listener {
public:
    Listener() = default;
    Listener(Listener&& other) noexcept
        : socket_(std::move(other.socket_)), path_(std::exchange(other.path_, {})) {}
    Listener& operator=(Listener&&) = delete;
    ~Listener();

    // Not open when it fails; errno says why: EADDRINUSE where a server listens there.
    static Listener at(const std::string& path);

    bool isOpen() const { return socket_.isOpen(); }
    int descriptor() const { return socket_.number(); }
    Descriptor accept() const;

private:
    Descriptor socket_;
    std::string path_;
};

} // namespace zel::sim
