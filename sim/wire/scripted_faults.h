// SPDX-License-Identifier: MIT
// What goes wrong with the exchanges of a device on the simulated bus, and when.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace zel::sim {

enum class Fault {
    None,
    SendRefused, // a report can't be set
    NoAnswer,    // a report can't be fetched
    ShortAnswer, // three bytes of the reply arrive
    WrongByte,   // one byte of the reply, any of them, is another
    Garbage,     // the reply is random bytes
    AllOnes,     // the reply is 0xFF everywhere
};

// A fault of the next exchanges in its direction, and apart from it a failure of the n-th exchange
// in either one.
class ScriptedFaults {
public:
    void fail(Fault fault, int count, int after);
    void failExchange(int n, int count);

    // Counts a send or a fetch; whether it is one that fails by its number.
    bool countExchange();
    int exchanges() const { return exchanges_; }

    // What goes wrong with the send or the fetch that comes now.
    Fault nextSend() { return next(true); }
    Fault nextFetch() { return next(false); }

private:
    Fault next(bool isSend);

    Fault fault_ = Fault::None;
    int faultsLeft_ = 0;
    int faultsAfter_ = 0;
    int exchanges_ = 0;
    int failsFrom_ = 0; // number of the first exchange that fails
    int failsLeft_ = 0;
};

// Makes of a reply what arrives of it.
void spoil(std::vector<std::uint8_t>& reply, Fault fault, std::mt19937& random);

} // namespace zel::sim
