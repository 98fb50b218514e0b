// SPDX-License-Identifier: MIT
// Names by companions of the three families, and those of frames.
#include "sim/demo/names.h"

#include "sim/band/reader.h"
#include "sim/echo/sensor.h"
#include "sim/tag/commands.h"
#include "sim/tag/instructions.h"

#include <array>
#include <vector>

namespace zel::sim {

namespace {

std::shared_ptr<Device> companionOf(Family family) {
    if (family == Family::Band)
        return std::make_shared<BandReader>();
    if (family == Family::Echo)
        return std::make_shared<EchoSensor>();
    return std::make_shared<TagReader>();
}

std::string commandName(std::uint8_t code, std::span<const std::uint8_t> header) {
    const std::array<std::uint8_t, 4> command = {code, header[1], header[2], header[3]};
    return tagCommandName(command);
}

std::string blockName(unsigned block) {
    return block == 4 ? "card type" : "block " + std::to_string(block);
}

} // namespace

ReportNames::ReportNames(Family family) : companion_(companionOf(family)) {}

std::string ReportNames::sent(std::span<const std::uint8_t> payload, bool taken) {
    std::string name = companion_->nameOf(payload);
    if (taken)
        companion_->take(0, payload);
    else
        companion_->sendLost(payload);
    return name;
}

void ReportNames::received(std::size_t size) {
    std::vector<std::uint8_t> reply(size);
    companion_->answer(0, reply);
}

std::string tagFrameName(std::span<const std::uint8_t> header) {
    constexpr std::uint8_t kProbe = 0xED;
    if (header.size() < 4)
        return "";
    switch (header[0]) {
    case instruction::kIdentifier:
        return "identifier";
    case instruction::kBlock:
        return blockName(header[1]);
    case instruction::kCommit:
        return "commit";
    case instruction::kFactoryDefaults:
        return "factory defaults";
    case instruction::kLuid:
        return header[1] == kProbe ? "presence" : "LUID";
    case instruction::kWriteLuid:
        return "write LUID";
    case instruction::kMulti:
        return header[1] == 0 ? "fields" : commandName(opcode::kMulti, header);
    case instruction::kFields:
        return "fields";
    case instruction::kService:
        return commandName(opcode::kService, header);
    case instruction::kSpeed:
        return header[1] == 1 ? "speed" : "set speed";
    case instruction::kWriteBlock:
        return "write " + blockName(header[1]);
    case instruction::kWriteFields:
        return header[2] == 0 ? "write fields" : "write key";
    default:
        return "";
    }
}

} // namespace zel::sim
