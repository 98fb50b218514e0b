// SPDX-License-Identifier: MIT
// The ports of the bridge, its probes and the one client of its stream.
#include "sim/bridge/bridge.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace zel::sim {

namespace {

constexpr std::size_t kLargestProbe = 64;
constexpr std::size_t kPiece = 512;    // bytes that the device is given at a time
constexpr std::size_t kPieces = 64;    // of a client that never stops, in one pump
constexpr std::size_t kBacklog = 4096; // bytes for a client that doesn't read: no more are taken

} // namespace

Bridge::Bridge(std::shared_ptr<StreamDevice> device, const BridgeOptions& options)
    : device_(std::move(device)), options_(options), port_(options.port) {}

bool Bridge::start() {
    if (listen() && std::ranges::all_of(kProbes, [this](Probe probe) { return open(probe); }))
        return true;
    listener_.close();
    for (ProbeLine& line : lines_)
        line.socket.close();
    return false;
}

bool Bridge::listen() {
    if (listener_.isOpen())
        return true;
    listener_ = Socket::bound(Socket::Kind::Stream, options_.address, port_);
    if (listener_.isOpen() && !listener_.listen())
        listener_.close();
    if (!listener_.isOpen()) {
        failedPort_ = port_;
        return false;
    }
    port_ = listener_.port();
    return true;
}

bool Bridge::serves(Probe probe) const {
    return probe == Probe::Discovery ? options_.servesDiscovery : options_.servesMacQuery;
}

bool Bridge::open(Probe probe) {
    if (!serves(probe))
        return true;
    Socket& socket = line(probe).socket;
    socket = Socket::bound(Socket::Kind::Datagram, options_.address, portOf(probe));
    if (socket.isOpen())
        return true;
    failedPort_ = portOf(probe);
    failedAtDiscovery_ = true;
    return false;
}

void Bridge::addTo(std::vector<pollfd>& ends) const {
    for (const ProbeLine& line : lines_)
        if (line.socket.isOpen())
            ends.push_back({line.socket.descriptor(), POLLIN, 0});
    if (!hasClient() && listener_.isOpen())
        ends.push_back({listener_.descriptor(), POLLIN, 0});
    if (!hasClient())
        return;
    const bool mayTake = outgoing_.size() < kBacklog;
    const bool mayGive = deliverable() > 0 && streamFaults_.dribble == 0;
    const int events = (mayTake ? POLLIN : 0) | (mayGive ? POLLOUT : 0);
    ends.push_back({client_.descriptor(), static_cast<short>(events), 0});
}

void Bridge::pump(int waitMilliseconds) {
    std::vector<pollfd> ends;
    addTo(ends);
    poll(ends.data(), static_cast<nfds_t>(ends.size()), waitMilliseconds);
    for (const Probe probe : kProbes)
        answer(probe);
    serveClients();
}

void Bridge::answer(Probe probe) {
    auto& [socket, faults] = line(probe);
    if (!socket.isOpen() || !socket.hasSomething())
        return;
    if (faults.late > 0) {
        --faults.late;
        return;
    }
    std::uint8_t datagram[kLargestProbe];
    sockaddr_in host = {};
    for (ssize_t size; (size = socket.receiveFrom(datagram, host)) >= 0;) {
        const bool isMeant = isProbe(probe, std::span(datagram, static_cast<std::size_t>(size)));
        if (!isMeant || faults.silent)
            continue;
        const Socket other =
            faults.from ? Socket::bound(Socket::Kind::Datagram, *faults.from, 0) : Socket();
        (faults.from ? other : socket).sendTo(replyTo(probe), host);
    }
}

std::vector<std::uint8_t> Bridge::replyTo(Probe probe) const {
    const ProbeFaults& faults = lines_[static_cast<std::size_t>(probe)].faults;
    auto reply = sim::replyTo(probe, options_.address, options_.mac);
    for (const auto& [offset, value] : faults.bytes)
        if (offset < reply.size())
            reply[offset] = value;
    reply.resize(std::min(reply.size(), faults.size.value_or(reply.size())));
    return reply;
}

// A client that waits takes the place of one that has closed, in the same pump.
void Bridge::serveClients() {
    while (hasClient() || acceptClient()) {
        const bool stays = takeBytes();
        deliver();
        if (hasClient() && stays)
            return;
        client_.close();
    }
}

bool Bridge::acceptClient() {
    if (!listener_.isOpen())
        return false;
    client_ = listener_.accept();
    outgoing_.clear();
    delivered_ = 0;
    if (hasClient())
        device_->restart();
    return hasClient();
}

// False when the client has closed.
bool Bridge::takeBytes() {
    std::uint8_t piece[kPiece];
    for (std::size_t n = 0; n < kPieces && outgoing_.size() < kBacklog; ++n) {
        const ssize_t size = client_.receive(piece);
        if (size <= 0)
            return size < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
        if (streamFaults_.silent)
            continue;
        const auto reply = device_->receive(std::span(piece, static_cast<std::size_t>(size)));
        outgoing_.insert(outgoing_.end(), reply.begin(), reply.end());
    }
    return true;
}

std::size_t Bridge::deliverable() const {
    const std::size_t end = streamFaults_.endsAfter.value_or(delivered_ + outgoing_.size());
    const std::size_t left = end > delivered_ ? end - delivered_ : 0;
    return std::min(outgoing_.size(), left);
}

void Bridge::deliver() {
    const std::size_t dribble = streamFaults_.dribble;
    const std::size_t size = dribble > 0 ? std::min(deliverable(), dribble) : deliverable();
    const ssize_t sent = client_.send(std::span(outgoing_).first(size));
    if (sent > 0) {
        outgoing_.erase(outgoing_.begin(), outgoing_.begin() + sent);
        delivered_ += static_cast<std::size_t>(sent);
    }
    if (streamFaults_.endsAfter && delivered_ >= *streamFaults_.endsAfter)
        endConnection();
}

void Bridge::endConnection() {
    if (streamFaults_.endsWithReset)
        client_.abort();
    else
        client_.close();
}

} // namespace zel::sim
