// SPDX-License-Identifier: MIT
// Resolves names and tries a TCP connection before the library does.
#include "cli/network/bridge.h"

#include "frame/zelTagAPI.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zel::cli {

namespace {

constexpr short kNetwork = 2; // of SetDevTypeSrch()
constexpr std::chrono::seconds kLongestConnect{5};

Failure unknownHost(const std::string& host, const char* reason) {
    return {ExitCode::NoDevice, fmt::format("the host {} isn't known: {}", host, reason),
            "check its name, or give its address as 10.0.0.17", ""};
}

Failure wholeNetwork(const std::string& host, const Ipv4& address) {
    const std::string text = asText(address);
    return {ExitCode::Usage,
            fmt::format("{} stands for a whole network", host == text ? text : host + ", " + text),
            "give the address of one host; `zeltag net find` looks for bridges", ""};
}

std::string text(const Endpoint& endpoint) {
    return fmt::format("{} port {}", endpoint.host, endpoint.port);
}

// Closes at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    ~Descriptor() {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    operator int() const { return descriptor_; }

private:
    int descriptor_;
};

// 0, or the errno of a connect under way.
int finish(int descriptor, std::chrono::milliseconds time) {
    pollfd ready = {descriptor, POLLOUT, 0};
    const int count = poll(&ready, 1, static_cast<int>(time.count()));
    if (count <= 0)
        return count == 0 ? ETIMEDOUT : errno;
    int error = 0;
    socklen_t size = sizeof error;
    return getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

} // namespace

std::variant<Ipv4, Failure> addressOf(const std::string& host) {
    addrinfo wanted = {};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (const int error = getaddrinfo(host.c_str(), nullptr, &wanted, &list); error != 0)
        return unknownHost(host, gai_strerror(error));
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(list, freeaddrinfo);
    Ipv4 address;
    std::memcpy(address.data(), &reinterpret_cast<const sockaddr_in*>(list->ai_addr)->sin_addr,
                address.size());
    if (address.back() == 0)
        return wholeNetwork(host, address);
    return address;
}

int tryConnect(const Ipv4& address, std::uint16_t port, std::chrono::milliseconds time) {
    const Descriptor descriptor(socket(AF_INET, SOCK_STREAM, 0));
    if (descriptor < 0)
        return errno;
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    sockaddr_in to = {};
    to.sin_family = AF_INET;
    to.sin_port = htons(port);
    std::memcpy(&to.sin_addr, address.data(), address.size());
    if (connect(descriptor, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0)
        return 0;
    return errno == EINPROGRESS ? finish(descriptor, time) : errno;
}

Failure explainConnect(const Endpoint& endpoint, int error) {
    switch (error) {
    case ECONNREFUSED:
        return {ExitCode::NoDevice, text(endpoint) + " refuses connections",
                "check the TCP port that the bridge is set to, and that no other program has it",
                ""};
    case EHOSTUNREACH:
    case ENETUNREACH:
        return {ExitCode::NoDevice,
                fmt::format("{} can't be reached: {}", endpoint.host, std::strerror(error)),
                "check the address and this machine's network", ""};
    case ETIMEDOUT:
        return {ExitCode::NoDevice, "nobody answers at " + text(endpoint),
                "check the address and the bridge's power; `zeltag net find` looks for bridges",
                ""};
    default:
        return {ExitCode::NoDevice,
                fmt::format("no connection to {}: {}", text(endpoint), std::strerror(error)),
                "check the address and this machine's network", ""};
    }
}

Outcome useBridge(const Endpoint& endpoint, Ipv4& address) {
    const auto found = addressOf(endpoint.host);
    if (const auto* const failure = std::get_if<Failure>(&found))
        return *failure;
    address = std::get<Ipv4>(found);
    if (const int error = tryConnect(address, endpoint.port, kLongestConnect); error != 0)
        return explainConnect(endpoint, error);
    SetIpPort(address[0], address[1], address[2], address[3], endpoint.port);
    SetDevTypeSrch(kNetwork);
    return {};
}

Failure explainSilentBridge(const Endpoint& endpoint) {
    return {ExitCode::NoDevice,
            fmt::format("{} takes the connection, but no reader answers behind it", text(endpoint)),
            "check the cable between the two, the speed that the bridge is set to, and that no "
            "other program uses the bridge",
            ""};
}

} // namespace zel::cli
