// SPDX-License-Identifier: MIT
// A simulated magnetic stripe reader: 24 bytes of text in, 24 bytes out, at the end of a serial
// line or behind 24-byte feature reports.
#pragma once

#include "sim/band/model.h"
#include "sim/wire/busy.h"
#include "sim/wire/device.h"
#include "sim/wire/fault_queue.h"
#include "sim/wire/fixed_replies.h"
#include "sim/wire/stream_device.h"
#include "sim/wire/violations.h"
#include "transport/usb_identity.h"

#include <random>

namespace zel::sim {

// What goes wrong with a command.
enum class BandFault {
    None,
    Silence,        // it is lost: not carried out, no reply
    WrongFirstByte, // carried out; the reply begins as that of a failure
    ShortReply,     // carried out; the reply ends half-way
    Garbage,        // carried out; random bytes, as many as the reply has
};

class BandReader : public StreamDevice, public Device {
public:
    static constexpr std::uint16_t kVendor = kBandIdentity.vendor;
    static constexpr std::uint16_t kProduct = kBandIdentity.product;
    static constexpr std::size_t kFrameSize = 24;
    using Options = BandOptions;

    BandReader() : BandReader(Options{}) {}
    explicit BandReader(Options options) : model_(std::move(options)) {}

    void swipe(const BandCard& card) { model_.swipe(card); }

    Options& options() { return model_.options; }
    BandSettings& settings() { return model_.current; }
    void keepSettings() { model_.stored = model_.current; }
    const BandSettings& committed() const { return model_.stored; }
    int ledColor(unsigned led) const; // 0 to 4
    std::vector<BandBeep> takeBeeps() { return model_.takeBeeps(); }

    // What it counts; the card counter is the swipes since the start.
    void setUptime(std::uint32_t seconds) { model_.setUptime(seconds); }
    void setCardsRead(std::uint32_t cards) { model_.cardsRead = cards; }
    std::array<std::uint16_t, 4>& counters() { return model_.counters; }

    // Commands that came whole, those that went wrong among them.
    int commands() const { return commands_; }

    // Lets the next `count` commands behind `after` good ones go wrong. What is asked for later
    // follows what was asked for before; None forgets all of it.
    void fail(BandFault fault, int count = 1, int after = 0);

    // Replies so to each command that begins with this text, whatever it does; filled up like any
    // frame. The last one counts.
    void replyWith(std::string command, std::string reply) {
        fixedReplies_.add(std::move(command), std::move(reply));
    }

    // A reader on a line hears nothing from now on until a carriage return wakes it.
    void fallAsleep() { isAsleep_ = true; }

    // Exchanges that came while the reader was still busy, and the text of the last one.
    int violations() const { return violations_.count(); }
    const std::string& lastViolation() const { return violations_.last(); }

    // A line that is opened anew is nothing that the reader notices: what was begun stays.
    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override;

    bool take(std::uint8_t reportId, std::span<const std::uint8_t> payload) override;
    bool answer(std::uint8_t reportId, std::span<std::uint8_t> reply) override;
    void powerUp() override;
    std::string takeRemark() override { return violations_.takeRemark(); }
    std::string nameOf(std::span<const std::uint8_t> payload) const override;

private:
    using Bytes = std::vector<std::uint8_t>;

    Bytes takeByte(std::uint8_t byte);
    Bytes replyTo(std::string_view frame);
    std::string fixedOrOwnReply(std::string_view command);
    Bytes spoil(const std::string& reply, BandFault fault);
    void work(std::string_view command);

    BandModel model_;
    std::string line_; // what came of a frame
    Bytes reply_;      // to the last report; empty when there is none
    Busy flash_;       // no command may come
    Busy answering_;   // no report may be fetched
    FaultQueue<BandFault> faults_;
    FixedReplies<std::string, std::string> fixedReplies_;
    Violations violations_;
    std::mt19937 random_;
    int commands_ = 0;
    bool isAsleep_ = false;
};

} // namespace zel::sim
