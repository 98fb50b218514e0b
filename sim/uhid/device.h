// SPDX-License-Identifier: MIT
// A device of the simulated bus as a HID device of this system, which any program sees.
#pragma once

#include "sim/link/descriptor.h"
#include "sim/server/face.h"
#include "sim/uhid/events.h"

namespace zel::sim {

class UhidDevice : public Face {
public:
    // Over /dev/uhid, or what takes its place in a test: each event is one read or write.
    UhidDevice(Descriptor kernel, std::size_t port, std::size_t reportSize);
    ~UhidDevice() override;

    void addTo(std::vector<pollfd>& ends) const override;

    // Answers the kernel, and comes and goes with the device on the bus.
    void serve() override;

private:
    bool send(const UhidBytes& event) const;
    void setPresent(bool isPresent);
    void answer(const UhidRequest& request) const;
    bool set(const UhidRequest& request) const;
    UhidBytes get(const UhidRequest& request) const;

    Descriptor kernel_;
    std::size_t port_;
    UhidIdentity identity_;
    void* handle_ = nullptr; // on the bus; null while the device is away
};

} // namespace zel::sim
