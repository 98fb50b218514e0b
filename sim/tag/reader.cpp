// SPDX-License-Identifier: MIT
// The simulated proximity reader's commands.
#include "sim/tag/reader.h"

#include "sim/tag/names.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr std::uint8_t kCardType = 0x84;
constexpr std::uint8_t kPage = 0x85;
constexpr std::uint8_t kCardData = 0x88;
constexpr std::uint8_t kMulti = 0x89;
constexpr std::uint8_t kLuid = 0x8A;
constexpr std::uint8_t kService = 0x8C;
constexpr std::uint8_t kServiceVolume = 0x06;
constexpr std::uint8_t kActiveCard = 0x01; // kind of card data
constexpr std::uint8_t kLongId = 0x8D;
constexpr std::uint8_t kBitCount = 0x8E;
constexpr std::uint8_t kId = 0x8F;
constexpr std::uint8_t kCommit = 0x90;
constexpr std::uint8_t kFactory = 0xA0;
constexpr std::uint8_t kEnterBootLoader = 0xF0;

// Microseconds of work during which no command may come.
constexpr std::uint64_t kFastCommit = 20'000;
constexpr std::uint64_t kSlowCommit = 1'200'000;
constexpr std::uint64_t kFactoryReset = 1'200'000;
constexpr std::uint64_t kCardTypeWrite = 10'000;
constexpr std::uint64_t kSetMove = 100'000;
constexpr std::uint64_t kBlobSave = 500'000;

bool isBlock(std::uint8_t opcode) { return opcode >= 0x80 && opcode <= 0x83; }

bool isWritable(std::uint8_t opcode) {
    return isBlock(opcode) || opcode == kCardType || opcode == kPage || opcode == kLuid;
}

// A host asks for the volume right behind a commit, to learn how long it must wait.
bool isAllowedWhileBusy(const TagBlock& command) {
    return command[0] == kService && command[1] == kServiceVolume;
}

std::uint8_t low(std::uint16_t word) { return static_cast<std::uint8_t>(word); }
std::uint8_t high(std::uint16_t word) { return static_cast<std::uint8_t>(word >> 8); }
std::uint16_t wordOf(std::uint8_t lowByte, std::uint8_t highByte) {
    return static_cast<std::uint16_t>(lowByte | highByte << 8);
}

// Eight bytes of a store, zeros behind its end.
template <std::size_t Size>
TagBlock pageOf(const std::array<std::uint8_t, Size>& store, std::size_t page) {
    TagBlock bytes = {};
    if (page < Size / bytes.size())
        std::copy_n(store.begin() + page * bytes.size(), bytes.size(), bytes.begin());
    return bytes;
}

} // namespace

TagReader::TagReader(Options options)
    : options_(std::move(options)), memory_(options_), services_(options_),
      multi_(options_, memory_) {
    removeCard();
}

void TagReader::present(const Card& card) {
    field_ = [card] { return card; };
}

void TagReader::replyWith(std::vector<std::uint8_t> command, const Block& reply) {
    fixedReplies_.emplace(fixedReplies_.begin(), std::move(command), reply);
}

void TagReader::powerUp() {
    memory_.powerUp();
    multi_.blobs().powerUp();
    boot_.powerUp();
    busy_ = {};
    command_ = {};
    result_ = {};
    awaitsData_ = false;
    lostData_.reset();
}

std::string TagReader::nameOf(std::span<const std::uint8_t> payload) const {
    if (std::string frame = boot_.nameOf(payload); !frame.empty())
        return frame;
    if (isData(payload))
        return tagCommandName(command_) + " data";
    const std::string blob = multi_.blobs().nameOf(payload);
    return blob.empty() ? tagCommandName(payload) : blob;
}

// A host whose data was lost sends the same again, or gives up and comes with another command.
bool TagReader::isData(std::span<const std::uint8_t> payload) const {
    return awaitsData_ && (!lostData_ || std::equal(payload.begin(), payload.end(),
                                                    lostData_->begin(), lostData_->end()));
}

void TagReader::sendLost(std::span<const std::uint8_t> payload) {
    if (!isData(payload) || payload.size() != command_.size())
        return;
    lostData_ = Block{};
    std::copy(payload.begin(), payload.end(), lostData_->begin());
}

// A block write is its command, then its data with no fetch in between.
bool TagReader::take(std::uint8_t reportId, std::span<const std::uint8_t> payload) {
    if (reportId != 0 || payload.size() != command_.size() || !boot_.hasPower())
        return false;
    Block report;
    std::copy(payload.begin(), payload.end(), report.begin());
    if (boot_.isRunning())
        return takeInBootLoader(report);
    const bool takesData = isData(payload);
    if (!takesData && multi_.blobs().faultOf(payload) == BlobFault::Refused)
        return false;
    lostData_.reset();
    awaitsData_ = !takesData && isWritable(report[0]);
    if (takesData) {
        writeData(report);
        return true;
    }
    const Block before = std::exchange(command_, report);
    checkPause();
    runCommand(before);
    return true;
}

TagReader::Block TagReader::run(const Block& command) {
    runCommand(std::exchange(command_, command));
    return reply();
}

void TagReader::write(const Block& command, const Block& data) {
    command_ = command;
    writeData(data);
}

void TagReader::checkPause() {
    if (!isAllowedWhileBusy(command_))
        complain(tagCommandName(command_), busy_.remaining());
}

void TagReader::complain(const std::string& exchange, std::uint64_t early) {
    if (early == 0)
        return;
    ++violations_;
    lastViolation_ = exchange + ", " + std::to_string(early) + " us too early";
    remark_ = "too early";
}

