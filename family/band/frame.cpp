// SPDX-License-Identifier: MIT
// Builds frames and exchanges them, with the pauses that the reader needs.
#include "family/band/frame.h"

#include "base/pause.h"
#include "frame/state/state.h"
#include "transport/port.h"
#include "transport/usb_driver.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <unistd.h>

using namespace zel;
using band::Frame;
using band::kFrameSize;

namespace {

constexpr useconds_t kReportPause = 2'000; // µs, before a reply is fetched
constexpr useconds_t kFlashPause = 200'000;
constexpr useconds_t kFailurePause = 2'000;
constexpr useconds_t kRetryPause = 25'000;
constexpr std::size_t kPayloadAt = 3;
constexpr std::size_t kPair = 2;
constexpr signed char kFirstDigit = '0';
constexpr std::string_view kAnswer = "RRZ";
constexpr char kSuccess = 'R';
constexpr char kFailure = 'E';

// The commands that write the reader's flash.
bool isFlashCommand(const Frame& frame) {
    return frame[0] == 'F' && (frame[1] == 'D' || frame[1] == 'W');
}

void pauseBehind(const Frame& frame) {
    if (isFlashCommand(frame))
        pauseFor(kFlashPause);
}

bool exchangeOnLine(const Frame& frame, Frame& reply) {
    CPort* const port = activeRecord().pPort;
    if (!port)
        return false;
    port->Write(frame.data(), frame.size());
    pauseBehind(frame);
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
    pauseFor(kReportPause);
    pauseBehind(frame);
    report.fill(0);
    if (!UsbDriver_RecvFR(kFrameSize, iActDev, report.data()))
        return false;
    std::copy(report.begin() + 1, report.end(), reply.begin());
    return true;
}

// What isn't a digit ends the number.
std::uint8_t numberOf(std::string_view digits) {
    std::uint8_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return number;
}

bool asksPartNumber(Frame& reply) {
    return band::send(band::Command("QRZ"), reply) &&
           std::string_view(reply.data(), reply.size()).starts_with(kAnswer);
}

} // namespace

namespace zel::band {

Command::Command(std::string_view start) { add(start); }

Command& Command::add(std::string_view piece) {
    size_ += piece.copy(&text_[size_], text_.size() - 1 - size_);
    return *this;
}

Command& Command::hex(int byte) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(byte & 0xFF));
    return add(digits);
}

bool send(const Command& command, Frame& reply) {
    return SendBandCmd(command.text(), reply.data()) != 0;
}

bool ask(const Command& command, Bytes& payload) {
    payload.fill(0);
    Frame reply;
    if (!send(command, reply))
        return false;
    HexToBytes(payload.data(), &reply[kPayloadAt]);
    return true;
}

bool askPartNumber(Frame& reply) {
    if (asksPartNumber(reply))
        return true;
    pauseFor(kRetryPause);
    return asksPartNumber(reply);
}

std::uint8_t pairAt(const Frame& frame, std::size_t place) {
    return numberOf(std::string_view(frame.data(), frame.size()).substr(place, kPair));
}

} // namespace zel::band

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
    pauseFor(kFailurePause);
    return 0;
}

void HexToBytes(unsigned char* destination, const char* source) {
    for (std::size_t pair = 0; pair < band::kMostBytes; ++pair, source += kPair) {
        if (static_cast<signed char>(*source) < kFirstDigit)
            return;
        const std::string_view digits(source, strnlen(source, kPair));
        destination[pair] = numberOf(digits);
        if (digits.size() < kPair)
            return;
    }
}
