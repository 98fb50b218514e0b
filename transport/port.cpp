// SPDX-License-Identifier: MIT
// Reads, writes and waits of a byte stream.
#include "transport/port.h"

#include "base/pause.h"
#include "frame/state/state.h"
#include "transport/observer.h"
#include "transport/serial_lines.h"
#include "transport/tcp_socket.h"
#include "transport/terminal.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <unistd.h>
#include <utility>

using namespace zel;

namespace {

constexpr int kReadPolls = 100;
constexpr useconds_t kReadPause = 5'000; // µs
constexpr int kQuickPolls = 75;
constexpr useconds_t kQuickPause = 1'000;
constexpr useconds_t kWritePause = 5'000;
constexpr useconds_t kPairPause = 1'000;
constexpr useconds_t kCleanPause = 20'000;
constexpr std::size_t kPair = 2;
constexpr int kScratch = 128;

// What one read brings; a failed one brings nothing.
unsigned long take(int fd, char* buffer, unsigned long size) {
    const ssize_t count = read(fd, buffer, size);
    return count > 0 ? static_cast<unsigned long>(count) : 0;
}

const char* pathOf(unsigned number) {
    const char* const line = registeredPath(number);
    return line ? line : "";
}

// The product is the active device's: the families exchange with no other.
Observed exchangeOn(unsigned number) {
    return {ZELTAGAPI_TRACE_LINE, pathOf(number), static_cast<int>(activeRecord().iProduct)};
}

} // namespace

CPort::~CPort() {
    Disconnect();
    closeLine();
}

void CPort::SetPort(unsigned long port) {
    const bool isLine = port >= 1 && port <= kMostPorts;
    iPort = static_cast<std::uint16_t>(bTcpIp || isLine ? port : 1);
}

void CPort::SetTcpIp(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d) {
    ipAddr = {a, b, c, d};
    bTcpIp = true;
}

void CPort::SetBaud(unsigned long rate) {
    baudrate = static_cast<std::uint32_t>(rate);
    if (iFd != -1)
        terminal::setRaw(iFd, baudrate);
}

void CPort::initPort(int fd) {
    terminal::setBlocking(fd);
    terminal::prepare(fd, baudrate);
    SetBaud(baudrate);
}

bool CPort::Connect() {
    if (bTcpIp)
        return socket_Open(ipAddr[0], ipAddr[1], ipAddr[2], ipAddr[3], iPort) == 0;
    Disconnect();
    const char* const line = registeredPath(iPort);
    if (!line)
        return false;
    closeLine(); // still open where Disconnect() closed the socket
    Observed opening(ZELTAGAPI_TRACE_LINE, line);
    iFd = terminal::openLine(line);
    opening.tell(ZELTAGAPI_TRACE_OPEN, iFd != -1);
    if (iFd == -1)
        return false;
    initPort(iFd);
    terminal::discardInput(iFd);
    return true;
}

int CPort::Disconnect() {
    if (socket_IsOpen())
        socket_Close();
    else
        closeLine();
    return 1;
}

void CPort::closeLine() {
    if (iFd == -1)
        return;
    Observed closing(ZELTAGAPI_TRACE_LINE, pathOf(iPort));
    terminal::discardBoth(iFd);
    close(std::exchange(iFd, -1));
    closing.tell(ZELTAGAPI_TRACE_CLOSE, true);
}

bool CPort::IsConn() const { return socket_IsOpen() || iFd != -1; }

void CPort::FlushTx() {
    if (!socket_IsOpen() && iFd != -1)
        terminal::discardOutput(iFd);
}

void CPort::FlushRx() {
    if (socket_IsOpen()) {
        std::array<char, kScratch> scratch;
        socket_Recv(scratch.data(), kScratch);
    } else if (iFd != -1) {
        terminal::discardInput(iFd);
    }
}

std::int64_t CPort::Read(char* buffer, unsigned long size) {
    if (socket_IsOpen())
        return socket_Recv(buffer, static_cast<int>(size));
    std::memset(buffer, 0, size);
    if (iFd == -1)
        return 0;
    Observed reading = exchangeOn(iPort);
    terminal::setNonBlocking(iFd);
    unsigned long count = 0;
    for (int poll = 0; poll < kReadPolls && count < size; ++poll) {
        count += take(iFd, buffer + count, size - count);
        if (count < size)
            pauseFor(kReadPause);
    }
    reading.tell(ZELTAGAPI_TRACE_RECEIVE, count > 0 || size == 0, buffer, static_cast<long>(count));
    return static_cast<std::int64_t>(count);
}

std::int64_t CPort::QuickRead(char* buffer, unsigned long size) {
    std::memset(buffer, 0, size);
    if (socket_IsOpen())
        return socket_Recv(buffer, static_cast<int>(size));
    if (iFd == -1)
        return 0;
    Observed reading = exchangeOn(iPort);
    terminal::setNonBlocking(iFd);
    unsigned long count = 0;
    for (int quiet = 0; quiet < kQuickPolls && count < size;) {
        const unsigned long piece = take(iFd, buffer + count, size - count);
        count += piece;
        quiet += piece == 0 ? 1 : 0;
        if (count < size)
            pauseFor(kQuickPause);
    }
    reading.tell(ZELTAGAPI_TRACE_RECEIVE, count > 0 || size == 0, buffer, static_cast<long>(count));
    return static_cast<std::int64_t>(count);
}

std::int64_t CPort::Write(const char* buffer, unsigned long size) {
    if (socket_IsOpen())
        return socket_Send(buffer, static_cast<int>(size));
    if (iFd == -1)
        return 0;
    Observed writing = exchangeOn(iPort);
    unsigned long count = 0;
    while (count < size) {
        const long piece = terminal::writeThrough(iFd, buffer + count, size - count);
        terminal::discardOutput(iFd);
        count += static_cast<unsigned long>(std::max(piece, 0L));
        if (count < size)
            pauseFor(kWritePause);
    }
    writing.tell(ZELTAGAPI_TRACE_SEND, true, buffer, static_cast<long>(count));
    return static_cast<std::int64_t>(count);
}

void CPort::SendAscii(const char* text) {
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view pair = rest.substr(0, kPair);
        Write(pair.data(), pair.size());
        pauseFor(kPairPause);
        rest.remove_prefix(pair.size());
    }
}

bool CPort::ExpectAscii(const char* first, const char* second) {
    std::array<char, 1024> answer = {};
    Read(answer.data(), answer.size());
    const std::string_view came(answer.data(), answer.size());
    return came.find(first) != came.npos && (!second || came.find(second) != came.npos);
}

void CPort::ACPClean() {
    FlushTx();
    pauseFor(kCleanPause);
    FlushRx();
}