// All but the frames of a line and a new start means nothing to a boot loader.
bool TagReader::takeInBootLoader(const Block& report) {
    complain(nameOf(report), boot_.tooEarly());
    if (report[0] == kEnterBootLoader)
        boot_.enter(report[1]);
    else
        boot_.take(report);
    return true;
}

bool TagReader::answerFromBootLoader(std::span<std::uint8_t> out) {
    complain("poll", boot_.tooEarly());
    Block bytes = {};
    if (!boot_.answer(bytes))
        return false;
    std::copy_n(bytes.begin(), std::min(bytes.size(), out.size()), out.begin());
    return true;
}

void TagReader::runCommand(const Block& before) {
    switch (command_[0]) {
    case kMulti:
        runMulti();
        break;
    case kService:
        result_ = services_.run(command_);
        break;
    case kCommit:
        commit(before);
        break;
    case kFactory:
        memory_.resetToFactory();
        busy_.hold(kFactoryReset);
        break;
    case kEnterBootLoader:
        boot_.enter(command_[1]);
        break;
    default:
        break;
    }
}

// The reader takes no time over a reference.
void TagReader::runMulti() {
    result_ = multi_.run(command_);
    if (result_ == Block{})
        return;
    if (TagMulti::isMove(command_))
        busy_.hold(kSetMove);
    if (TagBlobs::isSave(command_) && !multi_.blobs().isReferenceLast())
        busy_.hold(kBlobSave);
}

// The commit behind the end of a blob has nothing more to save.
void TagReader::commit(const Block& before) {
    memory_.commit();
    multi_.blobs().commit();
    if (command_[1] == 0 && TagBlobs::isSave(before))
        return;
    busy_.hold(options_.writesFast() ? kFastCommit : kSlowCommit);
}

bool TagReader::answer(std::uint8_t reportId, std::span<std::uint8_t> out) {
    awaitsData_ = false;
    if (reportId != 0 || !boot_.hasPower())
        return false;
    if (boot_.isRunning())
        return answerFromBootLoader(out);
    const BlobFault fault = multi_.blobs().faultOf(command_);
    if (fault == BlobFault::NoAnswer)
        return false;
    Block bytes = reply();
    if (fault == BlobFault::WrongEcho)
        bytes[3] ^= 0x01;
    std::copy_n(bytes.begin(), std::min(bytes.size(), out.size()), out.begin());
    return true;
}

TagReader::Block* TagReader::addressedBlock() {
    const std::uint8_t opcode = command_[0];
    if (isBlock(opcode))
        return &memory_.configuration().block[opcode - 0x80];
    return opcode == kPage ? addressedPage() : nullptr;
}

// The third and the fourth byte select the fields or one of the two keys.
TagReader::Block* TagReader::addressedPage() {
    Configuration& configuration = memory_.configuration();
    const std::size_t page = command_[1];
    switch (wordOf(command_[3], command_[2])) {
    case 0x0010:
        return page < configuration.page.size() ? &configuration.page[page] : nullptr;
    case 0x0100:
        return page < configuration.key[0].size() ? &configuration.key[0][page] : nullptr;
    case 0x1100:
        return page < configuration.key[1].size() ? &configuration.key[1][page] : nullptr;
    default:
        return nullptr;
    }
}

// The written LUID stands one byte further along than in the reply.
void TagReader::writeData(const Block& data) {
    if (Block* block = addressedBlock()) {
        *block = data;
    } else if (command_[0] == kCardType) {
        memory_.configuration().cardType = wordOf(data[1], data[2]);
        memory_.configuration().cardPriority = (data[3] & 1) != 0;
        busy_.hold(kCardTypeWrite);
    } else if (command_[0] == kLuid) {
        memory_.current.luid = wordOf(data[1], data[2]);
    }
}

TagReader::Block TagReader::replyToLuid() const {
    const std::uint16_t luid = memory_.current.luid;
    return {low(luid), high(luid), low(kDeviceId), high(kDeviceId)};
}

TagReader::Block TagReader::replyToCardType() const {
    const Configuration& active = memory_.configuration();
    return {0, low(active.cardType), high(active.cardType), active.cardPriority};
}

TagReader::Block TagReader::reply() {
    const auto fixed = std::find_if(fixedReplies_.begin(), fixedReplies_.end(), [&](auto& row) {
        return row.first.size() <= command_.size() &&
               std::equal(row.first.begin(), row.first.end(), command_.begin());
    });
    if (fixed != fixedReplies_.end())
        return fixed->second;
    if (const Block* block = addressedBlock())
        return *block;
    switch (command_[0]) {
    case kCardType:
        return replyToCardType();
    case kLuid:
        return replyToLuid();
    case kMulti:
    case kService:
        return result_;
    case kCardData:
        return cardData(command_[1], command_[2]);
    case kLongId:
        return idPage(command_[1]);
    case kId:
        return idPage(0);
    case kBitCount:
        return {latched_.bits};
    default:
        return {};
    }
}

// The first page latches the card, so that the later replies of one read belong to it.
TagReader::Block TagReader::idPage(unsigned page) {
    if (page == 0)
        latched_ = field_();
    return pageOf(latched_.id, page);
}

// Likewise with the first block of its data.
TagReader::Block TagReader::cardData(unsigned kind, unsigned block) {
    if (kind != kActiveCard)
        return {};
    if (block == 0)
        latched_ = field_();
    return pageOf(latched_.data, block);
}

} // namespace zel::sim
