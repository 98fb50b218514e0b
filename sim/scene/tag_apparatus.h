// SPDX-License-Identifier: MIT
// A proximity reader in a scene, by USB and by byte stream at once.
#pragma once

#include "sim/scene/apparatus.h"
#include "sim/tag/stream.h"

namespace zel::sim {

class TagApparatus : public Apparatus {
public:
    TagApparatus(std::shared_ptr<TagReader> reader, UsbIdentity identity)
        : reader_(std::move(reader)), stream_(std::make_shared<TagStream>(reader_)),
          identity_(std::move(identity)) {}

    UsbIdentity identity() const override { return identity_; }
    std::shared_ptr<Device> onUsb() override { return reader_; }
    std::shared_ptr<StreamDevice> onStream() override { return stream_; }
    void powerUp() override { reader_->powerUp(); }
    void tap(const Card& card) override;
    bool fail(const FaultOrder& order) override;
    Names streamFaults() const override;
    Settings settings() override;
    void keepSettings() override { reader_->keepSettings(); }
    void describe(DeviceState& state) override;
    int streamCommands() const override { return stream_->commands(); }

private:
    std::shared_ptr<TagReader> reader_;
    std::shared_ptr<TagStream> stream_;
    UsbIdentity identity_;
};

} // namespace zel::sim
