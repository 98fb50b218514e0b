// SPDX-License-Identifier: MIT
// The simulator's bus behind the library's USB seam. A simulator that went away is a device that
// was unplugged.
#include "sim/link/frames.h"
#include "sim/preload/clients.h"
#include "sim/preload/exchange.h"

#include <algorithm>
#include <cstring>

namespace zel::sim {

namespace {

constexpr std::size_t kNameSize = 511; // the library cuts it there

struct Listed {
    std::uint32_t port;
    std::uint16_t vendor;
    std::uint16_t product;
};

struct Handle {
    std::uint32_t number; // the simulator's; 0: closed
    unsigned generation;  // of the connection that opened it
};

// Never destroyed: the library closes its handles while the process exits.
struct Remote {
    Exchange exchange;
    std::vector<Listed> listed;
    std::vector<Handle> handles; // a library handle is an index plus one
};

Remote& remote() {
    static Remote* const only = new Remote;
    return *only;
}

// Null where the handle is closed, or its connection is gone.
Handle* find(void* handle) {
    const auto index = reinterpret_cast<std::size_t>(handle);
    auto& handles = remote().handles;
    if (index == 0 || index > handles.size() || handles[index - 1].number == 0)
        return nullptr;
    const bool isAlive = handles[index - 1].generation == remote().exchange.generation();
    return isAlive ? &handles[index - 1] : nullptr;
}

int list() {
    Remote& it = remote();
    it.listed.clear();
    FrameWriter request(UsbRequest::List);
    const auto answer = it.exchange.ask(request);
    FrameReader reader(answer ? std::span<const std::uint8_t>(*answer)
                              : std::span<const std::uint8_t>());
    while (!reader.isAtEnd() && reader.wasWhole())
        it.listed.push_back({reader.take32(), reader.take16(), reader.take16()});
    return static_cast<int>(it.listed.size());
}

void ids(int index, unsigned* vendor, unsigned* product) {
    const Listed& listed = remote().listed[static_cast<std::size_t>(index)];
    *vendor = listed.vendor;
    *product = listed.product;
}

void* open(int index, char* name) {
    Remote& it = remote();
    FrameWriter request(UsbRequest::Open);
    request.add32(it.listed[static_cast<std::size_t>(index)].port);
    const auto answer = it.exchange.ask(request);
    if (!answer)
        return nullptr;
    FrameReader reader(*answer);
    const std::uint32_t number = reader.take32();
    if (number == 0)
        return nullptr;
    const auto text = reader.rest().first(std::min(reader.rest().size(), kNameSize));
    std::copy(text.begin(), text.end(), name);
    it.handles.push_back({number, it.exchange.generation()});
    return reinterpret_cast<void*>(it.handles.size());
}

void unlist() { remote().listed.clear(); }

void close(void* handle) {
    Handle* const entry = find(handle);
    if (!entry)
        return;
    FrameWriter request(UsbRequest::Close);
    request.add32(entry->number);
    remote().exchange.ask(request);
    entry->number = 0;
}

int setFeature(void* handle, unsigned char reportId, const unsigned char* data, long size) {
    const Handle* const entry = find(handle);
    if (!entry || size < 0)
        return 0;
    FrameWriter request(UsbRequest::Set);
    request.add32(entry->number).add8(reportId).addBytes({data, static_cast<std::size_t>(size)});
    const auto answer = remote().exchange.ask(request);
    return answer ? FrameReader(*answer).take8() : 0;
}

int getFeature(void* handle, unsigned char reportId, unsigned char* data, long* size) {
    const Handle* const entry = find(handle);
    if (!entry || *size < 0)
        return 0;
    FrameWriter request(UsbRequest::Get);
    request.add32(entry->number).add8(reportId).add32(static_cast<std::uint32_t>(*size));
    const auto answer = remote().exchange.ask(request);
    if (!answer)
        return 0;
    FrameReader reader(*answer);
    if (reader.take8() == 0 || reader.rest().size() > static_cast<std::size_t>(*size))
        return 0;
    std::copy(reader.rest().begin(), reader.rest().end(), data);
    *size = static_cast<long>(reader.rest().size());
    return 1;
}

} // namespace

const UsbBackend& remoteBackend() {
    static constexpr UsbBackend kBackend = {
        [] { return 1; }, [] {}, list, ids, open, unlist, close, setFeature, getFeature,
    };
    return kBackend;
}

} // namespace zel::sim
