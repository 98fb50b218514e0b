// SPDX-License-Identifier: MIT
// A magnetic stripe reader in a scene, on USB or on a serial line.
#pragma once

#include "sim/band/reader.h"
#include "sim/scene/apparatus.h"

namespace zel::sim {

class BandApparatus : public Apparatus {
public:
    explicit BandApparatus(std::shared_ptr<BandReader> reader) : reader_(std::move(reader)) {}

    UsbIdentity identity() const override {
        return {BandReader::kVendor, BandReader::kProduct, {}};
    }
    std::shared_ptr<Device> onUsb() override { return reader_; }
    std::size_t reportSize() const override { return BandReader::kFrameSize; }
    std::shared_ptr<StreamDevice> onStream() override { return reader_; }
    void powerUp() override { reader_->powerUp(); }
    void swipe(const BandCard& card) override;
    bool fail(const FaultOrder& order) override;
    Names streamFaults() const override;
    Settings settings() override;
    void keepSettings() override { reader_->keepSettings(); }
    void describe(DeviceState& state) override;
    int streamCommands() const override { return reader_->commands(); }

private:
    std::shared_ptr<BandReader> reader_;
    int beeps_ = 0; // that were taken from the reader
};

} // namespace zel::sim
