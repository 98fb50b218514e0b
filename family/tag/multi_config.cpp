// SPDX-License-Identifier: MIT
// The commands of multi-configuration readers.
#include "family/tag/multi_config.h"

#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "frame/state.h"

#include <algorithm>
#include <unistd.h>

using namespace zel;
using tag::command;
using tag::Opcode;
using tag::Payload;

namespace {

constexpr std::uint8_t kAsk = 0x01;
constexpr std::uint8_t kSelect = 0x81;
constexpr std::uint8_t kMove = 0x82;
constexpr int kSetBits = 7;
constexpr int kHighestConfig = ZELTAGAPI_MAX_CONFIGS - 1;
constexpr useconds_t kCardTypePause = 10'000; // µs
constexpr useconds_t kMovePause = 100'000;    // µs

std::uint8_t low(unsigned value) { return static_cast<std::uint8_t>(value); }

std::uint16_t wordOf(std::uint8_t lowByte, std::uint8_t highByte) {
    return static_cast<std::uint16_t>(lowByte | highByte << 8);
}

int settle(tsDevDat& record, std::uint32_t state) {
    record.iTagPlusState = state;
    return 0;
}

// The number of the highest configuration that a reply tells, or one outside 0 to 10.
int highestConfig(const Payload& reply) { return reply[3] - 1; }

int readCardType(tsDevDat& record) {
    Payload reply;
    if (!tag::query(command(Opcode::CardType), reply))
        return tag::fail(tag::kReadFailed);
    tsTagCfg& config = activeConfig(record);
    config.iCardPriority = reply[3] & 1;
    config.iCardType = wordOf(reply[1], reply[2]);
    record.iTagPlusState = tag::kMultiConfig;
    return 1;
}

} // namespace

int SendGetTagPlus() {
    tsDevDat& record = activeRecord();
    record.iMaxConfig = 0;
    if (record.iTagPlusState == tag::kProbeFailed)
        return 0;
    if (!tag::send(command(Opcode::Multi, kAsk)))
        return settle(record, tag::kProbeFailed);
    Payload reply;
    if (!tag::fetch(reply) || reply[0] != low(static_cast<unsigned>(Opcode::Multi)))
        return settle(record, tag::kNotKnown);
    const int highest = highestConfig(reply);
    if (highest < 0 || highest > kHighestConfig) {
        record.iActConfig = 0;
        return settle(record, tag::kNotKnown);
    }
    record.iMaxConfig = static_cast<std::uint16_t>(highest);
    record.iActConfig = low(std::min<unsigned>(reply[2], static_cast<unsigned>(highest)));
    return readCardType(record);
}

int SendSetTagPlus() {
    tsDevDat& record = activeRecord();
    if (record.iTagPlusState != tag::kMultiConfig)
        return 0;
    const tsTagCfg& config = activeConfig(record);
    const Payload data = {0, low(config.iCardType), low(config.iCardType >> 8U),
                          low(config.iCardPriority != 0)};
    if (!tag::send(command(Opcode::CardType)) || !tag::send(data))
        return tag::fail(tag::kWriteFailed);
    usleep(kCardTypePause);
    return 1;
}

int zeltag_SendSelectActConfig(int config) {
    tsDevDat& record = activeRecord();
    if (record.iTagPlusState != tag::kMultiConfig)
        return 0;
    record.iActConfig = low(static_cast<unsigned>(config));
    Payload reply;
    const bool answered = tag::query(command(Opcode::Multi, kSelect, record.iActConfig), reply);
    return answered && reply[0] == low(static_cast<unsigned>(Opcode::Multi)) && reply[1] == kSelect;
}

int PlusBlockMove(int source, int target) {
    if (activeRecord().iTagPlusState != tag::kMultiConfig)
        return 0;
    Payload request = command(Opcode::Multi, kMove, low(static_cast<unsigned>(source & kSetBits)),
                              low(static_cast<unsigned>(target & kSetBits)));
    request[5] = 0xFF;
    if (!tag::send(request))
        return 0;
    Payload reply;
    if (!tag::fetch(reply))
        return tag::fail(tag::kServiceFailed);
    usleep(kMovePause);
    return 1;
}
