// SPDX-License-Identifier: MIT
// A simulated proximity reader: what a real one holds, behind its 8-byte feature reports.
#pragma once

#include "sim/tag/boot.h"
#include "sim/tag/model.h"
#include "sim/wire/awaited_data.h"
#include "sim/wire/device.h"
#include "sim/wire/fixed_replies.h"
#include "sim/wire/violations.h"
#include "transport/usb_identity.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zel::sim {

// Plugged into the bus it is the library's:
//     usbBus().plug(reader, {TagReader::kVendor, TagReader::kProduct, "reader"});
// A TagStream puts it at the end of a serial line or behind a bridge. Exchanges fail where they
// pass: see the `fail` of UsbBus and of TagStream.
class TagReader : public Device {
public:
    static constexpr std::uint16_t kVendor = kTagIdentity.vendor;
    static constexpr std::uint16_t kProduct = kTagIdentity.product;
    static constexpr std::uint16_t kTagAdvProduct = kTagAdvIdentity.product;
    static constexpr std::uint16_t kKq7Vendor = kKq7Identity.vendor;
    static constexpr std::uint16_t kKq7Product = kKq7Identity.product;
    using Block = TagBlock;
    using Configuration = TagConfiguration;
    using Settings = TagSettings;
    using Options = TagOptions;

    TagReader() : TagReader(Options{}) {}
    explicit TagReader(Options options) : model_(std::move(options)) {}

    // The card in the field from now on; a card of 0 bits takes it away.
    void present(const Card& card) {
        follow([card] { return card; });
    }
    void removeCard() { present({}); }
    Card cardInField() const { return model_.field(); }

    // Asks `field` for the card at each read instead.
    void follow(std::function<Card()> field) { model_.field = std::move(field); }

    // What the reader delivers as its queued identifier from now on, however often it is asked.
    void queue(const QueuedId& entry) { model_.services.queue(entry); }

    // Answers each command that begins with these bytes so, whatever it does; the last one counts.
    void replyWith(std::vector<std::uint8_t> command, const Block& reply) {
        fixedReplies_.add(std::move(command), reply);
    }

    // What the reader is; its kind and its form of data are set when it is made.
    Options& options() { return model_.options; }

    // In force now, kept over a loss of power, and the user's defaults.
    Settings& settings() { return model_.memory.current; }
    void keepSettings() { model_.memory.commit(); }
    const Settings& committed() const { return model_.memory.stored; }
    const Settings& userDefaults() const { return model_.memory.user; }
    Configuration& configuration(std::size_t n) { return settings().configuration.at(n); }
    std::size_t activeConfiguration() const { return model_.memory.active; }
    void activate(std::size_t n) { model_.memory.active = n; }
    static Settings factorySettings(const Options& options = {}) {
        return tagFactorySettings(options);
    }

    std::uint16_t deviceId() const { return TagModel::kDeviceId; }
    bool isRedOn() const { return (model_.memory.configuration().block[2][0] & 1) != 0; }
    bool isGreenOn() const { return (model_.memory.configuration().block[2][0] & 2) != 0; }
    int beeps() const { return model_.services.beeps(); }
    std::uint8_t lastBeep() const { return model_.services.lastBeep(); }
    std::vector<TagReference> references() const { return blobStore().references(); }
    const std::vector<TagBlob>& blobs() const { return blobStore().all(); }

    // Lets the reports on a chunk of a blob fail until told otherwise; 0 is the header, 0xFF the
    // save.
    void failBlobChunk(std::uint8_t chunk, BlobFault fault) { blobStore().fail(chunk, fault); }

    // Takes the firmware's place when it is entered.
    TagBoot& bootLoader() { return boot_; }

    // A command and its reply in one, as another line than USB brings it: that line's answer comes
    // when the work is done, so none is too early. And a command with the data it writes.
    Block run(const Block& command);
    void write(const Block& command, const Block& data) { model_.write(command, data); }

    // Exchanges that came while the reader was still busy, and the text of the last one.
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
    TagBlobs& blobStore() { return model_.multi.blobs(); }
    const TagBlobs& blobStore() const { return model_.multi.blobs(); }
    void carryOut(const Block& command);
    Block reply();
    bool takeInBootLoader(const Block& report);
    bool answerFromBootLoader(std::span<std::uint8_t> reply);

    TagModel model_;
    TagBoot boot_;
    AwaitedData awaitedData_;
    FixedReplies<std::vector<std::uint8_t>, Block> fixedReplies_;
    Violations violations_;
};

} // namespace zel::sim
