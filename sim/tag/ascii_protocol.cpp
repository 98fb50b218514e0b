// SPDX-License-Identifier: MIT
// The commands of the ASCII protocol.
#include "sim/tag/ascii_protocol.h"

#include "sim/tag/commands.h"
#include "sim/tag/variables.h"

#include <cstdio>

namespace zel::sim {

namespace {

constexpr std::string_view kPrefix = "ZTAG:";
constexpr std::string_view kLowerPrefix = "ztag:";
constexpr std::string_view kPrompt = "Norvanex>";
constexpr std::string_view kError = "Error\r";
constexpr std::uint8_t kLongBeep = 0x80;

std::string assignment(std::string_view key, bool value) {
    return std::string(kPrefix).append(key) + '=' + (value ? '1' : '0') + '\r';
}

} // namespace

std::string TagAsciiProtocol::take(char character) {
    std::string back(echoes_ ? 1 : 0, character);
    if (character != '\r') {
        line_ += character;
        return back;
    }
    const std::string line = std::exchange(line_, {});
    if (line.empty())
        return back;
    heard_.push_back(line);
    back += answer(line);
    if (prompts_)
        back += kPrompt;
    return back;
}

std::string TagAsciiProtocol::answer(std::string_view line) {
    if (!line.starts_with(kPrefix) && !line.starts_with(kLowerPrefix))
        return std::string(kError);
    return carryOut(line.substr(kPrefix.size()));
}

std::string TagAsciiProtocol::carryOut(std::string_view command) {
    if (const std::size_t sign = command.find('='); sign != std::string_view::npos)
        return assign(command.substr(0, sign), command.substr(sign + 1));
    if (command == "VAR")
        return listing_ ? *listing_ : listing();
    if (command == "DEV.VER")
        return versionAnswer_ ? *versionAnswer_ : version();
    if (command == "QID.ID")
        return idAnswer_ ? *idAnswer_ : identifier();
    if (command != "CFG.RESET")
        return std::string(kError);
    reader_.run({opcode::kFactoryDefaults});
    return {};
}

// There is no commit in this protocol: what is assigned is kept.
std::string TagAsciiProtocol::assign(std::string_view key, std::string_view text) {
    const std::optional<unsigned> value = tagVariableValue(text);
    if (!value)
        return std::string(kError);
    const auto number = static_cast<std::uint8_t>(*value);
    if (key == "cmd.echo") {
        echoes_ = number != 0;
    } else if (key == "cmd.prompt") {
        prompts_ = number != 0;
    } else if (key == "out.beep.short" || key == "out.beep.long") {
        const int code = number | (key == "out.beep.long" ? kLongBeep : 0);
        reader_.run({opcode::kService, service::kBeep, static_cast<std::uint8_t>(code)});
    } else if (setTagVariable(reader_, key, *value)) {
        reader_.run({opcode::kCommit});
    } else {
        return std::string(kError);
    }
    return {};
}

std::string TagAsciiProtocol::listing() const {
    return assignment("cmd.echo", echoes_) + assignment("cmd.prompt", prompts_) +
           tagVariableLines(reader_);
}

std::string TagAsciiProtocol::version() const {
    const unsigned id = reader_.deviceId();
    char text[32];
    std::snprintf(text, sizeof text, "{%X.%u.%u}\r", id >> 8, id >> 4 & 0x0F, id & 0x0F);
    return text;
}

// The second and the third number mean nothing to the model.
std::string TagAsciiProtocol::identifier() {
    unsigned long long id = 0;
    const TagBlock bytes = reader_.run({opcode::kIdentifier});
    for (unsigned byte = 0; byte < bytes.size(); ++byte)
        id |= static_cast<unsigned long long>(bytes[byte]) << 8 * byte;
    char text[64];
    std::snprintf(text, sizeof text, "{%X,0,0,%u;%llX}\r", idAge_,
                  static_cast<unsigned>(reader_.run({opcode::kBitCount})[0]), id);
    return text;
}

} // namespace zel::sim
