// SPDX-License-Identifier: MIT
// The simulated proximity reader's commands, and how long it works on them.
#include "sim/tag/model.h"

#include "sim/tag/commands.h"

#include <algorithm>
#include <utility>

namespace zel::sim {

namespace {

constexpr std::uint8_t kActiveCard = 0x01; // kind of card data

// Microseconds of work during which no command may come.
constexpr std::uint64_t kFastCommit = 20'000;
constexpr std::uint64_t kSlowCommit = 1'200'000;
constexpr std::uint64_t kFactoryReset = 1'200'000;
constexpr std::uint64_t kCardTypeWrite = 10'000;
constexpr std::uint64_t kSetMove = 100'000;
constexpr std::uint64_t kBlobSave = 500'000;

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

TagModel::TagModel(TagOptions made)
    : options(std::move(made)), memory(options), services(options), multi(options, memory),
      field([] { return Card{}; }) {}

void TagModel::powerUp() {
    memory.powerUp();
    multi.blobs().powerUp();
    busy_ = {};
    command_ = {};
    result_ = {};
}

void TagModel::run(const TagBlock& command) {
    const TagBlock before = std::exchange(command_, command);
    switch (command[0]) {
    case opcode::kMulti:
        runMulti();
        break;
    case opcode::kService:
        result_ = services.run(command);
        break;
    case opcode::kCommit:
        commit(before);
        break;
    case opcode::kFactoryDefaults:
        memory.resetToFactory();
        busy_.hold(kFactoryReset);
        break;
    default:
        break;
    }
}

// The reader takes no time over a reference.
void TagModel::runMulti() {
    result_ = multi.run(command_);
    if (result_ == TagBlock{})
        return;
    if (TagMulti::isMove(command_))
        busy_.hold(kSetMove);
    if (TagBlobs::isSave(command_) && !multi.blobs().isReferenceLast())
        busy_.hold(kBlobSave);
}

// The commit behind the end of a blob has nothing more to save.
void TagModel::commit(const TagBlock& before) {
    memory.commit();
    multi.blobs().commit();
    if (command_[1] == 0 && TagBlobs::isSave(before))
        return;
    busy_.hold(options.writesFast() ? kFastCommit : kSlowCommit);
}

// The written LUID stands one byte further along than in the reply.
void TagModel::write(const TagBlock& command, const TagBlock& data) {
    command_ = command;
    if (TagBlock* block = addressedBlock()) {
        *block = data;
    } else if (command_[0] == opcode::kCardType) {
        memory.configuration().cardType = wordOf(data[1], data[2]);
        memory.configuration().cardPriority = (data[3] & 1) != 0;
        busy_.hold(kCardTypeWrite);
    } else if (command_[0] == opcode::kLuid) {
        memory.current.luid = wordOf(data[1], data[2]);
    }
}

TagBlock* TagModel::addressedBlock() {
    const std::uint8_t code = command_[0];
    if (opcode::isBlock(code))
        return &memory.configuration().block[code - opcode::kBlock0];
    return code == opcode::kPage ? addressedPage() : nullptr;
}

// The third and the fourth byte select the fields or one of the two keys.
TagBlock* TagModel::addressedPage() {
    TagConfiguration& configuration = memory.configuration();
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

TagBlock TagModel::reply() {
    if (const TagBlock* block = addressedBlock())
        return *block;
    switch (command_[0]) {
    case opcode::kCardType:
        return cardType();
    case opcode::kLuid:
        return luid();
    case opcode::kMulti:
    case opcode::kService:
        return result_;
    case opcode::kCardData:
        return cardData(command_[1], command_[2]);
    case opcode::kIdentifierPage:
        return idPage(command_[1]);
    case opcode::kIdentifier:
        return idPage(0);
    case opcode::kBitCount:
        return {latched_.bits};
    default:
        return {};
    }
}

TagBlock TagModel::luid() const {
    const std::uint16_t number = memory.current.luid;
    return {low(number), high(number), low(kDeviceId), high(kDeviceId)};
}

TagBlock TagModel::cardType() const {
    const TagConfiguration& active = memory.configuration();
    return {0, low(active.cardType), high(active.cardType), active.cardPriority};
}

// The first page latches the card, so that the later replies of one read belong to it.
TagBlock TagModel::idPage(unsigned page) {
    if (page == 0)
        latched_ = field();
    return pageOf(latched_.id, page);
}

// Likewise with the first block of its data.
TagBlock TagModel::cardData(unsigned kind, unsigned block) {
    if (kind != kActiveCard)
        return {};
    if (block == 0)
        latched_ = field();
    return pageOf(latched_.data, block);
}

} // namespace zel::sim
