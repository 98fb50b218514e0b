// SPDX-License-Identifier: MIT
// What all kinds of simulated devices have in common for a scene, wherever they are attached.
#pragma once

#include "sim/band/tracks.h"
#include "sim/scene/device_state.h"
#include "sim/scene/faults.h"
#include "sim/scene/setting.h"
#include "sim/wire/device.h"
#include "sim/wire/stream_device.h"
#include "sim/wire/usb_bus.h"

#include <memory>

namespace zel::sim {

class Apparatus {
public:
    Apparatus() = default;
    Apparatus(const Apparatus&) = delete;
    Apparatus& operator=(const Apparatus&) = delete;
    virtual ~Apparatus() = default;

    virtual UsbIdentity identity() const = 0; // without a name
    virtual std::shared_ptr<Device> onUsb() = 0;
    virtual std::size_t reportSize() const { return 8; }            // of its feature report
    virtual std::shared_ptr<StreamDevice> onStream() { return {}; } // null: USB alone
    virtual void powerUp() = 0;

    // What a person does to it; nothing where it isn't such a device.
    virtual void tap(const Card&) {} // a card of 0 bits takes it away
    virtual void swipe(const BandCard&) {}
    virtual void place(int /*inches*/) {}

    // Faults of its byte stream. False: it has no such fault.
    virtual bool fail(const FaultOrder&) { return false; }
    virtual Names streamFaults() const { return {}; }

    virtual Settings settings() { return {}; }
    virtual void keepSettings() {} // over a loss of power

    // Fills in what the kind of device has to tell.
    virtual void describe(DeviceState& state) = 0;
    virtual int streamCommands() const { return 0; }
};

} // namespace zel::sim
