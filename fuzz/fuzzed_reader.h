// SPDX-License-Identifier: MIT
// Simulated readers in the library's table that each input finds as the one before did.
#pragma once

#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "fuzz/target.h"
#include "sim/tag/reader.h"
#include "sim/wire/usb_bus.h"

#include <memory>
#include <utility>
#include <vector>

namespace zel::fuzz {

// Stays plugged in while the reader behind it is made anew.
class RenewedReader : public sim::Device {
public:
    explicit RenewedReader(const sim::TagOptions& options) : options_(options) { renew(); }
    void renew() { reader_ = std::make_unique<sim::TagReader>(options_); }

    bool take(std::uint8_t id, std::span<const std::uint8_t> payload) override {
        return reader_->take(id, payload);
    }
    bool answer(std::uint8_t id, std::span<std::uint8_t> reply) override {
        return reader_->answer(id, reply);
    }
    std::string nameOf(std::span<const std::uint8_t> payload) const override {
        return reader_->nameOf(payload);
    }

private:
    sim::TagOptions options_;
    std::unique_ptr<sim::TagReader> reader_;
};

class FuzzedReaders {
public:
    explicit FuzzedReaders(const std::vector<sim::TagOptions>& kinds) {
        require(sim::usbBus().install());
        for (const sim::TagOptions& kind : kinds)
            plug(std::make_shared<RenewedReader>(kind));
        zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, nullptr);
        require(GetDevCnt() == static_cast<int>(kinds.size()));
        for (std::size_t index = 0; index < kinds.size(); ++index) {
            iActDev = static_cast<std::int16_t>(index);
            require(ReadCfg() == 1);
            records_.push_back(DevDat[index]);
        }
    }

    // Makes a reader the active device, as it was at first.
    void start(std::size_t index) {
        readers_.at(index)->renew();
        DevDat[index] = records_.at(index);
        iActDev = static_cast<std::int16_t>(index);
    }

private:
    void plug(std::shared_ptr<RenewedReader> reader) {
        const std::string name = "reader " + std::to_string(readers_.size());
        sim::usbBus().plug(reader, {sim::TagReader::kVendor, sim::TagReader::kProduct, name});
        readers_.push_back(std::move(reader));
    }

    std::vector<std::shared_ptr<RenewedReader>> readers_;
    std::vector<tsDevDat> records_;
};

} // namespace zel::fuzz
