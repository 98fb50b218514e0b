// SPDX-License-Identifier: MIT
// What a proximity reader on USB delivers of a card. A reply that is cut holds its first three
// bytes, with zeros behind them, and nothing tells that it was longer.
#include "family/tag/card_data.h"
#include "family/tag/tag.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_card.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kIdFailed = 0x1000000;
constexpr int kBits = 200;

// The identifier is copied before the bit count is asked for.
Steps shortIdSteps(const std::string& none, const std::string& other, const std::string& good) {
    return {query("8F", ends(0, kIdFailed, none), passes(kBits, 0, other), passes(kBits, 0, other)),
            query("8E", ends(0, kIdFailed, good), passes(kBits, 0, good), passes(255, 0, good))};
}

// The buffer stays clear unless all five queries went through.
Steps longIdSteps(const std::string& none, const std::string& other, const std::string& good) {
    Steps steps;
    for (const char* page : {"8D00", "8D01", "8D02", "8D03"})
        steps.push_back(query(page, ends(0, kIdFailed, none), passes(kBits, 0, other),
                              passes(kBits, 0, other)));
    steps.push_back(
        query("8E", ends(0, kIdFailed, none), passes(kBits, 0, good), passes(255, 0, good)));
    return steps;
}

std::vector<Operation> identifierRows() {
    return {
        {.name = "Identifier",
         .place = Place::TagReports,
         .calls = {{"GetActiveID", [] { return GetActiveID(buffer().data(), 32) + 0LL; }}},
         .prepare = prepareId,
         .sights = {kBuffer, kOwnBuffer},
         .result = kBits,
         .steps = shortIdSteps("00", "!!", "++")},
        {.name = "IdentifierOfTheFamily",
         .place = Place::TagReports,
         .calls = {{"zeltag_GetActiveID",
                    [] { return zeltag_GetActiveID(buffer().data(), 32) + 0LL; }}},
         .prepare = prepareId,
         .sights = {kBuffer},
         .result = kBits,
         .steps = shortIdSteps("0", "!", "+")},
        {.name = "IdentifierInOwnBuffer",
         .place = Place::TagReports,
         .calls = {{"getActiveID", [] { return getActiveID(32) + 0LL; }},
                   {"zeltag_getActiveID", [] { return zeltag_getActiveID(32) + 0LL; }}},
         .prepare = prepareId,
         .sights = {kOwnBuffer},
         .result = kBits,
         .steps = shortIdSteps("0", "!", "+")},
        {.name = "LongIdentifier",
         .place = Place::TagReports,
         .calls = {{"GetActiveID32", [] { return GetActiveID32(buffer().data(), 32) + 0LL; }}},
         .prepare = prepareId,
         .sights = {kBuffer, kOwnBuffer},
         .result = kBits,
         .steps = longIdSteps("00", "!!", "++")},
        {.name = "LongIdentifierOfTheFamily",
         .place = Place::TagReports,
         .calls = {{"zeltag_GetActiveID32",
                    [] { return zeltag_GetActiveID32(buffer().data(), 32) + 0LL; }}},
         .prepare = prepareId,
         .sights = {kBuffer},
         .result = kBits,
         .steps = longIdSteps("0", "!", "+")},
        {.name = "LongIdentifierInOwnBuffer",
         .place = Place::TagReports,
         .calls = {{"getActiveID32", [] { return getActiveID32(32) + 0LL; }},
                   {"zeltag_getActiveID32", [] { return zeltag_getActiveID32(32) + 0LL; }}},
         .prepare = prepareId,
         .sights = {kOwnBuffer},
         .result = kBits,
         .steps = longIdSteps("0", "!", "+")},
    };
}

// The identifier's pages, the words about it, and activeIDBuf, which takes what came before each
// page is stored: of a failed read it holds a page less.
Operation queuedRow() {
    return {.name = "QueuedIdentifier",
            .place = Place::TagReports,
            .calls = {{"GetQueuedID", [] { return GetQueuedID(1, 0) + 0LL; }},
                      {"zeltag_GetQueuedID", [] { return zeltag_GetQueuedID(1, 0) + 0LL; }}},
            .prepare = prepareQueued,
            .sights = kQueuedSights,
            .steps = {
                query("8C020001", ends(0, kIdFailed, "000000."), passes(1, 0, "!+++++!"),
                      passes(1, 0, "!+++++!")),
                query("8C020101", ends(0, kIdFailed, "+000000"), passes(1, 0, "+!++++!"),
                      passes(1, 0, "+!++++!")),
                query("8C020201", ends(0, kIdFailed, "++0000!"), passes(1, 0, "++!+++!"),
                      passes(1, 0, "++!+++!")),
                query("8C020301", ends(0, kIdFailed, "+++000!"), passes(1, 0, "+++!++!"),
                      passes(1, 0, "+++!++!")),
                query("8C020401", ends(0, kIdFailed, "++++00!"), passes(1, 0, "+++++!+"),
                      passes(1, 0, "++++!!+")),
            }};
}

