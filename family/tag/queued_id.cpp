// SPDX-License-Identifier: MIT
// Fetches the identifier that a reader queued for the host, in five pages.
#include "base/bytes.h"
#include "base/pause.h"
#include "family/tag/card_data.h"
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/stream.h"

#include <algorithm>
#include <cstring>
#include <unistd.h>

using namespace zel;
using tag::Payload;

namespace {

constexpr std::uint8_t kQueuedId = 0x02;
constexpr useconds_t kPagePause = 100'000; // µs, on a stream
constexpr std::uint8_t kEntryPage = 4;     // behind the four pages of the identifier

std::uint8_t maskOf(short first, short second) {
    return static_cast<std::uint8_t>((first != 0 ? 1 : 0) | (second != 0 ? 2 : 0));
}

bool readOnStream(std::uint8_t page, std::uint8_t mask, Payload& reply) {
    tag::stream::Frame frame(tag::stream::Instruction::Service, kQueuedId, page, mask);
    const bool answers = tag::stream::readEight(frame);
    reply = frame.payload();
    pauseFor(kPagePause);
    return answers;
}

bool queryPage(std::uint8_t page, std::uint8_t mask, Payload& reply) {
    if (tag::stream::isActive())
        return readOnStream(page, mask, reply);
    return tag::query(tag::command(tag::Opcode::Service, kQueuedId, page, mask), reply);
}

// Bytes 5 and 6 are not kept.
void storeEntry(const Payload& data) {
    QueuedID.age = wordOf(data[1], data[0]);
    QueuedID.word40 = static_cast<std::int16_t>(wordOf(data[4], data[3]));
    QueuedID.byte42 = data[2];
    QueuedID.byte43 = data[7];
}

// What stood there before the page goes to activeIDBuf: the whole identifier with the last page.
void storePage(std::uint8_t page, const Payload& data) {
    std::memcpy(activeIDBuf, QueuedID.id, sizeof activeIDBuf);
    if (page == kEntryPage)
        storeEntry(data);
    else
        std::copy(data.begin(), data.end(), QueuedID.id + page * data.size());
}

} // namespace

int zeltag_GetQueuedID(short first, short second) {
    tag::clearError();
    if (!tag::stream::isActive())
        std::memset(&QueuedID, 0, sizeof QueuedID);
    for (std::uint8_t page = 0; page <= kEntryPage; ++page) {
        Payload data;
        if (!queryPage(page, maskOf(first, second), data))
            return tag::fail(ZELTAGAPI_ERR_SERVICE);
        storePage(page, data);
    }
    return 1;
}

std::int64_t zeltag_GetQueuedID_index(short index) { return queuedElement(QueuedID, index); }
