// SPDX-License-Identifier: MIT
// A presence sensor in a scene, which is reached by USB alone.
#pragma once

#include "sim/echo/sensor.h"
#include "sim/scene/apparatus.h"

namespace zel::sim {

class EchoApparatus : public Apparatus {
public:
    explicit EchoApparatus(std::shared_ptr<EchoSensor> sensor) : sensor_(std::move(sensor)) {}

    UsbIdentity identity() const override {
        return {EchoSensor::kVendor, EchoSensor::kProduct, {}};
    }
    std::shared_ptr<Device> onUsb() override { return sensor_; }
    void powerUp() override { sensor_->powerUp(); }
    void place(int inches) override {
        sensor_->place(inches);
        inches_ = inches;
    }
    void describe(DeviceState& state) override {
        state.inches = inches_;
        state.violations = sensor_->violations();
        state.lastViolation = sensor_->lastViolation();
    }

private:
    std::shared_ptr<EchoSensor> sensor_;
    int inches_ = 0;
};

} // namespace zel::sim
