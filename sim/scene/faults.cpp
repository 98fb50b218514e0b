// SPDX-License-Identifier: MIT
// The names of the faults.
#include "sim/scene/faults.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr FaultRow kRows[] = {
    {FaultKind::None, "none", "nothing goes wrong any more", true},
    {FaultKind::NextWrite, "next-write", "a report can't be sent", false},
    {FaultKind::NextRead, "next-read", "a report can't be fetched", false},
    {FaultKind::NoAnswer, "no-answer", "a command isn't answered", false},
    {FaultKind::ShortAnswer, "short-answer", "an answer is cut", false},
    {FaultKind::WrongByte, "wrong-byte", "an answer has a wrong byte", false},
    {FaultKind::AllOnes, "all-ones", "an answer is 0xFF everywhere", false},
    {FaultKind::Garbage, "garbage", "an answer is random bytes", false},
    {FaultKind::WrongStatus, "wrong-status", "an answer ends in status word 6F 00", false},
    {FaultKind::WrongProcedure, "wrong-procedure", "a frame is refused with 6F 00", false},
    {FaultKind::Open, "open", "it can't be opened", true},
    {FaultKind::Dribble, "dribble", "answers come byte by byte", true},
    {FaultKind::Silence, "silence", "what is sent gets lost", true},
    {FaultKind::HangUp, "hang-up", "the line is closed from its other end", true},
    {FaultKind::Close, "close", "the connection ends behind three bytes", true},
    {FaultKind::Reset, "reset", "the same, by a reset", true},
};

} // namespace

std::span<const FaultRow> allFaults() { return kRows; }

const FaultRow* findFault(std::string_view name) {
    const auto* const found = std::ranges::find(kRows, name, &FaultRow::name);
    return found == std::end(kRows) ? nullptr : found;
}

const FaultRow& rowOf(FaultKind kind) { return *std::ranges::find(kRows, kind, &FaultRow::kind); }

} // namespace zel::sim
