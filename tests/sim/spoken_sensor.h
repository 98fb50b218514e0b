// SPDX-License-Identifier: MIT
// A simulated presence sensor by itself, spoken to in its reports.
#pragma once

#include "sim/echo/sensor.h"
#include "sim/wire/byte_text.h"
#include "tests/support/virtual_time.h"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace zel::test {

// Speaks at the pace that the sensor wants, and checks at the end that none was too early.
class SpokenSensor : public ::testing::Test {
protected:
    using Block = sim::EchoBlock;

    static constexpr useconds_t kDataPause = 250'000; // µs
    static constexpr useconds_t kResetPause = 2'000'000;
    static constexpr const char* kBlock0 = "01 3E 10 31 D0 02 01 05";
    static constexpr const char* kBlock1 = "01 02 08 00 00 00 00 00";

    ~SpokenSensor() override {
        EXPECT_EQ(sensor_.violations(), expectedViolations_) << sensor_.lastViolation();
    }

    void send(const Block& report) { EXPECT_TRUE(sensor_.take(0, report)); }
    std::string fetch() {
        Block reply = {};
        return sensor_.answer(0, reply) ? sim::hexOf(reply) : "refused";
    }
    std::string query(const Block& command) {
        send(command);
        usleep(kDataPause);
        return fetch();
    }
    void write(const Block& command, const Block& data) {
        send(command);
        usleep(kDataPause);
        send(data);
    }
    void reset(std::uint8_t command) {
        send({command});
        usleep(kResetPause);
    }
    std::string range() { return query({0x8F}).substr(0, 5); }

    sim::EchoSensor sensor_;
    int expectedViolations_ = 0;
};

} // namespace zel::test
