// SPDX-License-Identifier: MIT
// Carries feature reports between the kernel and the simulated bus.
#include "sim/uhid/device.h"

#include "sim/wire/usb_bus.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace zel::sim {

namespace {
// Requests. Two programs that poll a reader ask as fast as they are answered: there is always one.
constexpr int kMostAtOnce = 32;
} // namespace

UhidDevice::UhidDevice(Descriptor kernel, std::size_t port, std::size_t reportSize)
    : kernel_(std::move(kernel)), port_(port) {
    const UsbIdentity& identity = usbBus().identity(port);
    identity_ = {identity.name, "zelsim-" + std::to_string(getpid()) + "/" + std::to_string(port),
                 identity.vendor, identity.product, reportSize};
    fcntl(kernel_.number(), F_SETFL, O_NONBLOCK);
}

UhidDevice::~UhidDevice() { setPresent(false); }

void UhidDevice::addTo(std::vector<pollfd>& ends) const {
    ends.push_back({kernel_.number(), POLLIN, 0});
}

bool UhidDevice::send(const UhidBytes& event) const {
    return write(kernel_.number(), event.data(), event.size()) ==
           static_cast<ssize_t>(event.size());
}

void UhidDevice::setPresent(bool isPresent) {
    if (isPresent == (handle_ != nullptr))
        return;
    if (!isPresent) {
        send(uhidDestruction());
        usbBus().backend().close(std::exchange(handle_, nullptr));
        return;
    }
    handle_ = usbBus().open(port_);
    if (handle_ && !send(uhidCreation(identity_)))
        usbBus().backend().close(std::exchange(handle_, nullptr));
}

void UhidDevice::serve() {
    const auto present = usbBus().presentPorts();
    setPresent(std::ranges::find(present, port_) != present.end());
    UhidBytes event(uhidEventSize());
    for (int turn = 0; turn < kMostAtOnce; ++turn) {
        const ssize_t size = read(kernel_.number(), event.data(), event.size());
        if (size <= 0)
            return;
        answer(uhidRequestIn(std::span(event).first(static_cast<std::size_t>(size))));
    }
}

// Any refusal reaches a program as EIO.
void UhidDevice::answer(const UhidRequest& request) const {
    if (request.kind == UhidRequest::Kind::Set)
        send(uhidSetReply(request.id, set(request) ? 0 : EIO));
    if (request.kind != UhidRequest::Kind::Get)
        return;
    const UhidBytes data = get(request);
    send(uhidGetReply(request.id, data.empty() ? EIO : 0, data));
}

// The bus leaves the number 0 out.
bool UhidDevice::set(const UhidRequest& request) const {
    std::span<const std::uint8_t> data = request.data;
    if (request.report == 0 && !data.empty())
        data = data.subspan(1);
    return handle_ && usbBus().backend().setFeature(handle_, request.report, data.data(),
                                                    static_cast<long>(data.size())) != 0;
}

UhidBytes UhidDevice::get(const UhidRequest& request) const {
    UhidBytes data(1 + identity_.reportSize);
    data[0] = request.report;
    auto size = static_cast<long>(identity_.reportSize);
    if (!handle_ ||
        usbBus().backend().getFeature(handle_, request.report, data.data() + 1, &size) == 0)
        return {};
    data.resize(1 + static_cast<std::size_t>(size));
    return data;
}

} // namespace zel::sim
