// SPDX-License-Identifier: MIT
// The commands of multi-configuration readers.
#include "family/tag/multi_config.h"

#include "base/bytes.h"
#include "base/pause.h"
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/stream.h"
#include "frame/state/state.h"

#include <algorithm>
#include <unistd.h>

using namespace zel;
using tag::command;
using tag::Opcode;
using tag::Payload;
namespace stream = zel::tag::stream;
using stream::Frame;
using stream::Instruction;

namespace {

constexpr std::uint8_t kAsk = 0x01;
constexpr std::uint8_t kSelect = 0x81;
constexpr std::uint8_t kMove = 0x82;
constexpr std::uint8_t kMoveEnd = 0xFF;
constexpr std::uint8_t kCardTypeBlock = 4; // of SetBlock
constexpr int kSetBits = 7;
constexpr int kHighestConfig = ZELTAGAPI_MAX_CONFIGS - 1;
constexpr useconds_t kCardTypePause = 10'000; // µs
constexpr useconds_t kMovePause = 100'000;    // µs

int settle(tsDevDat& record, std::uint32_t state) {
    record.iTagPlusState = state;
    return 0;
}

// The number of the highest configuration that a reply tells, or one outside 0 to 10.
int highestConfig(const Payload& reply) { return reply[3] - 1; }

// Of the active configuration of what thereby is a multi-configuration reader.
void keepCardType(tsDevDat& record, std::uint16_t type, std::uint8_t flags) {
    tsTagCfg& config = activeConfig(record);
    config.iCardPriority = flags & 1;
    config.iCardType = type;
    record.iTagPlusState = tag::kMultiConfig;
}

int readCardType(tsDevDat& record) {
    Payload reply;
    if (!tag::query(command(Opcode::CardType), reply))
        return tag::fail(ZELTAGAPI_ERR_READ);
    keepCardType(record, wordOf(reply[2], reply[1]), reply[3]);
    return 1;
}

// What a stream refuses is asked once more. `replyLength` counts one byte more than comes.
bool askStream(Frame& frame, unsigned headLength, unsigned replyLength) {
    return stream::read(frame, headLength, replyLength) ||
           stream::read(frame, headLength, replyLength);
}

// On a stream one reply tells it all: a 1, the active configuration, the number of configurations,
// a 0, the card type in two bytes, its priority in bit 0.
int settleOnStream(tsDevDat& record) {
    Frame frame(Instruction::Multi, kAsk);
    const std::uint8_t* const data = frame.data();
    if (!askStream(frame, 4, 8) || data[0] != 1 || data[1] > kHighestConfig || data[3] != 0)
        return settle(record, tag::kProbeFailed);
    const int highest = data[2] - 1;
    if (highest < 0 || highest > kHighestConfig)
        return 1;
    record.iMaxConfig = static_cast<std::uint16_t>(highest);
    record.iActConfig = lowByte(std::min<int>(data[1], highest));
    keepCardType(record, wordOf(data[5], data[4]), data[6]);
    return 1;
}

int settleOnUsb(tsDevDat& record) {
    if (!tag::send(command(Opcode::Multi, kAsk)))
        return settle(record, tag::kProbeFailed);
    Payload reply;
    if (!tag::fetch(reply) || reply[0] != lowByte(Opcode::Multi))
        return settle(record, tag::kNotKnown);
    const int highest = highestConfig(reply);
    if (highest < 0 || highest > kHighestConfig) {
        record.iActConfig = 0;
        return settle(record, tag::kNotKnown);
    }
    record.iMaxConfig = static_cast<std::uint16_t>(highest);
    record.iActConfig = lowByte(std::min<int>(reply[2], highest));
    return readCardType(record);
}

Payload cardTypeOf(const tsTagCfg& config) {
    return {0, lowByte(config.iCardType), lowByte(config.iCardType >> 8U),
            lowByte(config.iCardPriority != 0)};
}

// Whatever is known of the reader, and without a pause.
int writeCardTypeOnStream(const tsTagCfg& config) {
    Frame frame(Instruction::SetBlock, kCardTypeBlock, 0, tag::kPayloadSize);
    frame.setOutgoing(cardTypeOf(config));
    return stream::write(frame) || stream::write(frame) ? 1 : 0;
}

int writeCardTypeOnUsb(const tsTagCfg& config) {
    if (tag::write(command(Opcode::CardType), cardTypeOf(config)) != tag::Written::Yes)
        return tag::fail(ZELTAGAPI_ERR_WRITE);
    pauseFor(kCardTypePause);
    return 1;
}

bool selectOnStream(std::uint8_t config) {
    Frame frame(Instruction::Multi, kSelect, config);
    return askStream(frame, 4, 8);
}

bool selectOnUsb(std::uint8_t config) {
    Payload reply;
    return tag::query(command(Opcode::Multi, kSelect, config), reply) &&
           reply[0] == lowByte(Opcode::Multi) && reply[1] == kSelect;
}

bool moveOnStream(std::uint8_t source, std::uint8_t target) {
    Frame frame(Instruction::Multi, kMove, source, target);
    frame.bytes[6] = kMoveEnd;
    return askStream(frame, 6, 6);
}

// Only a reply that doesn't come is told by the error word.
bool moveOnUsb(std::uint8_t source, std::uint8_t target) {
    Payload request = command(Opcode::Multi, kMove, source, target);
    request[5] = kMoveEnd;
    if (!tag::send(request))
        return false;
    Payload reply;
    return tag::fetch(reply) || tag::fail(ZELTAGAPI_ERR_SERVICE);
}

} // namespace

int SendGetTagPlus() {
    tsDevDat& record = activeRecord();
    record.iMaxConfig = 0;
    if (record.iTagPlusState == tag::kProbeFailed)
        return 0;
    return stream::isActive() ? settleOnStream(record) : settleOnUsb(record);
}

int SendSetTagPlus() {
    const tsDevDat& record = activeRecord();
    if (stream::isActive())
        return writeCardTypeOnStream(activeConfig(record));
    return record.iTagPlusState == tag::kMultiConfig ? writeCardTypeOnUsb(activeConfig(record)) : 0;
}

int zeltag_SendSelectActConfig(int config) {
    tsDevDat& record = activeRecord();
    if (record.iTagPlusState != tag::kMultiConfig)
        return 0;
    record.iActConfig = lowByte(config);
    return stream::isActive() ? selectOnStream(record.iActConfig) : selectOnUsb(record.iActConfig);
}

int PlusBlockMove(int source, int target) {
    if (activeRecord().iTagPlusState != tag::kMultiConfig)
        return 0;
    const std::uint8_t from = lowByte(source & kSetBits);
    const std::uint8_t to = lowByte(target & kSetBits);
    if (!(stream::isActive() ? moveOnStream(from, to) : moveOnUsb(from, to)))
        return 0;
    pauseFor(kMovePause);
    return 1;
}
