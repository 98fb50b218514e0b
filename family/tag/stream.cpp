// SPDX-License-Identifier: MIT
// The six exchanges of frames, with the pauses that the reader needs.
#include "family/tag/stream.h"

#include "base/pause.h"
#include "base/wipe.h"
#include "transport/port.h"

#include <unistd.h>

namespace zel::tag::stream {

namespace {

constexpr useconds_t kClassPause = 50'000;       // µs, behind the class byte on a line
constexpr useconds_t kHeaderPause = 50'000;      // behind the header on TCP
constexpr useconds_t kDataPause = 500'000;       // behind the data on TCP
constexpr useconds_t kAtOncePause = 10'000;      // before a reply that is read at once
constexpr useconds_t kAfterSuccessPause = 2'000; // and behind it
constexpr useconds_t kAfterFailurePause = 10'000;

constexpr unsigned kHeader = 4;    // bytes behind the class byte
constexpr std::size_t kDataAt = 3; // of a reply read at once
constexpr std::size_t kStatusAt = 11;

char* at(Frame& frame, std::size_t place) { return reinterpret_cast<char*>(&frame.bytes[place]); }

// The active device's open stream, or null.
CPort* begin(Frame& frame) {
    frame.bytes[Frame::kStatus] = frame.bytes[Frame::kStatus + 1] = 0;
    lLastICSWErr = 0;
    CPort* const port = activeRecord().pPort;
    return port && port->IsConn() ? port : nullptr;
}

// The class byte goes out alone, ahead of the rest of the header.
void sendHeader(CPort& port, Frame& frame, unsigned length) {
    port.Write(at(frame, 0), 1);
    if (!port.IsTcpIpMode())
        pauseFor(kClassPause);
    port.Write(at(frame, 1), length);
}

bool receive(CPort& port, Frame& frame, std::size_t place, unsigned size) {
    return port.Read(at(frame, place), size) == static_cast<std::int64_t>(size);
}

void tellStatus(unsigned first, unsigned second) { lLastICSWErr = first << 8 | second; }

// Whether the reader goes on. A refusal leaves its status word where data would stand. A byte that
// doesn't come counts as 0.
bool takesProcedureByte(CPort& port, Frame& frame) {
    std::uint8_t procedure = 0;
    port.Read(reinterpret_cast<char*>(&procedure), 1);
    if (procedure == frame.instruction())
        return true;
    frame.bytes[Frame::kReply] = procedure;
    port.Read(at(frame, Frame::kReply + 1), 1);
    tellStatus(procedure, frame.bytes[Frame::kReply + 1]);
    return false;
}

bool takesStatus(CPort& port, Frame& frame) {
    port.Read(at(frame, Frame::kStatus), 2);
    tellStatus(frame.bytes[Frame::kStatus], frame.bytes[Frame::kStatus + 1]);
    return frame.status() == kDone;
}

void flushBefore(CPort& port) {
    port.FlushTx();
    if (port.IsTcpIpMode())
        port.FlushRx();
}

bool readWithoutStatus(Frame& frame, unsigned size) {
    CPort* const port = begin(frame);
    if (!port)
        return false;
    flushBefore(*port);
    sendHeader(*port, frame, kHeader);
    return takesProcedureByte(*port, frame) && receive(*port, frame, Frame::kReply, size);
}

} // namespace

void flushOutgoing() {
    if (CPort* const port = activeRecord().pPort)
        port->FlushTx();
}

Frame::~Frame() { wipe(bytes.data(), bytes.size()); }

Payload Frame::payload() const {
    Payload payload;
    std::copy_n(data(), payload.size(), payload.begin());
    return payload;
}

bool read(Frame& frame, unsigned headLength, unsigned replyLength) {
    CPort* const port = begin(frame);
    if (!port)
        return false;
    port->FlushTx();
    port->FlushRx();
    if (port->IsTcpIpMode())
        port->FlushRx();
    sendHeader(*port, frame, headLength);
    if (port->IsTcpIpMode())
        pauseFor(kHeaderPause);
    const unsigned size = replyLength != 0 ? replyLength - 1 : frame.length();
    return takesProcedureByte(*port, frame) && receive(*port, frame, Frame::kReply, size) &&
           takesStatus(*port, frame);
}

bool readEight(Frame& frame) { return readWithoutStatus(frame, kPayloadSize); }

bool readCounted(Frame& frame) { return readWithoutStatus(frame, frame.bytes[Frame::kCount]); }

bool readAtOnce(Frame& frame) {
    CPort* const port = begin(frame);
    if (!port)
        return false;
    flushBefore(*port);
    sendHeader(*port, frame, kHeader);
    pauseFor(kAtOncePause);
    std::array<std::uint8_t, 13> reply = {};
    port->Read(reinterpret_cast<char*>(reply.data()), reply.size());
    if (reply[0] != frame.instruction())
        return false;
    std::copy_n(&reply[kDataAt], kPayloadSize, &frame.bytes[Frame::kReply]);
    std::copy_n(&reply[kStatusAt], 2, &frame.bytes[Frame::kStatus]);
    const bool isDone = frame.status() == kDone;
    pauseFor(isDone ? kAfterSuccessPause : kAfterFailurePause);
    return isDone;
}

bool write(Frame& frame) {
    CPort* const port = begin(frame);
    if (!port)
        return false;
    flushBefore(*port);
    sendHeader(*port, frame, kHeader);
    if (!takesProcedureByte(*port, frame))
        return false;
    port->Write(at(frame, Frame::kOutgoing),
                std::min<unsigned>(frame.length(), Frame::kMostOutgoing));
    if (port->IsTcpIpMode())
        pauseFor(kDataPause);
    return takesStatus(*port, frame);
}

bool command(Frame& frame) {
    CPort* const port = begin(frame);
    if (!port)
        return false;
    port->FlushTx();
    port->Write(at(frame, 0), 1);
    port->Write(at(frame, 1), kHeader);
    return takesStatus(*port, frame);
}

} // namespace zel::tag::stream
