// SPDX-License-Identifier: MIT
// A machine with a reader at a hidraw node, and at a serial line or a network bridge too. The
// library's own calls reach it, by the kernel that stands at the trap.
#pragma once

#include "sim/bridge/bridge.h"
#include "sim/tag/reader.h"
#include "tests/faults/trapped_calls.h"

#include <bitset>
#include <memory>
#include <string>

namespace zel::test {

class Machine {
public:
    static constexpr const char* kLine = "/dev/ttySIM1";

    enum class Place { Usb, Line, Bridge };

    // A node is always there, its files below `root`.
    Machine(std::string root, std::shared_ptr<sim::TagReader> reader, Place place);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // Writes the files of the node below `root`.
    static void furnish(const std::string& root);

    // HOST:PORT of the bridge.
    std::string bridge() const;

    // What the reader keeps, in a number; without the card type, of which WriteCfg() doesn't tell
    // whether it got there.
    std::size_t memory() const;

    // Calls go to the machine there is, or to the one below it.
    static Kernel kernel();

private:
    long call(long number, CallArguments arguments);
    void fail(long number, CallArguments arguments);
    long answered(long result);
    long open(long number, CallArguments arguments);
    long control(int descriptor, CallArguments arguments);
    void putUpBridge();
    void work();
    void serveBridge();

    std::string root_;
    std::shared_ptr<sim::TagReader> reader_;
    std::shared_ptr<sim::StreamDevice> stream_;
    std::unique_ptr<sim::Bridge> bridge_;
    std::bitset<kWatchedDescriptors> nodes_;
    std::bitset<kWatchedDescriptors> lines_;
};

} // namespace zel::test
