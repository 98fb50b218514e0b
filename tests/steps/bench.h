// SPDX-License-Identifier: MIT
// The device under test as the only one in the table, and the caller's buffer.
#pragma once

#include "sim/band/reader.h"
#include "sim/echo/sensor.h"
#include "tests/family/tag/stream_test.h"
#include "tests/steps/wire.h"

#include <memory>
#include <span>

namespace zel::test::steps {

// What stands on the bench; only the device of the row's place is there.
struct Apparatus {
    std::shared_ptr<sim::TagReader> tag;
    std::shared_ptr<sim::TagStream> stream;
    std::shared_ptr<sim::BandReader> band;
    std::shared_ptr<sim::EchoSensor> echo;
    std::shared_ptr<Wire> wire;
};
Apparatus& apparatus();

// The active device's record and its active configuration.
inline tsDevDat& record() { return DevDat[0]; }
inline tsTagCfg& config(int n = 0) { return DevDat[0].Cfg[n]; }

// A buffer of the caller's that is filled with 0x77, and what surrounds it. There is one at a time.
std::span<unsigned char> freshBuffer(std::size_t size);
std::span<unsigned char> buffer();
bool isBufferAloneTouched();

class BenchTest : public StreamTest {
protected:
    ~BenchTest() override { apparatus() = {}; }

    // A freshly loaded library with the device in the table; the trace is empty.
    void set(Place place);

private:
    static void clear();
    static void plugTag(const sim::TagOptions& options);
    void connectStream(Place place, const sim::TagOptions& options);
    static void enterReports(std::size_t port, void (*found)(char*, void*, int));
    static void plugBand();
    static void plugEcho();
    static void attachBand();
};

} // namespace zel::test::steps
