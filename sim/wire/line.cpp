// SPDX-License-Identifier: MIT
// Each open line is a pair of sockets: one end is the library's, the other the simulator's.
#include "sim/wire/line.h"

#include "sim/wire/byte_text.h"
#include "sim/wire/usb_bus.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace zel::sim {

namespace {

int refused(int error) {
    errno = error;
    return -1;
}

} // namespace

Lines& lines() {
    static Lines* const all = new Lines;
    return *all;
}

void Lines::attach(const std::string& path, std::shared_ptr<StreamDevice> device) {
    detach(path);
    const std::lock_guard guard(mutex_);
    lines_.push_back({path, std::move(device)});
}

void Lines::detach(const std::string& path) {
    const std::lock_guard guard(mutex_);
    close(path);
    std::erase_if(lines_, [&](const Line& line) { return line.path == path; });
}

void Lines::clear() {
    const std::lock_guard guard(mutex_);
    for (const Connection& connection : connections_)
        ::close(connection.fd);
    connections_.clear();
    lines_.clear();
    opens_ = 0;
}

void Lines::close(const std::string& path) {
    std::erase_if(connections_, [&](const Connection& connection) {
        return connection.path == path && ::close(connection.fd) == 0;
    });
}

int Lines::open(const char* path) {
    const std::lock_guard guard(mutex_);
    takeInAll(); // the ends of the lines that were closed before
    ++opens_;
    Line* const line = find(path);
    const int error = whyNot(line);
    const int fd = error == 0 ? connect(*line) : refused(error);
    note(path, "open " + std::string(path) + (fd < 0 ? " fails" : ""));
    return fd;
}

int Lines::whyNot(const Line* line) {
    if (!line)
        return ENOENT;
    return line->opensFail ? EACCES : 0;
}

int Lines::connect(Line& line) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        return -1;
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    adopt(line, ends[1]);
    return ends[0];
}

void Lines::adopt(Line& line, int descriptor) {
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    connections_.push_back({line.path, descriptor});
    line.device->restart();
}

int Lines::whyNotOpen(const std::string& path) {
    const std::lock_guard guard(mutex_);
    return whyNot(find(path));
}

bool Lines::openOn(const std::string& path, int descriptor) {
    const std::lock_guard guard(mutex_);
    takeInAll();
    ++opens_;
    Line* const line = find(path);
    const bool isOpen = whyNot(line) == 0;
    if (isOpen)
        adopt(*line, descriptor);
    note(path, "open " + path + (isOpen ? "" : " fails"));
    return isOpen;
}

void Lines::addTo(std::vector<pollfd>& ends) const {
    const std::lock_guard guard(mutex_);
    for (const Connection& connection : connections_)
        ends.push_back({connection.fd, POLLIN, 0});
}

int Lines::opens() const {
    const std::lock_guard guard(mutex_);
    return opens_;
}

int Lines::openLines() const {
    const std::lock_guard guard(mutex_);
    return static_cast<int>(connections_.size());
}

void Lines::pump() {
    takeIn();
    deliver();
}

void Lines::takeIn() {
    const std::lock_guard guard(mutex_);
    takeInAll();
}

void Lines::takeInAll() {
    std::erase_if(connections_, [this](Connection& connection) { return takeIn(connection); });
}

// Whether the host closed the line.
bool Lines::takeIn(Connection& connection) {
    bool isClosed = false;
    const Bytes bytes = read(connection, isClosed);
    const Line& line = at(connection.path);
    if (!bytes.empty()) {
        note(connection.path, "> " + chunkOf(bytes));
        if (!line.isSilent && !connection.isHungUp) {
            const Bytes answer = line.device->receive(bytes);
            connection.pending.insert(connection.pending.end(), answer.begin(), answer.end());
        }
    }
    if (isClosed) {
        ::close(connection.fd);
        note(connection.path, "close " + connection.path);
    }
    return isClosed;
}

Lines::Bytes Lines::read(Connection& connection, bool& isClosed) {
    Bytes all;
    std::uint8_t piece[512];
    for (;;) {
        const ssize_t count = ::read(connection.fd, piece, sizeof piece);
        if (count < 0 && errno == EINTR)
            continue;
        isClosed = count == 0 || (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK);
        if (count <= 0)
            return all;
        all.insert(all.end(), piece, piece + count);
    }
}

void Lines::deliver() {
    const std::lock_guard guard(mutex_);
    for (Connection& connection : connections_)
        deliver(connection);
}

void Lines::deliver(Connection& connection) {
    Bytes& pending = connection.pending;
    const std::size_t dribble = at(connection.path).dribble;
    const std::size_t most = dribble == 0 ? pending.size() : std::min(dribble, pending.size());
    const ssize_t count = most == 0 ? 0 : send(connection.fd, pending.data(), most, MSG_NOSIGNAL);
    if (count <= 0)
        return;
    note(connection.path, "< " + chunkOf({pending.data(), static_cast<std::size_t>(count)}));
    pending.erase(pending.begin(), pending.begin() + count);
}

void Lines::wait(int milliseconds) const {
    std::vector<pollfd> ends;
    addTo(ends);
    poll(ends.data(), static_cast<nfds_t>(ends.size()), milliseconds);
}

void Lines::dribble(const std::string& path, std::size_t bytes) {
    const std::lock_guard guard(mutex_);
    at(path).dribble = bytes;
}

void Lines::silence(const std::string& path, bool isSilent) {
    const std::lock_guard guard(mutex_);
    at(path).isSilent = isSilent;
}

void Lines::failOpens(const std::string& path, bool fails) {
    const std::lock_guard guard(mutex_);
    at(path).opensFail = fails;
}

// The simulator's end stays open for reading, so that a write of the host raises no SIGPIPE.
void Lines::hangUp(const std::string& path) {
    const std::lock_guard guard(mutex_);
    takeInAll();
    for (Connection& connection : connections_) {
        if (connection.path != path || connection.isHungUp)
            continue;
        shutdown(connection.fd, SHUT_WR);
        connection.isHungUp = true;
        note(path, "hang up " + path);
    }
}

void Lines::say(const std::string& path, std::span<const std::uint8_t> bytes) {
    const std::lock_guard guard(mutex_);
    for (Connection& connection : connections_)
        if (connection.path == path)
            connection.pending.insert(connection.pending.end(), bytes.begin(), bytes.end());
}

Lines::Line* Lines::find(const std::string& path) {
    const auto line = std::find_if(lines_.begin(), lines_.end(),
                                   [&](const Line& each) { return each.path == path; });
    return line == lines_.end() ? nullptr : &*line;
}

Lines::Line& Lines::at(const std::string& path) {
    Line* const line = find(path);
    if (!line)
        throw std::out_of_range("no line " + path);
    return *line;
}

// With several lines attached the last part of the path tells which one moves bytes.
void Lines::note(const std::string& path, const std::string& event) {
    const bool isMove = event[0] == '>' || event[0] == '<';
    const bool isNamed = isMove && lines_.size() > 1;
    usbBus().note(isNamed ? path.substr(path.rfind('/') + 1) + event : event);
}

} // namespace zel::sim
