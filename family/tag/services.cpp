// SPDX-License-Identifier: MIT
// Beep, volume, radio: one query each.
#include "family/tag/services.h"

#include "family/tag/ascii_protocol.h"
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/stream.h"
#include "frame/zelTagAPI.h"

#include <algorithm>

using namespace zel;
using tag::Payload;
namespace stream = zel::tag::stream;
using stream::Frame;
using stream::Instruction;

namespace {

constexpr std::uint8_t kBeep = 0x03;
constexpr std::uint8_t kGetVolume = 0x06;
constexpr std::uint8_t kGetRadio = 0x07;
constexpr std::uint8_t kSetVolume = 0x86;
constexpr std::uint8_t kSetRadio = 0x87;
constexpr int kRadioPresent = 0x80;
constexpr int kRadioBits = 3;
constexpr std::uint8_t kGetSpeed = 0x01;
constexpr std::uint8_t kSetSpeed = 0x81;
constexpr int kUnknown = -1;

Payload service(std::uint8_t subCommand, std::uint8_t argument = 0) {
    return tag::command(tag::Opcode::Service, subCommand, argument);
}

bool isZero(const Payload& reply) {
    return std::all_of(reply.begin(), reply.end(), [](std::uint8_t byte) { return byte == 0; });
}

// One query with an error word of its own. Whether both reports went through.
bool ask(const Payload& request, Payload& reply, std::int64_t error) {
    tag::clearError();
    return tag::query(request, reply) || tag::fail(error);
}

bool askRadio(int& state) {
    Payload reply;
    if (!ask(service(kGetRadio), reply, ZELTAGAPI_ERR_GET_RADIO))
        return false;
    state = reply[2];
    return true;
}

// At least one beep, five at most, two long ones at most. One kind of reader takes 0 as a command
// that ends its keystroke mode.
std::uint8_t beepCode(unsigned char code, short isLong) {
    int beeps = std::min<int>(code, 5);
    if (beeps == 0 && !isKQ7Reader())
        beeps = 1;
    if (isLong != 0)
        beeps = std::min(beeps, 2) | 0x80;
    return static_cast<std::uint8_t>(beeps);
}

int beepOnStream(std::uint8_t code) {
    if (tag::usesAscii())
        return tag::beepByAscii(code);
    Frame frame(Instruction::Service, kBeep, code);
    return stream::command(frame) ? 1 : 0;
}

// A number of one byte, or -1.
int readNumber(Instruction instruction, std::uint8_t subCommand) {
    Frame frame(instruction, subCommand);
    frame.bytes[Frame::kCount] = 1;
    return stream::readCounted(frame) ? frame.data()[0] : kUnknown;
}

int writeNumber(Instruction instruction, std::uint8_t subCommand, std::uint8_t number) {
    Frame frame(instruction, subCommand, number);
    return stream::read(frame) ? 1 : 0;
}

} // namespace

int zeltag_BeepNow(unsigned char code, short isLong) {
    const std::uint8_t beeps = beepCode(code, isLong);
    tag::clearError();
    if (stream::isActive())
        return beepOnStream(beeps);
    Payload reply;
    return ask(service(kBeep, beeps), reply, ZELTAGAPI_ERR_SERVICE) ? 1 : 0;
}

int zeltag_SetBeeperVolume(unsigned char volume) {
    tag::clearError();
    if (stream::isActive())
        return writeNumber(Instruction::Service, kSetVolume, volume);
    Payload reply;
    return ask(service(kSetVolume, volume), reply, ZELTAGAPI_ERR_SERVICE) && !isZero(reply) ? 1 : 0;
}

int zeltag_GetBeeperVolume() {
    tag::clearError();
    if (stream::isActive())
        return readNumber(Instruction::Service, kGetVolume);
    Payload reply;
    const bool known = ask(service(kGetVolume), reply, ZELTAGAPI_ERR_SERVICE) && !isZero(reply);
    return known ? reply[2] : kUnknown;
}

int IsFastWriteReader() {
    const int volume = zeltag_GetBeeperVolume();
    const int highest = GetMaxConfig();
    return highest == 1 || highest == 3 || volume != kUnknown ? 1 : 0;
}

int zeltag_SetBTLEConfiguration(unsigned char configuration) {
    Payload reply;
    return ask(service(kSetRadio, configuration), reply, ZELTAGAPI_ERR_SET_RADIO) ? 1 : 0;
}

int zeltag_GetBTLEConfiguration() {
    int state = 0;
    return askRadio(state) && (state & kRadioPresent) != 0 ? state & kRadioBits : kUnknown;
}

int zeltag_IsBTLEPresent() {
    int state = 0;
    return askRadio(state) && (state & kRadioPresent) != 0 ? 1 : 0;
}

// Line speeds belong to readers on a byte stream.
int zeltag_ReadBaudRate() {
    return stream::isActive() ? readNumber(Instruction::Speed, kGetSpeed) : kUnknown;
}

int zeltag_WriteBaudRate(unsigned char code) {
    return stream::isActive() ? writeNumber(Instruction::Speed, kSetSpeed, code) : 0;
}
