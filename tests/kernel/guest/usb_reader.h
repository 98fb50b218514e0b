// SPDX-License-Identifier: MIT
// A simulated reader as a USB device of the virtual machine, which the same machine's host side
// meets with its own driver for HID on USB.
#pragma once

#include "sim/tag/reader.h"

#include <atomic>
#include <linux/usb/functionfs.h>
#include <thread>

namespace zel::test {

class UsbReader {
public:
    enum class Fault {
        None,
        RefuseReport, // a report that is sent
        RefuseAnswer, // a report that is fetched
        ShortAnswer,  // of three bytes
        NoAnswer,     // none until the next fault, or none, is set
    };

    UsbReader();
    ~UsbReader();
    UsbReader(const UsbReader&) = delete;
    UsbReader& operator=(const UsbReader&) = delete;

    sim::TagReader& reader() { return reader_; }
    void fail(Fault fault);

    // What a hand does to the cable: they return when the node is there, and at once.
    void plug();
    void unplug();

private:
    void serve();
    void answer(const usb_ctrlrequest& request);
    void takeReport(std::size_t size);
    void giveReport(std::size_t size);
    void give(const std::uint8_t* bytes, std::size_t size, std::size_t wanted) const;
    void refuse(bool isWanted) const;

    sim::TagReader reader_;
    std::atomic<Fault> fault_ = Fault::None;
    int endpoint_ = -1;
    int stop_ = -1;
    std::thread server_;
};

} // namespace zel::test
