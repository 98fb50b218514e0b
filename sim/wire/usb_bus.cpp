// SPDX-License-Identifier: MIT
// The simulated bus behind the library's USB seam.
#include "sim/wire/usb_bus.h"

#include "sim/wire/byte_text.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zel::sim {

UsbBus& usbBus() {
    static UsbBus* const bus = new UsbBus;
    return *bus;
}

// The functions of the seam; each works on the one bus.
struct BusBackend {
    static int start() { return 1; }
    static void stop() {}

    static int list() {
        UsbBus& bus = usbBus();
        bus.listed_ = bus.presentPorts();
        return static_cast<int>(bus.listed_.size());
    }

    static std::size_t listed(int index) {
        return usbBus().listed_[static_cast<std::size_t>(index)];
    }

    static void ids(int index, unsigned* vendor, unsigned* product) {
        const UsbIdentity& identity = usbBus().identity(listed(index));
        *vendor = identity.vendor;
        *product = identity.product;
    }

    static void* open(int index, char* name) {
        const std::size_t port = listed(index);
        void* const handle = usbBus().open(port);
        if (handle)
            std::strncpy(name, usbBus().identity(port).name.c_str(), 511);
        return handle;
    }

    static void unlist() { usbBus().listed_.clear(); }

    static void close(void* handle) {
        UsbBus& bus = usbBus();
        UsbBus::Handle* const entry = bus.find(handle);
        if (!entry) {
            bus.note("close of a handle that isn't open");
            return;
        }
        entry->open = false;
        bus.note("close " + bus.ports_[entry->port].identity.name);
    }

    static int setFeature(void* handle, unsigned char reportId, const unsigned char* data,
                          long size) {
        UsbBus& bus = usbBus();
        UsbBus::Handle* const entry = bus.find(handle);
        if (!entry || size < 0)
            return 0;
        UsbBus::Port& port = bus.ports_[entry->port];
        std::span<const std::uint8_t> payload(data, static_cast<std::size_t>(size));
        if (reportId != 0 && !payload.empty())
            payload = payload.subspan(1);
        bus.traceExchange(port, '>', payload,
                          bus.traces_ ? port.device->nameOf(payload) : std::string());
        const bool taken = bus.deliver(port, reportId, payload);
        if (!taken)
            bus.note("! not sent");
        return taken ? 1 : 0;
    }

    static int getFeature(void* handle, unsigned char reportId, unsigned char* data, long* size) {
        UsbBus& bus = usbBus();
        UsbBus::Handle* const entry = bus.find(handle);
        if (!entry || *size < 0)
            return 0;
        UsbBus::Port& port = bus.ports_[entry->port];
        std::vector<std::uint8_t> reply(static_cast<std::size_t>(*size));
        const Fault fault = port.faults.nextFetch();
        if (!UsbBus::fetch(port, fault, reportId, reply)) {
            bus.note("! no answer");
            return 0;
        }
        spoil(reply, fault, bus.random_);
        *size = static_cast<long>(reply.size());
        bus.traceExchange(port, '<', reply, "");
        bus.noteRemark(port);
        std::copy(reply.begin(), reply.end(), data);
        return 1;
    }
};

const UsbBackend& UsbBus::backend() const {
    static constexpr UsbBackend kBackend = {
        BusBackend::start, BusBackend::stop,       BusBackend::list,
        BusBackend::ids,   BusBackend::open,       BusBackend::unlist,
        BusBackend::close, BusBackend::setFeature, BusBackend::getFeature,
    };
    return kBackend;
}

void UsbBus::clear() {
    ports_.clear();
    listed_.clear();
    handles_.clear();
    random_ = {};
    trace_.clear();
    traces_ = false;
}

std::size_t UsbBus::plug(std::shared_ptr<Device> device, UsbIdentity identity) {
    ports_.push_back({std::move(device), std::move(identity)});
    return ports_.size() - 1;
}

void UsbBus::unplug(std::size_t port) { ports_.at(port).present = false; }

void UsbBus::replug(std::size_t port) {
    ports_.at(port).present = true;
    ports_.at(port).device->powerUp();
}

std::vector<std::size_t> UsbBus::presentPorts() const {
    std::vector<std::size_t> present;
    for (std::size_t port = 0; port < ports_.size(); ++port)
        if (ports_[port].present)
            present.push_back(port);
    return present;
}

// A device without a name has no path to open it by.
void* UsbBus::open(std::size_t number) {
    const Port& port = ports_.at(number);
    const std::string& name = port.identity.name;
    if (port.opensFail || !port.present || name.empty()) {
        note("open " + name + " fails");
        return nullptr;
    }
    handles_.push_back({number, true});
    note("open " + name);
    return reinterpret_cast<void*>(handles_.size());
}

int UsbBus::openHandles() const {
    return static_cast<int>(std::count_if(handles_.begin(), handles_.end(),
                                          [](const Handle& handle) { return handle.open; }));
}

void UsbBus::startTrace() {
    trace_.clear();
    traces_ = true;
}

void UsbBus::note(const std::string& line) {
    if (traces_)
        trace_ += line + '\n';
}

std::string UsbBus::takeTrace() { return std::exchange(trace_, {}); }

bool UsbBus::deliver(Port& port, std::uint8_t reportId, std::span<const std::uint8_t> payload) {
    const bool isFailed = port.faults.countExchange();
    if (!port.present)
        return false;
    if (port.faults.nextSend() == Fault::SendRefused || isFailed) {
        port.device->sendLost(payload);
        return false;
    }
    const bool taken = port.device->take(reportId, payload);
    noteRemark(port);
    return taken;
}

void UsbBus::noteRemark(Port& port) {
    if (const std::string remark = port.device->takeRemark(); !remark.empty())
        note("! " + remark);
}

bool UsbBus::fetch(Port& port, Fault fault, std::uint8_t reportId, std::span<std::uint8_t> reply) {
    const bool isFailed = port.faults.countExchange();
    if (!port.present)
        return false;
    if (fault != Fault::NoAnswer && !isFailed)
        return port.device->answer(reportId, reply);
    port.device->replyLost();
    return false;
}

UsbBus::Handle* UsbBus::find(void* handle) {
    const std::size_t number = reinterpret_cast<std::size_t>(handle);
    if (number == 0 || number > handles_.size() || !handles_[number - 1].open)
        return nullptr;
    return &handles_[number - 1];
}

void UsbBus::traceExchange(const Port& port, char direction, std::span<const std::uint8_t> bytes,
                           const std::string& name) {
    if (!traces_)
        return;
    const auto which = &port - ports_.data();
    std::string line = ports_.size() > 1 ? std::to_string(which) : "";
    line = line + direction + ' ' + hexOf(bytes);
    if (!name.empty())
        line.append("  ").append(name);
    note(line);
}

} // namespace zel::sim
