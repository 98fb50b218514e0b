// SPDX-License-Identifier: MIT
// Builds frames and exchanges them, with the pauses that the reader needs.
#include "family/band/frame.h"

#include "frame/state.h"
#include "transport/port.h"
#include "transport/usb_driver.h"

#include <algorithm>
#include <cstring>
#include <unistd.h>

using namespace zel;
using band::Frame;
using band::kFrameSize;

namespace {

constexpr useconds_t kReportPause = 2'000; // µs, before a reply is fetched
constexpr useconds_t kFlashPause = 200'000;
constexpr useconds_t kFailurePause = 2'000;
constexpr char kSuccess = 'R';
constexpr char kFailure = 'E';

// The commands that write the reader's flash.
bool isFlashCommand(const Frame& frame) {
    return frame[0] == 'F' && (frame[1] == 'D' || frame[1] == 'W');
}

void pauseFor(const Frame& frame) {
    if (isFlashCommand(frame))
        usleep(kFlashPause);
}

bool exchangeOnLine(const Frame& frame, Frame& reply) {
    CPort* const port = activeRecord().pPort;
    if (!port)
        return false;
    port->Write(frame.data(), frame.size());
    pauseFor(frame);
    Frame received = {};
    const bool isWhole =
        port->Read(received.data(), received.size()) == static_cast<std::int64_t>(kFrameSize);
    if (isWhole && received[0] == kSuccess)
        reply = received;
    return true;
}

bool exchangeOnUsb(const Frame& frame, Frame& reply) {
    std::array<unsigned char, 1 + kFrameSize> report = {};
    std::copy(frame.begin(), frame.end(), report.begin() + 1);
    if (!UsbDriver_SendFR(kFrameSize, iActDev, report.data()))
        return false;
    usleep(kReportPause);
    pauseFor(frame);
    report.fill(0);
    if (!UsbDriver_RecvFR(kFrameSize, iActDev, report.data()))
        return false;
    std::copy(report.begin() + 1, report.end(), reply.begin());
    return true;
}

} // namespace

Frame band::frameOf(const char* text) {
    Frame frame;
    frame.fill('0');
    std::copy_n(text, strnlen(text, kFrameSize - 1), frame.begin());
    frame.back() = '\r';
    return frame;
}

int SendBandCmd(const char* text, char* reply) {
    const Frame frame = band::frameOf(text);
    Frame received = {};
    const bool isOnLine = activeRecord().iDevType == 1;
    const bool exchanged =
        isOnLine ? exchangeOnLine(frame, received) : exchangeOnUsb(frame, received);
    std::copy(received.begin(), received.end(), reply);
    if (!exchanged)
        reply[0] = kFailure;
    if (reply[0] == kSuccess)
        return 1;
    usleep(kFailurePause);
    return 0;
}
