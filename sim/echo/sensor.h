// SPDX-License-Identifier: MIT
// A simulated presence sensor: settings in six blocks and an object that comes and goes, behind
// 8-byte feature reports.
#pragma once

#include "sim/wire/awaited_data.h"
#include "sim/wire/busy.h"
#include "sim/wire/device.h"
#include "sim/wire/fixed_replies.h"
#include "sim/wire/violations.h"
#include "transport/usb_identity.h"

#include <array>
#include <cstddef>
#include <vector>

namespace zel::sim {

using EchoBlock = std::array<std::uint8_t, 8>;
using EchoSettings = std::array<EchoBlock, 6>;

struct EchoOptions {
    std::uint16_t luid = 0;
    std::uint16_t deviceId = 0x0510;
    std::uint16_t firmwareVersion = 0x0123;
    EchoSettings factory = {{{1, 62, 16, 49, 208, 2, 1, 5},
                             {1, 2, 0x08, 0, 0, 0, 0, 0},
                             {1, 0, 0x0F, 0, 0, 0, 0, 0},
                             {1, 2, 0, 0, 0, 0, 0, 0},
                             {1, 0, 0x29, 0, 0, 0, 0, 0},
                             {0, 0, 0, 0, 0, 7, 30, 23}}};
};

// Where the object is from a time on.
struct EchoPlace {
    std::uint64_t fromMilliseconds; // since the script began
    int inches;                     // 0: nothing is there
};

class EchoSensor : public Device {
public:
    static constexpr std::uint16_t kVendor = kEchoIdentity.vendor;
    static constexpr std::uint16_t kProduct = kEchoIdentity.product;
    using Block = EchoBlock;
    using Options = EchoOptions;

    EchoSensor() : EchoSensor(Options{}) {}
    explicit EchoSensor(Options options);

    // Where the object is from now on; a script is in the order of its times.
    void place(int inches) { follow({{0, inches}}); }
    void follow(std::vector<EchoPlace> script);

    // Bits of the status beside bit 0, which says that the object is within the limits of block 0.
    void setStatus(std::uint8_t bits) { status_ = bits; }

    EchoSettings& settings() { return current_; }
    const EchoSettings& committed() const { return stored_; }
    const EchoSettings& userDefaults() const { return user_; }
    std::uint16_t luid() const { return luid_; }
    bool isHalted() const { return isHalted_; } // sends no keys

    // Answers each fetch that follows a command of these bytes so; the last one counts.
    void replyWith(std::vector<std::uint8_t> command, const Block& reply) {
        fixedReplies_.add(std::move(command), reply);
    }

    // Exchanges that came while the sensor was still busy, and the text of the last one.
    int violations() const { return violations_.count(); }
    const std::string& lastViolation() const { return violations_.last(); }

    bool take(std::uint8_t reportId, std::span<const std::uint8_t> payload) override;
    bool answer(std::uint8_t reportId, std::span<std::uint8_t> reply) override;
    void sendLost(std::span<const std::uint8_t> payload) override { awaitedData_.lose(payload); }
    void replyLost() override { awaitedData_.expect(false); }
    void powerUp() override;
    std::string takeRemark() override { return violations_.takeRemark(); }
    std::string nameOf(std::span<const std::uint8_t> payload) const override;

private:
    void begin(const Block& command);
    void runCommand();
    void commit(std::uint8_t mask);
    void makeCurrent(const EchoSettings& settings);
    void writeData(const Block& data);
    Block reply() const;
    Block ids() const;
    Block range() const;
    int inches() const;

    Options options_;
    EchoSettings current_;
    EchoSettings stored_;
    EchoSettings user_;
    std::uint16_t luid_;
    std::vector<EchoPlace> script_;
    std::uint64_t scriptBegan_ = 0; // microseconds
    std::uint8_t status_ = 0;
    bool isHalted_ = false;
    Block command_ = {};
    bool awaitsFetch_ = false; // the command has a reply that wasn't fetched
    AwaitedData awaitedData_;
    Busy transfer_; // neither reply nor data may move
    Busy reset_;    // no command may come
    FixedReplies<std::vector<std::uint8_t>, Block> fixedReplies_;
    Violations violations_;
};

} // namespace zel::sim
