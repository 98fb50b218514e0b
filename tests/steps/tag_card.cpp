// SPDX-License-Identifier: MIT
// Identifiers and their places.
#include "tests/steps/tag_card.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

const std::vector<Sight> kQueuedSights = {
    {"page 0", [] { return shown(std::span(QueuedID.id).first(8)); }},
    {"page 1", [] { return shown(std::span(QueuedID.id).subspan(8, 8)); }},
    {"page 2", [] { return shown(std::span(QueuedID.id).subspan(16, 8)); }},
    {"page 3", [] { return shown(std::span(QueuedID.id).subspan(24)); }},
    {"age", [] { return shownWords({static_cast<long long>(QueuedID.age)}); }},
    {"words",
     [] {
         return shownWords({QueuedID.word40, QueuedID.byte42, QueuedID.byte43});
     }},
    {"activeIDBuf", [] { return shown(activeIDBuf); }}};

void prepareId() {
    freshBuffer(ZELTAGAPI_ID_SIZE);
    std::ranges::fill(activeIDBuf, std::uint8_t{0x77});
}

void prepareQueued() {
    sim::QueuedId entry{.age = 0x1234, .byte2 = 5, .word3 = 0x0607, .byte7 = 8};
    entry.id.fill(0x22);
    apparatus().tag->queue(entry);
    std::memset(&QueuedID, 0x77, sizeof QueuedID);
    prepareId();
}

} // namespace zel::test::steps
