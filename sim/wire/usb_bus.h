// SPDX-License-Identifier: MIT
// A simulated USB bus: devices come and go, fail on demand, and every event can be traced.
//
// The library knows the bus as its USB backend. There is one bus a process, never destroyed, since
// the library still closes handles while the process exits.
#pragma once

#include "sim/wire/device.h"
#include "sim/wire/scripted_faults.h"
#include "transport/usb_backend.h"

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace zel::sim {

struct UsbIdentity {
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    std::string name;
};

class UsbBus {
public:
    // Makes the bus the library's USB backend. False when the library still holds a USB handle.
    bool install();

    // Gives the library its platform's own backend back.
    static bool uninstall();

    // Takes every device off the bus and ends the trace.
    void clear();

    // Plugs a device in; the result names it below.
    std::size_t plug(std::shared_ptr<Device> device, UsbIdentity identity);

    // An unplugged device fails each exchange; its handles stay open until they are closed.
    void unplug(std::size_t port);
    void replug(std::size_t port);

    // Lets a device's opens fail, or its next `count` exchanges after the first `after` ones.
    void failOpens(std::size_t port, bool fails) { ports_.at(port).opensFail = fails; }
    void fail(std::size_t port, Fault fault, int count = 1, int after = 0) {
        ports_.at(port).faults.fail(fault, count, after);
    }

    // Lets the n-th exchange from now on fail, a send or a get, and `count` - 1 more behind it; the
    // next exchange is the first. Apart from fail().
    void failExchange(std::size_t port, int n, int count = 1) {
        ports_.at(port).faults.failExchange(n, count);
    }

    // Sends and gets since the device was plugged in, those that failed among them.
    int exchanges(std::size_t port) const { return ports_.at(port).faults.exchanges(); }

    // Starts the random bytes of the faults anew.
    void seed(std::uint32_t number) { random_.seed(number); }

    int openHandles() const;

    // The ports with a device that is present, what is plugged into one, and opening one: a handle
    // of the backend, null when that fails. For who carries the bus to other processes.
    std::vector<std::size_t> presentPorts() const;
    const UsbIdentity& identity(std::size_t port) const { return ports_.at(port).identity; }
    void* open(std::size_t port);

    // Records every open, close and exchange as a line of text, until clear().
    void startTrace();
    void note(const std::string& line); // adds a line of the caller's own, such as a pause
    std::string takeTrace();

    const UsbBackend& backend() const;

private:
    friend struct BusBackend;
    struct Port {
        std::shared_ptr<Device> device;
        UsbIdentity identity;
        bool present = true;
        bool opensFail = false;
        ScriptedFaults faults = {};
    };
    struct Handle {
        std::size_t port;
        bool open;
    };

    static bool fetch(Port& port, Fault fault, std::uint8_t reportId,
                      std::span<std::uint8_t> reply);
    bool deliver(Port& port, std::uint8_t reportId, std::span<const std::uint8_t> payload);
    void noteRemark(Port& port);
    Handle* find(void* handle);
    void traceExchange(const Port& port, char direction, std::span<const std::uint8_t> bytes,
                       const std::string& name);

    std::vector<Port> ports_;
    std::vector<std::size_t> listed_;
    std::vector<Handle> handles_; // a library handle is an index plus one
    std::mt19937 random_;
    std::string trace_;
    bool traces_ = false;
};

UsbBus& usbBus();

} // namespace zel::sim
