// SPDX-License-Identifier: MIT
// The local socket of a simulator.
#include "sim/link/endpoint.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace zel::sim {

namespace {

constexpr std::size_t kLongestLine = 4096;
constexpr int kBacklog = 16;

#ifdef MSG_NOSIGNAL
constexpr int kQuietly = MSG_NOSIGNAL;
#else
constexpr int kQuietly = 0;
#endif

// False: the path doesn't fit into an address.
bool setAddress(sockaddr_un& address, const std::string& path) {
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        errno = path.empty() ? ENOENT : ENAMETOOLONG;
        return false;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return true;
}

Descriptor newSocket() {
    Descriptor made(socket(AF_UNIX, SOCK_STREAM, 0));
    if (made.isOpen())
        fcntl(made.number(), F_SETFD, FD_CLOEXEC);
#ifdef SO_NOSIGPIPE
    const int on = 1;
    setsockopt(made.number(), SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
    return made;
}

// What a call of the socket says about its address, once it wasn't interrupted.
template <class Call> bool reaches(Call call, const Descriptor& from, const std::string& path) {
    sockaddr_un address = {};
    if (!from.isOpen() || !setAddress(address, path))
        return false;
    int result = -1;
    do
        result = call(from.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

bool isServed(const std::string& path) { return reaches(::connect, newSocket(), path); }

bool isSocket(const std::string& path) {
    struct stat file = {};
    return lstat(path.c_str(), &file) == 0 && S_ISSOCK(file.st_mode);
}

// Nobody else may connect, from the first moment on.
bool bindPrivately(const Descriptor& made, const std::string& path) {
    const mode_t before = umask(0177);
    const bool isBound = reaches(::bind, made, path);
    const int error = errno;
    umask(before);
    errno = error;
    return isBound;
}

} // namespace

std::string socketPath() {
    if (const char* const told = std::getenv(kSocketVariable); told && *told)
        return told;
    if (const char* const folder = std::getenv("XDG_RUNTIME_DIR"); folder && *folder)
        return std::string(folder) + "/zelsim.sock";
    return "/tmp/zelsim-" + std::to_string(getuid()) + ".sock";
}

Descriptor connectTo(const std::string& path, std::string_view greeting) {
    Descriptor made = newSocket();
    if (!reaches(::connect, made, path) || !sendAll(made.number(), std::string(greeting) + '\n'))
        made.reset();
    return made;
}

bool sendAll(int descriptor, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(descriptor, bytes.data(), bytes.size(), kQuietly);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(sent));
    }
    return true;
}

bool sendAll(int descriptor, std::string_view text) {
    return sendAll(descriptor,
                   std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

std::optional<std::string> readLine(int descriptor) {
    std::string line;
    while (line.size() < kLongestLine) {
        char next = 0;
        const ssize_t count = recv(descriptor, &next, 1, 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return {};
        if (next == '\n')
            return line;
        line += next;
    }
    return {};
}

Listener Listener::at(const std::string& path) {
    Listener made;
    Descriptor socket = newSocket();
    bool isBound = bindPrivately(socket, path);
    if (!isBound && errno == EADDRINUSE) {
        const bool isLeftBehind = isSocket(path) && !isServed(path);
        if (isLeftBehind)
            unlink(path.c_str());
        errno = EADDRINUSE;
        isBound = isLeftBehind && bindPrivately(socket, path);
    }
    if (!isBound)
        return made;
    made.path_ = path;
    fcntl(socket.number(), F_SETFL, O_NONBLOCK);
    if (listen(socket.number(), kBacklog) == 0)
        made.socket_ = std::move(socket);
    return made;
}

Listener::~Listener() {
    if (!path_.empty())
        unlink(path_.c_str());
}

Descriptor Listener::accept() const {
    Descriptor client(::accept(socket_.number(), nullptr, nullptr));
    if (!client.isOpen())
        return client;
    fcntl(client.number(), F_SETFD, FD_CLOEXEC);
    fcntl(client.number(), F_SETFL, O_NONBLOCK);
    return client;
}

} // namespace zel::sim
