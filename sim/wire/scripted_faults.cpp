// SPDX-License-Identifier: MIT
// Counts exchanges until a fault is due.
#include "sim/wire/scripted_faults.h"

#include <algorithm>

namespace zel::sim {

namespace {
constexpr std::size_t kShortAnswer = 3; // bytes
}

void ScriptedFaults::fail(Fault fault, int count, int after) {
    fault_ = fault;
    faultsLeft_ = count;
    faultsAfter_ = after;
}

void ScriptedFaults::failExchange(int n, int count) {
    failsFrom_ = exchanges_ + n;
    failsLeft_ = count;
}

bool ScriptedFaults::countExchange() {
    ++exchanges_;
    if (failsLeft_ == 0 || exchanges_ < failsFrom_)
        return false;
    --failsLeft_;
    return true;
}

// A fault counts the exchanges of its own direction only.
Fault ScriptedFaults::next(bool isSend) {
    if (faultsLeft_ == 0 || isSend != (fault_ == Fault::SendRefused))
        return Fault::None;
    if (faultsAfter_ > 0) {
        --faultsAfter_;
        return Fault::None;
    }
    --faultsLeft_;
    return fault_;
}

void spoil(std::vector<std::uint8_t>& reply, Fault fault, std::mt19937& random) {
    if (fault == Fault::ShortAnswer)
        reply.resize(std::min(reply.size(), kShortAnswer));
    if (fault == Fault::WrongByte && !reply.empty())
        reply[random() % reply.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
    if (fault == Fault::Garbage)
        std::generate(reply.begin(), reply.end(),
                      [&random] { return static_cast<std::uint8_t>(random()); });
    if (fault == Fault::AllOnes)
        std::fill(reply.begin(), reply.end(), std::uint8_t{0xFF});
}

} // namespace zel::sim
