// SPDX-License-Identifier: MIT
// Logs, stays, and passes each call on to the simulated bus.
#include "tests/threads/slow_wire.h"

#include "sim/wire/usb_bus.h"
#include "tests/threads/crew.h"

#include <atomic>
#include <cstdio>
#include <span>

namespace zel::test {

namespace {

constexpr std::size_t kMostEvents = 50'000;

// Each event has its slot for itself, so that the log brings no order between the threads.
std::vector<Event> events(kMostEvents);
std::atomic<std::size_t> eventCount = 0;

const UsbBackend& bus() { return sim::usbBus().backend(); }

std::string line(char direction, std::span<const unsigned char> bytes) {
    std::string text(1, direction);
    char byteText[4];
    for (const unsigned char byte : bytes) {
        std::snprintf(byteText, sizeof byteText, " %02X", byte);
        text += byteText;
    }
    return text;
}

void* open(int index, char name[512]) {
    void* const handle = bus().open(index, name);
    noteEvent(std::string("open ") + name);
    return handle;
}

void close(void* handle) {
    noteEvent("close");
    Crew::stayInExchange();
    bus().close(handle);
}

int setFeature(void* handle, unsigned char reportId, const unsigned char* data, long size) {
    noteEvent(line('>', {data, static_cast<std::size_t>(size)}));
    Crew::stayInExchange();
    return bus().setFeature(handle, reportId, data, size);
}

int getFeature(void* handle, unsigned char reportId, unsigned char* data, long* size) {
    Crew::stayInExchange();
    const int received = bus().getFeature(handle, reportId, data, size);
    noteEvent(line('<', {data, static_cast<std::size_t>(*size)}));
    return received;
}

} // namespace

bool installSlowWire() {
    UsbBackend slow = bus();
    slow.open = open;
    slow.close = close;
    slow.setFeature = setFeature;
    slow.getFeature = getFeature;
    return UsbDriver_UseBackend(&slow) != 0;
}

void noteEvent(const std::string& text) {
    const std::size_t slot = eventCount.fetch_add(1, std::memory_order_relaxed);
    events.at(slot) = {Crew::self(), text};
}

std::vector<Event> takeEvents() {
    const auto count = static_cast<std::ptrdiff_t>(eventCount.exchange(0));
    return {events.begin(), events.begin() + count};
}

} // namespace zel::test
