// SPDX-License-Identifier: MIT
// The simulated proximity reader's commands.
#include "sim/tag_reader.h"

#include <algorithm>
#include <iterator>

namespace zel::sim {

namespace {

constexpr std::uint8_t kCardType = 0x84;
constexpr std::uint8_t kPage = 0x85;
constexpr std::uint8_t kLuid = 0x8A;
constexpr std::uint8_t kService = 0x8C;
constexpr std::uint8_t kServiceBeep = 0x03;
constexpr std::uint8_t kLongId = 0x8D;
constexpr std::uint8_t kBitCount = 0x8E;
constexpr std::uint8_t kId = 0x8F;
constexpr std::uint8_t kCommit = 0x90;
constexpr std::uint8_t kFactory = 0xA0;
constexpr std::uint8_t kSepFldSelector = 0x10; // third argument of a page command

struct CommandName {
    std::uint8_t opcode;
    const char* name;
};

constexpr CommandName kNames[] = {
    {0x80, "block 0"},
    {0x81, "block 1"},
    {0x82, "block 2"},
    {0x83, "block 3"},
    {kCardType, "card type"},
    {kPage, "page"},
    {0x88, "card data"},
    {0x89, "multi"},
    {kLuid, "LUID"},
    {kService, "service"},
    {kLongId, "identifier page"},
    {kBitCount, "bit count"},
    {kId, "identifier"},
    {kCommit, "commit"},
    {kFactory, "factory defaults"},
};

bool isBlock(std::uint8_t opcode) { return opcode >= 0x80 && opcode < 0x80 + TagReader::kBlocks; }

bool isWritable(std::uint8_t opcode) {
    return isBlock(opcode) || opcode == kCardType || opcode == kPage || opcode == kLuid;
}

std::uint8_t low(std::uint16_t word) { return static_cast<std::uint8_t>(word); }
std::uint8_t high(std::uint16_t word) { return static_cast<std::uint8_t>(word >> 8); }
std::uint16_t wordOf(std::uint8_t lowByte, std::uint8_t highByte) {
    return static_cast<std::uint16_t>(lowByte | highByte << 8);
}

} // namespace

TagReader::Settings TagReader::factorySettings() {
    Settings settings = {};
    settings.block[0] = {3, 5, 0x11, 16, 26, 0, 0x28, 0x01};
    settings.block[1] = {0, 16, 20, 40, 1, 1, 0, 0};
    settings.page[0] = {12, 0};
    return settings;
}

TagReader::TagReader() : stored_(factorySettings()), current_(stored_) { removeCard(); }

void TagReader::present(const Card& card) {
    field_ = [card] { return card; };
}

void TagReader::powerUp() {
    current_ = stored_;
    awaitsData_ = false;
}

const char* TagReader::nameOf(std::span<const std::uint8_t> payload) const {
    if (payload.empty())
        return "";
    const auto row = std::find_if(std::begin(kNames), std::end(kNames),
                                  [&](const CommandName& n) { return n.opcode == payload[0]; });
    return row == std::end(kNames) ? "" : row->name;
}

// A block write is its command, then its data with no fetch in between.
bool TagReader::take(std::uint8_t reportId, std::span<const std::uint8_t> payload) {
    if (reportId != 0 || payload.size() != data_.size())
        return false;
    if (awaitsData_) {
        std::copy(payload.begin(), payload.end(), data_.begin());
        awaitsData_ = false;
        writeData();
        return true;
    }
    std::copy(payload.begin(), payload.end(), command_.begin());
    awaitsData_ = isWritable(command_[0]);
    if (command_[0] == kCommit)
        stored_ = current_;
    if (command_[0] == kFactory)
        current_ = stored_ = factorySettings();
    if (command_[0] == kService && command_[1] == kServiceBeep)
        beep();
    return true;
}

bool TagReader::answer(std::uint8_t reportId, std::span<std::uint8_t> out) {
    awaitsData_ = false;
    if (reportId != 0)
        return false;
    const Block bytes = reply();
    std::copy_n(bytes.begin(), std::min(bytes.size(), out.size()), out.begin());
    return true;
}

TagReader::Block* TagReader::addressedBlock() {
    const std::uint8_t opcode = command_[0];
    if (isBlock(opcode))
        return &current_.block[opcode - 0x80];
    const bool isSepFld = opcode == kPage && command_[2] == 0 && command_[3] == kSepFldSelector;
    return isSepFld && command_[1] < kPages ? &current_.page[command_[1]] : nullptr;
}

// The written LUID stands one byte further along than in the reply.
void TagReader::writeData() {
    if (Block* block = addressedBlock()) {
        *block = data_;
    } else if (command_[0] == kCardType) {
        current_.cardType = wordOf(data_[1], data_[2]);
        current_.cardPriority = (data_[3] & 1) != 0;
    } else if (command_[0] == kLuid) {
        current_.luid = wordOf(data_[1], data_[2]);
    }
}

TagReader::Block TagReader::replyToLuid() const {
    return {low(current_.luid), high(current_.luid), low(kDeviceId), high(kDeviceId)};
}

TagReader::Block TagReader::replyToCardType() const {
    return {0, low(current_.cardType), high(current_.cardType), current_.cardPriority};
}

TagReader::Block TagReader::reply() {
    if (const Block* block = addressedBlock())
        return *block;
    switch (command_[0]) {
    case kCardType:
        return replyToCardType();
    case kLuid:
        return replyToLuid();
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
    Block bytes = {};
    if (page == 0)
        latched_ = field_();
    if (page < latched_.id.size() / bytes.size())
        std::copy_n(latched_.id.begin() + page * bytes.size(), bytes.size(), bytes.begin());
    return bytes;
}

void TagReader::beep() { ++beeps_; }

} // namespace zel::sim
