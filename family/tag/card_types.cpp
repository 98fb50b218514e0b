// SPDX-License-Identifier: MIT
// The list of card types that a multi-configuration reader knows.
#include "family/tag/card_types.h"

#include "base/bytes.h"
#include "family/tag/feature_report.h"
#include "family/tag/multi_config.h"
#include "family/tag/stream.h"
#include "family/tag/tag.h"
#include "frame/state/state.h"

#include <cstring>
#include <iterator>

using namespace zel;
using tag::Payload;

namespace {

constexpr std::uint8_t kList = 0x04;
constexpr unsigned kPages = 256;
constexpr std::size_t kEntries = std::size(decltype(tsDevDat::CardTypeList){});

enum class Page { Skipped, Missing, Came };

Page readPageOnUsb(std::uint8_t page, Payload& reply) {
    if (!tag::send(tag::command(tag::Opcode::Multi, kList, page)))
        return Page::Skipped;
    return tag::fetch(reply) ? Page::Came : Page::Missing;
}

Page readPageOnStream(std::uint8_t page, Payload& reply) {
    tag::stream::Frame frame(tag::stream::Instruction::Multi, kList, page);
    if (!tag::stream::readAtOnce(frame))
        return Page::Missing;
    reply = frame.payload();
    return Page::Came;
}

Page readPage(std::uint8_t page, Payload& reply) {
    return tag::stream::isActive() ? readPageOnStream(page, reply) : readPageOnUsb(page, reply);
}

// Appends a page of four types. Whether the list goes on behind it.
bool append(tsDevDat& record, std::size_t& count, const Payload& page) {
    for (std::size_t at = 0; at < page.size() && count < kEntries; at += 2) {
        const std::uint16_t type = wordOf(page[at + 1], page[at]);
        if (type == 0)
            return false;
        record.CardTypeList[count++] = type & tag::kCardTypeMask;
    }
    return count < kEntries;
}

} // namespace

void zeltag_ZeroCardTypeListFromDevice() {
    tsDevDat& record = activeRecord();
    std::memset(record.CardTypeList, 0, sizeof record.CardTypeList);
}

// A page that can't be asked for is passed over; one that doesn't come ends the list.
int zeltag_GetCardTypeListFromDevice() {
    zeltag_ZeroCardTypeListFromDevice();
    tsDevDat& record = activeRecord();
    std::size_t count = 0;
    for (unsigned page = 0; page < kPages; ++page) {
        Payload reply;
        const Page outcome = readPage(static_cast<std::uint8_t>(page), reply);
        if (outcome == Page::Missing)
            return 0;
        if (outcome == Page::Came && !append(record, count, reply))
            return 1;
    }
    return 1;
}
