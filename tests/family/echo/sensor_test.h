// SPDX-License-Identifier: MIT
// A presence sensor on the bus and in the table. A test also fails when a report came earlier than
// the sensor allows.
#pragma once

#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "sim/echo/sensor.h"
#include "tests/support/library_test.h"

#include <string>

namespace zel::test {

class SensorTest : public LibraryTest {
protected:
    SensorTest() { forgetRaw(); }
    ~SensorTest() override {
        if (sensor_) {
            EXPECT_EQ(sensor_->violations(), 0) << sensor_->lastViolation();
        }
        forgetRaw();
    }

    // Plugs the sensor in and hands it to the library; the trace is empty behind it.
    void connectSensor(const sim::EchoOptions& options = {}) {
        sensor_ = std::make_shared<sim::EchoSensor>(options);
        port_ =
            bus().plug(sensor_, {sim::EchoSensor::kVendor, sim::EchoSensor::kProduct, "sensor"});
        char name[512] = {};
        bus().backend().list();
        void* const handle = bus().backend().open(static_cast<int>(port_), name);
        bus().backend().unlist();
        zelecho_FoundDevice(name, handle, -1);
        iActDev = 0;
        bus().takeTrace();
    }

    // Fails exchange n from now on with every try of it.
    void failAt(int n) { bus().failExchange(port_, n, 6); }

    static tsDevDat& record() { return DevDat[0]; }
    static tsEcho& echo() { return DevDat[0].Echo; }
    static std::uint32_t dirtyGroups() {
        const tsEcho& e = echo();
        return e.bDirtySonar | e.bDirtyWalkAway << 1U | e.bDirtyWalkUp << 2U | e.bDirtyIdle << 3U;
    }
    static void markAll(std::uint32_t mark) {
        echo().bDirtySonar = echo().bDirtyWalkAway = mark;
        echo().bDirtyWalkUp = echo().bDirtyIdle = mark;
    }

    std::shared_ptr<sim::EchoSensor> sensor_;
    std::size_t port_ = 0;

private:
    static void forgetRaw() {
        gsSonarParms2 = {};
        gsWalkAwayParms2 = {};
        gsWalkUpParms2 = {};
        gsIdleParms2 = {};
    }
};

// No byte is 0, so what was decoded shows.
inline constexpr sim::EchoSettings kFullBlocks = {
    {{1, 62, 16, 49, 208, 2, 1, 5},
     {6, 2, 0x11, 0x12, 0x13, 0x14, 0x15, 0x16},
     {0xF3, 0x21, 0x22, 0x23, 0x24, 0x25, 0x26, 0x27},
     {5, 3, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36},
     {0xF4, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47},
     {0x5A, 0x51, 0x52, 0x53, 0x54, 0x55, 0x56, 0x57}}};

class FullSensorTest : public SensorTest {
protected:
    FullSensorTest() {
        sim::EchoOptions options;
        options.luid = 0x1234;
        options.firmwareVersion = 0x91A3;
        options.factory = kFullBlocks;
        connectSensor(options);
    }
};

} // namespace zel::test
