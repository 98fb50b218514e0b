// SPDX-License-Identifier: MIT
// What a scene does to a magnetic stripe reader and tells of it.
#include "sim/scene/band_apparatus.h"

#include "sim/scene/band_settings.h"

namespace zel::sim {

namespace {

constexpr FaultAs<BandFault> kFaults[] = {
    {FaultKind::None, BandFault::None},
    {FaultKind::NoAnswer, BandFault::Silence},
    {FaultKind::ShortAnswer, BandFault::ShortReply},
    {FaultKind::WrongByte, BandFault::WrongFirstByte},
    {FaultKind::Garbage, BandFault::Garbage},
};

constexpr unsigned kLeds = 5;
constexpr const char* kColours[] = {"off", "red", "green", "amber"};

} // namespace

void BandApparatus::swipe(const BandCard& card) { reader_->swipe(card); }

bool BandApparatus::fail(const FaultOrder& order) {
    const auto fault = nativeFault<BandFault>(kFaults, order.kind);
    if (fault)
        reader_->fail(*fault, order.count, order.after);
    return fault.has_value();
}

Names BandApparatus::streamFaults() const { return faultNames<BandFault>(kFaults); }

Settings BandApparatus::settings() { return bandSettings(*reader_); }

void BandApparatus::describe(DeviceState& state) {
    for (unsigned led = 0; led < kLeds; ++led)
        state.leds.emplace_back(std::to_string(led), kColours[reader_->ledColor(led) & 3]);
    for (const BandBeep& beep : reader_->takeBeeps())
        beeps_ += beep.count;
    state.beeps = beeps_;
    state.violations = reader_->violations();
    state.lastViolation = reader_->lastViolation();
}

} // namespace zel::sim
