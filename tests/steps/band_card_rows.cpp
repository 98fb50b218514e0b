// SPDX-License-Identifier: MIT
// Tracks, fields and identifiers of a magnetic stripe reader's cards.
#include "family/band/band.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/band_wire.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

Step ask(Place place, const std::string& command, const Outcome& lost, const Outcome& notAnswered,
         const Outcome& cut) {
    return query(command, lost, notAnswered, place == Place::BandLine ? notAnswered : cut,
                 notAnswered);
}

void swipeCard() { apparatus().band->swipe(sim::bandCard("%AB^CDEF?", ";1234567890123=5678?")); }

namespace {

long long kept(const char* track) {
    if (!track)
        return 0;
    std::copy_n(track, buffer().size(), buffer().begin());
    return 1;
}

void prepareTrack() {
    swipeCard();
    freshBuffer(257);
}

// The first chunk tells of a length of 20, so there are three. A track that fails at one of them is
// empty.
Steps trackSteps(Place place, long long result, const std::string& none, const std::string& other,
                 const std::string& then, long long failed) {
    const Outcome fails = ends(failed, 0, none, then);
    return {ask(place, "G2000", fails, fails, fails),
            ask(place, "G2100", fails, fails, passes(result, 0, other)),
            ask(place, "G2200", fails, fails, passes(result, 0, other))};
}

std::vector<Operation> trackRows(Place place, const std::string& where) {
    return {
        {.name = where + "Track",
         .place = place,
         .calls = {{"zelBandGetTrackData", [] { return kept(zelBandGetTrackData(2, 0)); }},
                   {"zelband_GetTrackData", [] { return kept(zelband_GetTrackData(2, 0)); }}},
         .prepare = prepareTrack,
         .sights = {kBuffer},
         .steps = trackSteps(place, 1, "0", "!", "", 1)},
        {.name = where + "TrackByByte",
         .place = place,
         .calls = {{"zelBandGetTrackData_BYTE",
                    [] { return zelBandGetTrackData_BYTE(2, 0, 0) & 127LL; }},
                   {"zelband_GetTrackData_BYTE",
                    [] { return zelband_GetTrackData_BYTE(2, 0, 0) & 127LL; }}},
         .prepare = prepareTrack,
         .result = 20,
         .steps = trackSteps(place, 20, "", "", "", 0)},
    };
}

// A field runs from the first chunk's ";" up to the "=" in the second one, and what is copied
// begins there. Without the second chunk nothing is.
Operation fieldRow(Place place, const std::string& where) {
    const Outcome fails = ends(1, 0, "0");
    return {.name = where + "TrackField",
            .place = place,
            .calls = {{"zelBandGetTrackFieldOffset",
                       [] { return kept(zelBandGetTrackFieldOffset(2, 1, 0, 32, 255, 0)); }},
                      {"zelband_GetTrackFieldOffset",
                       [] { return kept(zelband_GetTrackFieldOffset(2, 1, 0, 32, 255, 0)); }}},
            .prepare = prepareTrack,
            .sights = {kBuffer},
            .steps = {ask(place, "G2000", fails, fails, fails),
                      ask(place, "G2100", fails, fails, passes(1, 0, "0")),
                      ask(place, "G2200", fails, fails, passes(1, 0, "!"))}};
}

constexpr short kIdSize = 16;

void prepareId() {
    swipeCard();
    zelband_SetActiveID(2, 1, 0, 255);
    freshBuffer(ZELTAGAPI_ID_SIZE);
    std::ranges::fill(buffer(), std::uint8_t{0});
    std::ranges::fill(activeIDBuf, std::uint8_t{0});
}

// A track that couldn't be read is a field of filling characters. The card is forgotten in any
// case, and it is no failure when it isn't.
Operation idRow(Place place, std::string name, std::vector<Call> calls, Sight sight,
                long long result = kIdSize, void (*prepare)() = prepareId) {
    const Outcome fails = ends(result, 0, "!", "CD0?");
    const Outcome other = passes(result, 0, "!");
    const Outcome good = passes(result, 0, "+");
    return {.name = std::move(name),
            .place = place,
            .calls = std::move(calls),
            .prepare = prepare,
            .sights = {sight},
            .result = result,
            .steps = {ask(place, "G2000", fails, fails, fails),
                      ask(place, "G2100", fails, fails, other),
                      ask(place, "G2200", fails, fails, other),
                      ask(place, "CD0", good, good, good)},
            .again = swipeCard};
}

std::string queuedId() {
    std::string text;
    for (short index = 0; index < 32; ++index)
        text += std::to_string(zelband_GetQueuedID_index(index)) + ' ';
    return text;
}

// The identifier of a card before.
void prepareQueued() {
    apparatus().band->swipe(sim::bandCard("", ";9=87?"));
    zelband_SetActiveID(2, 1, 0, 255);
    EXPECT_EQ(zelband_GetQueuedID(0, 0), 32);
    prepareId();
}

std::vector<Operation> idRows(Place place, const std::string& where) {
    return {
        idRow(place, where + "Identifier",
              {{"GetActiveID", [] { return GetActiveID(buffer().data(), kIdSize) + 0LL; }},
               {"zelband_GetActiveID",
                [] { return zelband_GetActiveID(buffer().data(), kIdSize) + 0LL; }}},
              kBuffer),
        idRow(place, where + "IdentifierInOwnBuffer",
              {{"getActiveID", [] { return getActiveID(kIdSize) + 0LL; }},
               {"getActiveID32", [] { return getActiveID32(kIdSize) + 0LL; }},
               {"zelband_getActiveID", [] { return zelband_getActiveID(kIdSize) + 0LL; }},
               {"zelband_getActiveID32", [] { return zelband_getActiveID32(kIdSize) + 0LL; }},
               {"zelband_GetActiveID32",
                [] { return zelband_GetActiveID32(buffer().data(), kIdSize) + 0LL; }},
               {"GetActiveID32", [] { return GetActiveID32(activeIDBuf, kIdSize) + 0LL; }}},
              kOwnBuffer),
        idRow(place, where + "QueuedIdentifier",
              {{"GetQueuedID", [] { return GetQueuedID(0, 0) + 0LL; }},
               {"zelband_GetQueuedID", [] { return zelband_GetQueuedID(0, 0) + 0LL; }}},
              {"the queued identifier", queuedId}, 32, prepareQueued),
    };
}

} // namespace

std::vector<Operation> bandCardRows() {
    std::vector<Operation> rows;
    for (const auto& [place, where] :
         {std::pair{Place::BandReports, "Band"}, std::pair{Place::BandLine, "BandLine"}}) {
        rows += trackRows(place, where);
        rows += {fieldRow(place, where)};
        rows += idRows(place, where);
    }
    return rows;
}

} // namespace zel::test::steps
