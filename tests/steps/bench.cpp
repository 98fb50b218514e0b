// SPDX-License-Identifier: MIT
// Makes the devices, each with something to tell, and puts them in the table.
#include "tests/steps/bench.h"

#include "family/band/band.h"
#include "family/echo/echo.h"
#include "family/tag/multi_config.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace zel::test::steps {

namespace {

constexpr std::uint8_t kFence = 0xC5;
constexpr std::uint8_t kOld = 0x77;
constexpr std::size_t kFenceSize = 64;
std::array<unsigned char, 1024> area;
std::size_t bufferSize = 0;

bool isFence(std::span<const unsigned char> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](auto byte) { return byte == kFence; });
}

sim::TagOptions plainOptions() {
    sim::TagOptions options;
    options.volume = 2;
    options.radio = 1;
    options.partNumber = "P42";
    options.firmwareVersion = "1.7";
    options.fileName = "FWFILE01";
    std::iota(options.serialNumber.begin(), options.serialNumber.end(), std::uint8_t{1});
    return options;
}

sim::TagOptions plusOptions() {
    sim::TagOptions options = plainOptions();
    options.tagPlusConfigurations = 2;
    options.cardTypes = {0x1101, 0x1202, 0x1303, 0x1404, 0x1505};
    options.versions[0] = {0x01020304};
    return options;
}

bool isPlus(Place place) { return place == Place::PlusReports || place == Place::PlusLine; }

bool isOnReports(Place place) {
    return place == Place::TagReports || place == Place::PlusReports ||
           place == Place::BandReports || place == Place::EchoReports;
}

// Every byte of it tells something, and its bit count says less than there are.
sim::Card fullCard() {
    sim::Card card;
    card.bits = 200;
    std::iota(card.id.begin(), card.id.end(), std::uint8_t{0x11});
    std::iota(card.data.begin(), card.data.end(), std::uint8_t{0x41});
    return card;
}

} // namespace

Apparatus& apparatus() {
    static Apparatus all;
    return all;
}

std::span<unsigned char> freshBuffer(std::size_t size) {
    area.fill(kFence);
    bufferSize = size;
    std::ranges::fill(buffer(), kOld);
    return buffer();
}

std::span<unsigned char> buffer() { return std::span(area).subspan(kFenceSize, bufferSize); }

bool isBufferAloneTouched() {
    const std::span<const unsigned char> all = area;
    return isFence(all.first(kFenceSize)) && isFence(all.subspan(kFenceSize + bufferSize));
}

void BenchTest::clear() {
    USBDisconnect();
    lines().takeIn();
    lines().clear();
    bus().clear();
    apparatus() = {};
    _APIinit();
    SetDevTypeSrch(0);
    cbIndex = 0;
    useACPMode = 0;
    lLastICSWErr = 0;
    enhanceSecurityFlagCurrFWState = false;
    freshBuffer(0);
}

void BenchTest::set(Place place) {
    clear();
    const sim::TagOptions options = isPlus(place) ? plusOptions() : plainOptions();
    if (isOnReports(place))
        bus().startTrace(); // it tells the traffic; a byte stream tells its own
    else
        onPause([](std::uint64_t) { lines().pump(); });
    switch (place) {
    case Place::TagReports:
    case Place::PlusReports:
        plugTag(options);
        break;
    case Place::BandReports:
        plugBand();
        break;
    case Place::BandLine:
        attachBand();
        break;
    case Place::EchoReports:
        plugEcho();
        break;
    default:
        connectStream(place, options);
    }
    if (isPlus(place)) {
        EXPECT_EQ(SendGetTagPlus(), 1);
    }
}

void BenchTest::plugTag(const sim::TagOptions& options) {
    Apparatus& bench = apparatus();
    bench.tag = std::make_shared<sim::TagReader>(options);
    bench.tag->present(fullCard());
    bus().plug(bench.tag, {sim::TagReader::kVendor, sim::TagReader::kProduct, "reader"});
    EXPECT_EQ(connect(), 1);
    bench.wire = reportWire(0, false);
}

void BenchTest::connectStream(Place place, const sim::TagOptions& options) {
    Apparatus& bench = apparatus();
    const bool isAscii = place == Place::AsciiLine;
    bench.tag = std::make_shared<sim::TagReader>(options);
    bench.tag->present(isAscii ? sim::cardOf(0x1122334455, 40) : fullCard());
    bench.stream = std::make_shared<sim::TagStream>(bench.tag, isAscii ? sim::TagSpeech::Lines
                                                                       : sim::TagSpeech::Frames);
    const auto wire = std::make_shared<TroubledStream>(
        bench.stream, isAscii ? TroubledStream::Speech::Lines : TroubledStream::Speech::Frames);
    bench.wire = wire;
    if (place == Place::TagTcp)
        connectTcp(wire);
    else
        connectLine(wire);
    useACPMode = isAscii ? 1 : 0;
}

// The scan of USB finds neither a stripe reader nor a sensor, so their handles are handed over.
void BenchTest::enterReports(std::size_t port, void (*found)(char*, void*, int)) {
    char name[ZELTAGAPI_NAME_SIZE] = {};
    const UsbBackend& backend = bus().backend();
    backend.list();
    void* const handle = backend.open(static_cast<int>(port), name);
    backend.unlist();
    found(name, handle, -1);
}

void BenchTest::plugBand() {
    Apparatus& bench = apparatus();
    bench.band = std::make_shared<sim::BandReader>();
    enterReports(
        bus().plug(bench.band, {sim::BandReader::kVendor, sim::BandReader::kProduct, "stripe"}),
        zelband_FoundDevice);
    bench.wire = reportWire(0, true);
}

void BenchTest::attachBand() {
    Apparatus& bench = apparatus();
    bench.band = std::make_shared<sim::BandReader>();
    const auto wire = std::make_shared<TroubledStream>(bench.band, TroubledStream::Speech::Text);
    bench.wire = wire;
    connectLine(wire);
    record().iProduct = ZELTAGAPI_ZELBAND;
}

void BenchTest::plugEcho() {
    Apparatus& bench = apparatus();
    bench.echo = std::make_shared<sim::EchoSensor>();
    enterReports(
        bus().plug(bench.echo, {sim::EchoSensor::kVendor, sim::EchoSensor::kProduct, "sensor"}),
        zelecho_FoundDevice);
    bench.wire = reportWire(0, false);
}

} // namespace zel::test::steps
