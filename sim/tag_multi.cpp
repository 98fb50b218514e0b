// SPDX-License-Identifier: MIT
// The commands of a TagPlus reader, by their sub-command in the second byte.
#include "sim/tag_multi.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr std::uint8_t kMulti = 0x89;
constexpr std::uint8_t kMove = 0x82;
constexpr std::uint8_t kReference = 0x90;
constexpr std::uint8_t kReferenceEnd = 0xFF;

TagBlock echo(const TagBlock& command) { return {command[0], command[1], command[2], command[3]}; }

} // namespace

bool TagMulti::isMove(const TagBlock& command) {
    return command[0] == kMulti && command[1] == kMove;
}

bool TagMulti::isReferenceEnd(const TagBlock& command) {
    return command[0] == kMulti && command[1] == kReference && command[3] == kReferenceEnd;
}

TagBlock TagMulti::run(const TagBlock& command) {
    if (!options_.isTagPlus())
        return {};
    switch (command[1]) {
    case 0x01:
        return state();
    case 0x03:
        return version(command);
    case 0x04:
        return cardTypes(command[2]);
    case 0x81:
        return select(command);
    case kMove:
        return memory_.move(command[2], command[3]) ? echo(command) : TagBlock{};
    case kReference:
        return takeReference(command) ? echo(command) : TagBlock{};
    default:
        return {};
    }
}

TagBlock TagMulti::state() const {
    return {kMulti, 0, static_cast<std::uint8_t>(memory_.active),
            static_cast<std::uint8_t>(options_.tagPlusConfigurations)};
}

// A unit or slot that the reader doesn't have is of version 0.
TagBlock TagMulti::version(const TagBlock& command) const {
    TagBlock reply = echo(command);
    const auto& versions = options_.versions;
    if (command[2] >= versions.size() || command[3] >= versions[command[2]].size())
        return reply;
    const std::uint32_t number = versions[command[2]][command[3]];
    for (unsigned byte = 0; byte < 4; ++byte)
        reply[4 + byte] = static_cast<std::uint8_t>(number >> (24 - 8 * byte));
    return reply;
}

TagBlock TagMulti::cardTypes(std::size_t page) const {
    constexpr std::size_t kAPage = 4;
    TagBlock reply = {};
    for (std::size_t i = 0; i < kAPage && page * kAPage + i < options_.cardTypes.size(); ++i) {
        const std::uint16_t type = options_.cardTypes[page * kAPage + i];
        reply[2 * i] = static_cast<std::uint8_t>(type);
        reply[2 * i + 1] = static_cast<std::uint8_t>(type >> 8);
    }
    return reply;
}

TagBlock TagMulti::select(const TagBlock& command) {
    const std::size_t wanted = command[2];
    if (command[2] >= options_.tagPlusConfigurations ||
        wanted >= memory_.current.configuration.size())
        return {};
    memory_.active = wanted;
    return {command[0], command[1]};
}

bool TagMulti::openReference(const TagBlock& command) {
    isOpen_ = command[4] == 1 || command[4] == 2;
    if (isOpen_)
        references_.push_back({command[4], command[5], command[6]});
    return isOpen_;
}

bool TagMulti::takeReference(const TagBlock& command) {
    const std::size_t page = command[3];
    if (page == 0)
        return openReference(command);
    if (!isOpen_)
        return false;
    TagReference& reference = references_.back();
    if (page == kReferenceEnd) {
        isOpen_ = false;
        reference.isClosed = true;
        return true;
    }
    reference.data.resize(std::max(reference.data.size(), page * 4));
    std::copy_n(command.begin() + 4, 4,
                reference.data.begin() + static_cast<std::ptrdiff_t>((page - 1) * 4));
    return true;
}

} // namespace zel::sim
