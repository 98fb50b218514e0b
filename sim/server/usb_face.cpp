// SPDX-License-Identifier: MIT
// Requests as calls of the bus's backend.
#include "sim/server/usb_face.h"

#include "sim/link/frames.h"
#include "sim/wire/usb_bus.h"

#include <algorithm>

namespace zel::sim {

UsbFace::~UsbFace() {
    for (void* const handle : handles_)
        if (handle)
            usbBus().backend().close(handle);
}

std::optional<std::vector<std::uint8_t>> UsbFace::answer(std::span<const std::uint8_t> request) {
    FrameReader reader(request);
    switch (static_cast<UsbRequest>(reader.take8())) {
    case UsbRequest::List:
        return list();
    case UsbRequest::Open:
        return open(reader);
    case UsbRequest::Close:
        return close(reader);
    case UsbRequest::Set:
        return set(reader);
    case UsbRequest::Get:
        return get(reader);
    }
    return {};
}

UsbFace::Bytes UsbFace::list() {
    FrameWriter writer;
    for (const std::size_t port : usbBus().presentPorts()) {
        const UsbIdentity& identity = usbBus().identity(port);
        writer.add32(static_cast<std::uint32_t>(port))
            .add16(identity.vendor)
            .add16(identity.product);
    }
    return writer.take();
}

UsbFace::Bytes UsbFace::open(FrameReader& request) {
    const std::size_t port = request.take32();
    const auto present = usbBus().presentPorts();
    const bool isPresent = std::ranges::find(present, port) != present.end();
    void* const handle = isPresent ? usbBus().open(port) : nullptr;
    if (!handle)
        return FrameWriter().add32(0).take();
    handles_.push_back(handle);
    return FrameWriter()
        .add32(static_cast<std::uint32_t>(handles_.size()))
        .addText(usbBus().identity(port).name)
        .take();
}

void* UsbFace::handle(std::uint32_t number) const {
    return number >= 1 && number <= handles_.size() ? handles_[number - 1] : nullptr;
}

UsbFace::Bytes UsbFace::close(FrameReader& request) {
    const std::uint32_t number = request.take32();
    if (void* const open = handle(number)) {
        usbBus().backend().close(open);
        handles_[number - 1] = nullptr;
    }
    return FrameWriter().take();
}

UsbFace::Bytes UsbFace::set(FrameReader& request) const {
    void* const open = handle(request.take32());
    const std::uint8_t reportId = request.take8();
    const auto data = request.rest();
    const bool isSent = open && usbBus().backend().setFeature(open, reportId, data.data(),
                                                              static_cast<long>(data.size())) != 0;
    return FrameWriter().add8(isSent ? 1 : 0).take();
}

UsbFace::Bytes UsbFace::get(FrameReader& request) const {
    void* const open = handle(request.take32());
    const std::uint8_t reportId = request.take8();
    Bytes data(std::min<std::size_t>(request.take32(), kLargestFrame - 1));
    auto size = static_cast<long>(data.size());
    if (!open || usbBus().backend().getFeature(open, reportId, data.data(), &size) == 0)
        return FrameWriter().add8(0).take();
    return FrameWriter()
        .add8(1)
        .addBytes(std::span(data).first(static_cast<std::size_t>(size)))
        .take();
}

} // namespace zel::sim
