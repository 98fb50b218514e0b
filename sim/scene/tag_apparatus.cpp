// SPDX-License-Identifier: MIT
// What a scene does to a proximity reader and tells of it.
#include "sim/scene/tag_apparatus.h"

#include "sim/scene/tag_settings.h"

namespace zel::sim {

namespace {

constexpr FaultAs<StreamFault> kFaults[] = {
    {FaultKind::None, StreamFault::None},
    {FaultKind::NoAnswer, StreamFault::Silence},
    {FaultKind::ShortAnswer, StreamFault::ShortData},
    {FaultKind::Garbage, StreamFault::Garbage},
    {FaultKind::WrongStatus, StreamFault::WrongStatus},
    {FaultKind::WrongProcedure, StreamFault::WrongProcedureByte},
};

const char* onOrOff(bool isOn) { return isOn ? "on" : "off"; }

} // namespace

void TagApparatus::tap(const Card& card) { reader_->present(card); }

bool TagApparatus::fail(const FaultOrder& order) {
    const auto fault = nativeFault<StreamFault>(kFaults, order.kind);
    if (fault)
        stream_->fail(*fault, order.count, order.after);
    return fault.has_value();
}

Names TagApparatus::streamFaults() const { return faultNames<StreamFault>(kFaults); }

Settings TagApparatus::settings() { return tagSettings(*reader_); }

void TagApparatus::describe(DeviceState& state) {
    if (const Card card = reader_->cardInField(); card.bits != 0)
        state.card = card;
    state.leds = {{"red", onOrOff(reader_->isRedOn())}, {"green", onOrOff(reader_->isGreenOn())}};
    const Settings words = settings();
    if (const Setting* const relay = findSetting(words, "BprRlyCtrl.iRelayState"))
        state.relay = relay->get() != 0;
    state.beeps = reader_->beeps();
    state.violations = reader_->violations();
    state.lastViolation = reader_->lastViolation();
}

} // namespace zel::sim
