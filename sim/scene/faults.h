// SPDX-License-Identifier: MIT
// What can be made to go wrong, by name: in a scenario, on the control socket, on a command line.
#pragma once

#include "sim/scene/names.h"

#include <optional>
#include <span>
#include <string_view>

namespace zel::sim {

enum class FaultKind {
    None,
    NextWrite,
    NextRead,
    NoAnswer,
    ShortAnswer,
    WrongByte,
    AllOnes,
    Garbage,
    WrongStatus,
    WrongProcedure,
    Open,
    Dribble,
    Silence,
    HangUp,
    Close,
    Reset,
};

struct FaultRow {
    FaultKind kind;
    const char* name;
    const char* meaning;
    bool lasts; // until `none`: it has neither count nor after
};

struct FaultOrder {
    FaultKind kind = FaultKind::None;
    int count = 1; // so many exchanges or commands go wrong
    int after = 0; // behind so many good ones
};

std::span<const FaultRow> allFaults();
const FaultRow* findFault(std::string_view name);
const FaultRow& rowOf(FaultKind kind);

// A fault of this table as that of a device or of what carries its bytes.
template <class Native> struct FaultAs {
    FaultKind kind;
    Native native;
};

template <class Native>
std::optional<Native> nativeFault(std::span<const FaultAs<Native>> rows, FaultKind kind) {
    for (const FaultAs<Native>& row : rows)
        if (row.kind == kind)
            return row.native;
    return {};
}

template <class Native> Names faultNames(std::span<const FaultAs<Native>> rows) {
    Names names;
    for (const FaultAs<Native>& row : rows)
        names.emplace_back(rowOf(row.kind).name);
    return names;
}

} // namespace zel::sim
