// SPDX-License-Identifier: MIT
// A simulated proximity reader: what a real one holds, behind its 8-byte feature reports.
#pragma once

#include "sim/card.h"
#include "sim/device.h"

#include <array>
#include <functional>

namespace zel::sim {

class TagReader : public Device {
public:
    static constexpr std::uint16_t kVendor = 0x5A3E;
    static constexpr std::uint16_t kProduct = 0x9D23;
    static constexpr int kBlocks = 4;
    static constexpr int kPages = 18; // of separator and field data
    using Block = std::array<std::uint8_t, 8>;

    // The settings that a commit keeps over a loss of power.
    struct Settings {
        std::array<Block, kBlocks> block;
        std::array<Block, kPages> page;
        std::uint16_t luid;
        std::uint16_t cardType;
        bool cardPriority;
    };

    TagReader();

    // The card in the field from now on; a card of 0 bits takes it away.
    void present(const Card& card);
    void removeCard() { present({}); }

    // Asks `field` for the card at each read instead.
    void follow(std::function<Card()> field) { field_ = std::move(field); }

    Settings& settings() { return current_; }
    const Settings& committed() const { return stored_; }
    std::uint16_t deviceId() const { return kDeviceId; }
    bool isRedOn() const { return (current_.block[2][0] & 1) != 0; }
    bool isGreenOn() const { return (current_.block[2][0] & 2) != 0; }
    int beeps() const { return beeps_; }

    bool take(std::uint8_t reportId, std::span<const std::uint8_t> payload) override;
    bool answer(std::uint8_t reportId, std::span<std::uint8_t> reply) override;
    void powerUp() override;
    const char* nameOf(std::span<const std::uint8_t> payload) const override;

    static Settings factorySettings();

private:
    static constexpr std::uint16_t kDeviceId = 0x0142;

    void writeData();
    Block reply();
    Block replyToLuid() const;
    Block replyToCardType() const;
    Block idPage(unsigned page);
    Block* addressedBlock();
    void beep();

    Settings stored_;
    Settings current_;
    std::function<Card()> field_;
    Card latched_; // the card that the read under way delivers
    Block command_ = {};
    Block data_ = {};
    bool awaitsData_ = false; // the next report may be the data of a block write
    int beeps_ = 0;
};

} // namespace zel::sim
