// SPDX-License-Identifier: MIT
// The commands of a TagPlus reader, by their sub-command in the second byte.
#include "sim/tag/multi.h"

#include "sim/tag/commands.h"

namespace zel::sim {

namespace {

TagBlock echo(const TagBlock& command) { return {command[0], command[1], command[2], command[3]}; }

} // namespace

bool TagMulti::isMove(const TagBlock& command) {
    return command[0] == opcode::kMulti && command[1] == multi::kMoveSet;
}

TagBlock TagMulti::run(const TagBlock& command) {
    if (!options_.isTagPlus())
        return {};
    switch (command[1]) {
    case multi::kQuery:
        return state();
    case multi::kVersion:
        return version(command);
    case multi::kCardTypes:
        return cardTypes(command[2]);
    case multi::kReadBlob:
        return blobs_.read(command);
    case multi::kSelect:
        return select(command);
    case multi::kMoveSet:
        return memory_.move(command[2], command[3]) ? echo(command) : TagBlock{};
    case multi::kWriteBlob:
        return blobs_.write(command);
    default:
        return {};
    }
}

TagBlock TagMulti::state() const {
    return {opcode::kMulti, 0, static_cast<std::uint8_t>(memory_.active),
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

} // namespace zel::sim
