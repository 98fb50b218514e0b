// SPDX-License-Identifier: MIT
// Reports on USB: which of them carry a card's data, queued cards, fields or keys.
#include "cli/trace/decoder.h"

#include "cli/trace/stripe_commands.h"
#include "frame/zelTagAPI.h"
#include "sim/demo/names.h"

#include <algorithm>

namespace zel::cli {

namespace {

constexpr std::uint8_t kPage = 0x85;
constexpr std::uint8_t kCardData = 0x88;
constexpr std::uint8_t kMulti = 0x89;
constexpr std::uint8_t kReadBlob = 0x10; // behind kMulti
constexpr std::uint8_t kWriteBlob = 0x90;
constexpr std::uint8_t kService = 0x8C;
constexpr std::uint8_t kQueued = 0x02; // behind kService
constexpr std::uint8_t kIdentifierPage = 0x8D;
constexpr std::uint8_t kIdentifier = 0x8F;
constexpr std::size_t kBlobHead = 4;
constexpr std::size_t kStripeReport = 24;

bool isIn(ByteView command, std::uint8_t first, std::uint8_t second) {
    return command.size() > 1 && command[0] == first && command[1] == second;
}

bool isBlob(ByteView command) {
    return isIn(command, kMulti, kReadBlob) || isIn(command, kMulti, kWriteBlob);
}

// How many bytes of the reply may be shown.
std::size_t shownOfReply(ByteView command) {
    if (command.empty() || isIn(command, kService, kQueued))
        return 0;
    for (const std::uint8_t secret : {kPage, kCardData, kIdentifierPage, kIdentifier})
        if (command[0] == secret)
            return 0;
    return isBlob(command) ? kBlobHead : command.size();
}

// The chunk of a blob's header tells its kind and its length.
bool hasBlobData(ByteView command) {
    return isIn(command, kMulti, kWriteBlob) && command.size() > 3 && command[3] != 0;
}

class TagReports : public Decoder {
public:
    explicit TagReports(sim::Family family) : family_(family), names_(family) {}

    // Behind a report that was lost nobody knows what the device answers.
    Message sent(ByteView bytes, bool isTaken) override {
        const std::string name = names_.sent(bytes, isTaken);
        const bool followsPage = shownOfReply(command_) == 0 && awaitsData_;
        if (name == commandName_ + " data" || followsPage)
            return data(bytes, name, isTaken);
        commandName_ = name;
        command_.assign(bytes.begin(), bytes.end());
        awaitsData_ = !bytes.empty() && bytes[0] == kPage;
        if (name.empty() || !isTaken)
            command_.clear();
        if (name.empty())
            return secretBehind(1, bytes);
        return hasBlobData(bytes) ? secretBehind(kBlobHead, bytes, name) : allShown(bytes, name);
    }

    Message received(ByteView bytes) override {
        names_.received(bytes.size());
        awaitsData_ = false;
        if (bytes.empty() || family_ == sim::Family::Echo)
            return allShown(bytes);
        return secretBehind(shownOfReply(command_), bytes);
    }

    bool beginsAnew(ByteView, ByteView) const override { return true; }

private:
    Message data(ByteView bytes, const std::string& name, bool isTaken) {
        const bool isShown = shownOfReply(command_) > 0;
        awaitsData_ = awaitsData_ && !isTaken;
        return isShown ? allShown(bytes, name) : allSecret(bytes, name);
    }

    sim::Family family_;
    sim::ReportNames names_;
    Bytes command_; // what the next reply is to; empty: unknown
    std::string commandName_;
    bool awaitsData_ = false;
};

class StripeReports : public Decoder {
public:
    Message sent(ByteView bytes, bool) override {
        return stripeCommand(bytes, names_.sent(bytes, true), command_);
    }
    Message received(ByteView bytes) override { return stripeReply(bytes, command_); }
    bool beginsAnew(ByteView, ByteView) const override { return true; }

private:
    sim::ReportNames names_{sim::Family::Band};
    Bytes command_;
};

} // namespace

std::unique_ptr<Decoder> reportDecoder(int product, std::size_t reportSize) {
    if (product == ZELTAGAPI_ZELBAND || reportSize == kStripeReport)
        return std::make_unique<StripeReports>();
    return std::make_unique<TagReports>(product == ZELTAGAPI_ZELECHO ? sim::Family::Echo
                                                                     : sim::Family::Tag);
}

} // namespace zel::cli
