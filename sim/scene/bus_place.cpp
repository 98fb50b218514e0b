// SPDX-License-Identifier: MIT
// A device of a scene on the simulated bus.
#include "sim/scene/place.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr FaultAs<Fault> kFaults[] = {
    {FaultKind::NextWrite, Fault::SendRefused}, {FaultKind::NextRead, Fault::NoAnswer},
    {FaultKind::NoAnswer, Fault::NoAnswer},     {FaultKind::ShortAnswer, Fault::ShortAnswer},
    {FaultKind::WrongByte, Fault::WrongByte},   {FaultKind::AllOnes, Fault::AllOnes},
    {FaultKind::Garbage, Fault::Garbage},
};

UsbIdentity identityOf(const Apparatus& device, const std::string& name) {
    UsbIdentity identity = device.identity();
    identity.name = "sim:" + name;
    return identity;
}

} // namespace

UsbPlace::UsbPlace(Apparatus& device, const std::string& name)
    : port_(usbBus().plug(device.onUsb(), identityOf(device, name))) {}

void UsbPlace::plug() { usbBus().replug(port_); }

void UsbPlace::unplug() { usbBus().unplug(port_); }

bool UsbPlace::fail(const FaultOrder& order) {
    if (order.kind == FaultKind::None)
        usbBus().fail(port_, Fault::None, 0);
    if (order.kind == FaultKind::None || order.kind == FaultKind::Open) {
        usbBus().failOpens(port_, order.kind == FaultKind::Open);
        return true;
    }
    const auto fault = nativeFault<Fault>(kFaults, order.kind);
    if (fault)
        usbBus().fail(port_, *fault, order.count, order.after);
    return fault.has_value();
}

Names UsbPlace::faults() {
    Names names = {rowOf(FaultKind::None).name, rowOf(FaultKind::Open).name};
    for (const auto& row : kFaults)
        names.emplace_back(rowOf(row.kind).name);
    return names;
}

Names faultsAt(const std::string& at, const Apparatus& device) {
    if (at == "usb")
        return UsbPlace::faults();
    Names names = at == "bridge" ? BridgePlace::faults() : LinePlace::faults();
    for (const std::string& name : device.streamFaults())
        if (std::ranges::find(names, name) == names.end())
            names.push_back(name);
    return names;
}

std::optional<int> UsbPlace::exchanges() const { return usbBus().exchanges(port_); }

} // namespace zel::sim
