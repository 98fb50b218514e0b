// SPDX-License-Identifier: MIT
// Where a device of a scene is attached.
#pragma once

#include "sim/bridge/bridge.h"
#include "sim/scene/apparatus.h"

#include <poll.h>

namespace zel::sim {

class Place {
public:
    Place() = default;
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    virtual ~Place() = default;

    virtual std::string text() const = 0; // "usb", "/dev/ttySIM1", "bridge 127.0.0.1:10001"

    virtual void plug() = 0; // the device itself is told apart from it
    virtual void unplug() = 0;

    // Faults of the way to the device. False: it has no such fault.
    virtual bool fail(const FaultOrder& order) = 0;

    // Exchanges of the way itself; nothing where only the device counts.
    virtual std::optional<int> exchanges() const { return {}; }

    // Whether answers leave it byte by byte, so that it needs a turn every few milliseconds.
    virtual bool dribbles() const { return false; }
};

// On the simulated bus, under the name "sim:NAME".
class UsbPlace : public Place {
public:
    UsbPlace(Apparatus& device, const std::string& name);

    std::string text() const override { return "usb"; }
    void plug() override;
    void unplug() override;
    bool fail(const FaultOrder& order) override;
    static Names faults();
    std::optional<int> exchanges() const override;

private:
    std::size_t port_;
};

// At the end of a simulated serial line.
class LinePlace : public Place {
public:
    LinePlace(Apparatus& device, std::string path);

    std::string text() const override { return path_; }
    void plug() override;
    void unplug() override;
    bool fail(const FaultOrder& order) override;
    static Names faults();
    bool dribbles() const override { return dribbles_; }

private:
    void clearFaults();

    std::string path_;
    bool dribbles_ = false;
};

// Behind a network bridge of this machine, which opens its ports when it is started.
class BridgePlace : public Place {
public:
    explicit BridgePlace(Apparatus& device) : device_(device) {}

    // False, with errno, when a port can't be had; bridge() tells which.
    bool start(const BridgeOptions& options);
    Bridge& bridge() { return *bridge_; }
    bool isStarted() const { return bridge_.has_value(); }
    const BridgeOptions& options() const { return options_; }

    std::string text() const override;
    void plug() override;
    void unplug() override;
    bool fail(const FaultOrder& order) override;
    static Names faults();
    bool dribbles() const override;

private:
    void setPresent(bool isPresent);

    Apparatus& device_;
    BridgeOptions options_;
    std::optional<Bridge> bridge_;
};

// The faults that a device has where it is attached: "usb", "bridge" or the path of a line.
Names faultsAt(const std::string& at, const Apparatus& device);

} // namespace zel::sim
