// SPDX-License-Identifier: MIT
// A simulated proximity reader: what a real one holds, behind its 8-byte feature reports.
#pragma once

#include "sim/tag/boot.h"
#include "sim/tag/card.h"
#include "sim/tag/multi.h"
#include "sim/tag/options.h"
#include "sim/tag/services.h"
#include "sim/tag/settings.h"
#include "sim/wire/busy.h"
#include "sim/wire/device.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zel::sim {

class TagReader : public Device {
public:
    static constexpr std::uint16_t kVendor = 0x5A3E;
    static constexpr std::uint16_t kProduct = 0x9D23;
    static constexpr std::uint16_t kTagAdvProduct = 0x9D22;
    static constexpr std::uint16_t kKq7Vendor = 0x6B2D;
    static constexpr std::uint16_t kKq7Product = 0x9D25;
    using Block = TagBlock;
    using Configuration = TagConfiguration;
    using Settings = TagSettings;
    using Options = TagOptions;

    TagReader() : TagReader(Options{}) {}
    explicit TagReader(Options options);

    // The card in the field from now on; a card of 0 bits takes it away.
    void present(const Card& card);
    void removeCard() { present({}); }

    // What the reader delivers as its queued identifier from now on, however often it is asked.
    void queue(const QueuedId& entry) { services_.queue(entry); }

    // Asks `field` for the card at each read instead.
    void follow(std::function<Card()> field) { field_ = std::move(field); }

    // Answers each command that begins with these bytes so, whatever it does; the last one counts.
    void replyWith(std::vector<std::uint8_t> command, const Block& reply);

    // What the reader is; its kind and its form of data are set when it is made.
    Options& options() { return options_; }

    Settings& settings() { return memory_.current; }
    const Settings& committed() const { return memory_.stored; }
    const Settings& userDefaults() const { return memory_.user; }
    Configuration& configuration(std::size_t n) { return memory_.current.configuration.at(n); }
    std::size_t activeConfiguration() const { return memory_.active; }
    void activate(std::size_t n) { memory_.active = n; }
    static Settings factorySettings(const Options& options = {}) {
        return tagFactorySettings(options);
    }

    std::uint16_t deviceId() const { return kDeviceId; }
    bool isRedOn() const { return (memory_.configuration().block[2][0] & 1) != 0; }
    bool isGreenOn() const { return (memory_.configuration().block[2][0] & 2) != 0; }
    int beeps() const { return services_.beeps(); }
    std::uint8_t lastBeep() const { return services_.lastBeep(); }
    std::vector<TagReference> references() const { return multi_.blobs().references(); }
    const std::vector<TagBlob>& blobs() const { return multi_.blobs().all(); }

    // Lets the reports on a chunk of a blob fail until told otherwise; 0 is the header, 0xFF the
    // save.
    void failBlobChunk(std::uint8_t chunk, BlobFault fault) { multi_.blobs().fail(chunk, fault); }

    // Takes the firmware's place when it is entered.
    TagBoot& bootLoader() { return boot_; }

    // A command and its reply in one, as another line than USB brings it: that line's answer comes
    // when the work is done, so none is too early. And a command with the data it writes.
    Block run(const Block& command);
    void write(const Block& command, const Block& data);

    // Exchanges that came while the reader was still busy, and the text of the last one.
    int violations() const { return violations_; }
    const std::string& lastViolation() const { return lastViolation_; }

    bool take(std::uint8_t reportId, std::span<const std::uint8_t> payload) override;
    bool answer(std::uint8_t reportId, std::span<std::uint8_t> reply) override;
    void sendLost(std::span<const std::uint8_t> payload) override;
    void replyLost() override { awaitsData_ = false; }
    void powerUp() override;
    std::string takeRemark() override { return std::exchange(remark_, {}); }
    std::string nameOf(std::span<const std::uint8_t> payload) const override;

private:
    static constexpr std::uint16_t kDeviceId = 0x0142;

    bool isData(std::span<const std::uint8_t> payload) const;
    void checkPause();
    void complain(const std::string& exchange, std::uint64_t early);
    bool takeInBootLoader(const Block& report);
    bool answerFromBootLoader(std::span<std::uint8_t> reply);
    void runCommand(const Block& before);
    void runMulti();
    void commit(const Block& before);
    void writeData(const Block& data);
    Block reply();
    Block replyToLuid() const;
    Block replyToCardType() const;
    Block idPage(unsigned page);
    Block cardData(unsigned kind, unsigned block);
    Block* addressedBlock();
    Block* addressedPage();

    Options options_;
    TagMemory memory_;
    TagServices services_;
    TagMulti multi_;
    TagBoot boot_;
    Busy busy_;
    std::function<Card()> field_;
    Card latched_; // the card that the read under way delivers
    Block command_ = {};
    Block result_ = {};       // of the last service or TagPlus command
    bool awaitsData_ = false; // the next report may be the data of a block write
    std::optional<Block> lostData_;
    std::vector<std::pair<std::vector<std::uint8_t>, Block>> fixedReplies_;
    int violations_ = 0;
    std::string lastViolation_;
    std::string remark_;
};

} // namespace zel::sim
