// SPDX-License-Identifier: MIT
// The simulator and its clock for tests in Python: preloaded, and told by plain calls what to do.
#include "sim/demo/bench.h"
#include "sim/band/reader.h"
#include "sim/echo/sensor.h"
#include "sim/tag/reader.h"
#include "sim/tag/stream.h"
#include "sim/wire/line.h"
#include "sim/wire/usb_bus.h"
#include "tests/support/virtual_time.h"

#include <cmath>
#include <map>
#include <memory>
#include <string>

using namespace zel::sim;

namespace {

std::map<int, std::shared_ptr<TagReader>> readers;
std::shared_ptr<BandReader> stripe;
std::shared_ptr<EchoSensor> sensor;

TagOptions optionsOf(int configurations) {
    TagOptions options;
    options.volume = std::uint8_t{2};
    options.partNumber = "ZT7";
    options.fileName = "ZT7_0302";
    if (configurations > 1)
        options.tagPlusConfigurations = configurations;
    return options;
}

void pumpLines() {
    zel::test::onPause([](std::uint64_t) {
        lines().takeIn();
        lines().deliver();
    });
}

} // namespace

#define BENCH extern "C" __attribute__((visibility("default")))

BENCH void benchClear();
BENCH void benchClear() {
    usbBus().clear();
    usbBus().install();
    readers.clear();
    lines().clear();
    Lines::install();
    pumpLines();
}

BENCH void benchDemo();
BENCH void benchDemo() { installDemo(); }

BENCH int benchPlug(int configurations);
BENCH int benchPlug(int configurations) {
    auto reader = std::make_shared<TagReader>(optionsOf(configurations));
    const auto number = std::to_string(readers.size());
    const int port = static_cast<int>(
        usbBus().plug(reader, {TagReader::kVendor, TagReader::kProduct, "reader-" + number}));
    reader->bootLoader().options().lines = 40; // of examples/firmware.hex
    readers[port] = reader;
    return port;
}

// A reader at the end of a line, which speaks the ASCII protocol alone or frames alone.
BENCH void benchLine(const char* path, bool ascii, std::uint64_t card);
BENCH void benchLine(const char* path, bool ascii, std::uint64_t card) {
    auto reader = std::make_shared<TagReader>(optionsOf(1));
    reader->present(cardOf(card, 26));
    lines().attach(
        path, std::make_shared<TagStream>(reader, ascii ? TagSpeech::Lines : TagSpeech::Frames));
}

BENCH void benchUnplug(int port);
BENCH void benchUnplug(int port) { usbBus().unplug(static_cast<std::size_t>(port)); }

BENCH void benchFail(int port, int exchange, int count);
BENCH void benchFail(int port, int exchange, int count) {
    usbBus().failExchange(static_cast<std::size_t>(port), exchange, count);
}

// A card of 0 bits takes the one in the field away.
BENCH void benchPresent(int port, std::uint64_t number, std::uint8_t bits);
BENCH void benchPresent(int port, std::uint64_t number, std::uint8_t bits) {
    readers.at(port)->present(bits == 0 ? Card{} : cardOf(number, bits));
}

BENCH int benchBeeps(int port);
BENCH int benchBeeps(int port) { return readers.at(port)->beeps(); }

BENCH bool benchRed(int port);
BENCH bool benchRed(int port) { return readers.at(port)->isRedOn(); }

// What the reader keeps over a loss of power of block 1, byte 2: the hold time, 50 ms a step.
BENCH int benchHoldTime(int port, int configuration);
BENCH int benchHoldTime(int port, int configuration) {
    return readers.at(port)
        ->committed()
        .configuration.at(static_cast<std::size_t>(configuration))
        .block[1][2];
}

// Exchanges that came while the reader was still busy.
BENCH int benchViolations(int port);
BENCH int benchViolations(int port) { return readers.at(port)->violations(); }

BENCH int benchLinesLoaded(int port);
BENCH int benchLinesLoaded(int port) { return readers.at(port)->bootLoader().lines(); }

BENCH void benchTrace();
BENCH void benchTrace() { usbBus().startTrace(); }

BENCH const char* benchTakeTrace();
BENCH const char* benchTakeTrace() {
    static std::string trace;
    trace = usbBus().takeTrace();
    return trace.c_str();
}

BENCH void benchStripe(const char* path);
BENCH void benchStripe(const char* path) {
    stripe = std::make_shared<BandReader>();
    lines().attach(path, stripe);
}

BENCH void benchSwipe(const char* first, const char* second);
BENCH void benchSwipe(const char* first, const char* second) {
    stripe->swipe(bandCard(first, second));
}

BENCH void benchSilence(int commands);
BENCH void benchSilence(int commands) { stripe->fail(BandFault::Silence, commands); }

using FoundDevice = void (*)(char* name, void* handle, int row);

// No scan of this platform tells sensors: this one is handed to the library.
BENCH void benchSensor(int inches, FoundDevice found);
BENCH void benchSensor(int inches, FoundDevice found) {
    sensor = std::make_shared<EchoSensor>();
    sensor->place(inches);
    const auto port = usbBus().plug(sensor, {EchoSensor::kVendor, EchoSensor::kProduct, "sensor"});
    char name[512] = {};
    usbBus().backend().list();
    void* const handle = usbBus().backend().open(static_cast<int>(port), name);
    usbBus().backend().unlist();
    found(name, handle, -1);
}

// Time passes for the library and the simulated devices.
BENCH void benchSleep(double seconds);
BENCH void benchSleep(double seconds) {
    zel::test::wait(static_cast<std::uint64_t>(std::ceil(seconds * 1e6)));
}

BENCH double benchNow();
BENCH double benchNow() { return static_cast<double>(zel::test::virtualMicroseconds()) / 1e6; }