std::string cardBlock(std::size_t n) {
    return shown(std::span(activeCardDataBuf).subspan(8 * n, 8));
}

// The buffer isn't cleared: the blocks behind a failure are those of the read before.
Operation cardDataRow() {
    return {
        .name = "CardData",
        .place = Place::TagReports,
        .calls = {{"getActiveCardData", [] { return getActiveCardData() + 0LL; }},
                  {"zeltag_getActiveCardData", [] { return zeltag_getActiveCardData() + 0LL; }}},
        .prepare = [] { std::ranges::fill(activeCardDataBuf, std::uint8_t{0x77}); },
        .sights = {{"block 0", [] { return cardBlock(0); }},
                   {"block 1", [] { return cardBlock(1); }},
                   {"block 2", [] { return cardBlock(2); }},
                   {"block 3", [] { return cardBlock(3); }},
                   {"block 4", [] { return cardBlock(4); }},
                   {"behind", [] { return shown(std::span(activeCardDataBuf).subspan(40)); }}},
        .steps =
            {
                query("880100", ends(0, kIdFailed, "......"), passes(1, 0, "!++++."),
                      passes(1, 0, "!++++.")),
                query("880101", ends(0, kIdFailed, "+....."), passes(1, 0, "+!+++."),
                      passes(1, 0, "+!+++.")),
                query("880102", ends(0, kIdFailed, "++...."), passes(1, 0, "++!++."),
                      passes(1, 0, "++!++.")),
                query("880103", ends(0, kIdFailed, "+++..."), passes(1, 0, "+++!+."),
                      passes(1, 0, "+++!+.")),
                query("880104", ends(0, kIdFailed, "++++.."), passes(1, 0, "++++!."),
                      passes(1, 0, "++++!.")),
            },
        .seen = "+++++."};
}

std::string rawReply() {
    std::string text;
    for (short index = 0; index < 10; ++index)
        text += std::to_string(GetRawPayload_index(index)) + ' ';
    return text;
}

void prepareRaw() {
    SetRawPayload(0x8C, 6, 0, 0, 0, 0, 0, 0);
    for (short index = 0; index < 8; ++index)
        SetRawPayload_index(index, index == 1 ? short{0x8F} : short{0});
}

// The call for index 0 clears both buffers, so a failed exchange leaves a reply of zeros. There is
// no error word.
std::vector<Operation> rawRows() {
    const Steps steps = {
        query("8F00000000000000", ends(0, 0, "."), passes(1, 0, "!"), passes(1, 0, "!"))};
    Steps texts = steps;
    for (auto& outcome : texts[0].outcomes)
        if (outcome) {
            outcome->result = 0;
            outcome->seen = outcome->seen == "." ? "0" : "!";
        }
    return {{.name = "RawExchange",
             .place = Place::TagReports,
             .calls = {{"SetRawPayload_index", [] { return SetRawPayload_index(8, 0) + 0LL; }},
                       {"zeltag_SetRawPayload_index",
                        [] { return zeltag_SetRawPayload_index(8, 0) + 0LL; }}},
             .prepare = prepareRaw,
             .sights = {{"the reply", rawReply}},
             .steps = steps},
            {.name = "RawExchangeAsText",
             .place = Place::TagReports,
             .calls = {{"SetRawPayload",
                        [] {
                            const char* const text = SetRawPayload(0x8F, 0, 0, 0, 0, 0, 0, 0);
                            return std::strcmp(text, "11.12.13.14.15.16.17.18") == 0 ? 1LL : 0LL;
                        }}},
             .prepare = [] { SetRawPayload(0x8C, 6, 0, 0, 0, 0, 0, 0); },
             .sights = {{"the reply", rawReply}},
             .steps = texts}};
}

} // namespace

std::vector<Operation> tagCardRows() {
    std::vector<Operation> rows = identifierRows();
    rows += {queuedRow(), cardDataRow()};
    rows += rawRows();
    return rows;
}

} // namespace zel::test::steps
