// SPDX-License-Identifier: MIT
// The exported calls on readers that hold several configurations.
#include "family/tag/card_types.h"
#include "family/tag/feature_report.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <iterator>

using namespace zel;

namespace {

bool isMulti() { return hasActiveTag() && activeRecord().iTagPlusState == tag::kMultiConfig; }

constexpr int kNone = -1;

// The word behind the list is looked at too: the record's next field, and the bytes that align it.
std::uint16_t typeBehind(const tsDevDat& record) {
    constexpr std::size_t offset = offsetof(tsDevDat, CardTypeList) + sizeof record.CardTypeList;
    static_assert(offset + sizeof(std::uint16_t) <= sizeof(tsDevDat));
    std::uint16_t word = 0;
    std::copy_n(reinterpret_cast<const unsigned char*>(&record) + offset, sizeof word,
                reinterpret_cast<unsigned char*>(&word));
    return word;
}

} // namespace

int GetMaxConfig() { return isMulti() ? activeRecord().iMaxConfig : 0; }

int GetActConfig() { return isMulti() ? activeRecord().iActConfig : 0; }

int SetActConfig(short config) {
    const int index = config & 0xFF;
    if (!isMulti() || index > GetMaxConfig())
        return 0;
    activeRecord().iActConfig = static_cast<std::uint8_t>(index);
    return 1;
}

int GetCardType() {
    return isMulti() ? static_cast<std::int16_t>(activeConfig(activeRecord()).iCardType) : kNone;
}

int GetCardPriority() {
    return isMulti() ? static_cast<std::int16_t>(activeConfig(activeRecord()).iCardPriority)
                     : kNone;
}

int SetCardTypePriority(unsigned short type, short priority) {
    if (!isMulti())
        return 0;
    tsTagCfg& config = activeConfig(activeRecord());
    config.iCardType = type;
    config.iCardPriority = priority != 0;
    return 1;
}

// An empty list accepts every type; a zero inside it ends nothing.
int IsCardTypeInList(unsigned short type) {
    const std::uint16_t wanted = type & tag::kCardTypeMask;
    if (wanted == 0)
        return 1;
    if (!hasActiveTag())
        return 0;
    const tsDevDat& record = activeRecord();
    const auto& list = record.CardTypeList;
    const bool found = list[0] == 0 || typeBehind(record) == wanted ||
                       std::find(std::begin(list), std::end(list), wanted) != std::end(list);
    return found ? 1 : 0;
}
