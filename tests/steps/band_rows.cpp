// SPDX-License-Identifier: MIT
// Cards, outputs and counters of a magnetic stripe reader. A failure is told by the result alone.
#include "family/band/band.h"
#include "family/band/frame.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

namespace {

constexpr int kTwice = 2;

// A reply that is cut is a good one on USB, and none on a line.
Step ask(Place place, const std::string& command, const Outcome& lost, const Outcome& notAnswered,
         const Outcome& cut) {
    return query(command, lost, notAnswered, place == Place::BandLine ? notAnswered : cut,
                 notAnswered);
}

// A command that changes something in the reader.
Operation commandRow(
    Place place, std::string name, std::vector<Call> calls, const std::string& command, Sight sight,
    void (*prepare)() = [] {}) {
    return {.name = std::move(name),
            .place = place,
            .calls = std::move(calls),
            .prepare = prepare,
            .sights = {sight},
            .steps = {ask(place, command, ends(0, 0, "."), ends(0, 0, "+"), passes(1, 0, "+"))}};
}

// A question whose answer is the result, 0 without its digits.
Operation numberRow(Place place, std::string name, std::vector<Call> calls,
                    const std::string& command, void (*prepare)(), long long good,
                    long long cut = 0) {
    return {.name = std::move(name),
            .place = place,
            .calls = std::move(calls),
            .prepare = prepare,
            .result = good,
            .steps = {ask(place, command, ends(0, 0), ends(0, 0), passes(cut, 0))}};
}

void swipe() { apparatus().band->swipe(sim::bandCard("%AB^CDEF?", ";1234567890123=5678?")); }

void count() {
    apparatus().band->setUptime(1000);
    apparatus().band->setCardsRead(2000);
    apparatus().band->counters() = {11, 12, 13, 14};
}

std::string ledsInReader() {
    std::string text;
    for (unsigned led = 0; led < 5; ++led)
        text += std::to_string(apparatus().band->ledColor(led));
    return text;
}

// The last beep; a sight that is looked at once.
std::string beeps() {
    static sim::BandBeep last = {};
    const auto all = apparatus().band->takeBeeps();
    last = all.empty() ? last : all.back();
    return std::to_string(last.count) + (last.isLong ? " long" : "");
}

std::vector<Operation> commandRows(Place place, const std::string& where) {
    static const auto lightRed = [](int (*set)(sLEDCtrl*)) {
        sLEDCtrl lights = {};
        lights.bAppCtrlsLED = lights.iRedLEDState = 1;
        return set(&lights) + 0LL;
    };
    return {
        commandRow(place, where + "Led",
                   {{"zelBandSetLED", [] { return zelBandSetLED(0, 3) + 0LL; }},
                    {"zelband_SetLED", [] { return zelband_SetLED(0, 3) + 0LL; }}},
                   "SL0", {"the LEDs", ledsInReader}),
        commandRow(place, where + "AllLeds",
                   {{"SetLEDCtrl", [] { return lightRed(SetLEDCtrl); }},
                    {"zelband_SetLEDCtrl", [] { return lightRed(zelband_SetLEDCtrl); }}},
                   "SL0", {"the LEDs", ledsInReader}),
        commandRow(place, where + "Beep",
                   {{"BeepNow", [] { return BeepNow(2, 0) + 0LL; }},
                    {"zelband_BeepNow", [] { return zelband_BeepNow(2, 0) + 0LL; }}},
                   "BS2", {"the beep", beeps},
                   [] {
                       zelband_BeepNow(1, 1);
                       beeps();
                   }),
    };
}

std::vector<Operation> numberRows(Place place, const std::string& where) {
    return {
        numberRow(place, where + "Command",
                  {{"SendBandCmd",
                    [] {
                        char reply[24];
                        return SendBandCmd("CD0", reply) + 0LL;
                    }}},
                  "CD0", swipe, 1, 1),
        numberRow(place, where + "DataAvailable",
                  {{"zelBandIsDataAvailable", [] { return zelBandIsDataAvailable() + 0LL; }},
                   {"zelband_IsDataAvailable", [] { return zelband_IsDataAvailable() + 0LL; }}},
                  "QS0", swipe, 3),
        numberRow(
            place, where + "ClearData",
            {{"zelBandClearDataAvailable", [] { return zelBandClearDataAvailable() + 0LL; }},
             {"zelband_ClearDataAvailable", [] { return zelband_ClearDataAvailable() + 0LL; }}},
            "CD0", swipe, 1, 1),
        numberRow(place, where + "ClearOverrun",
                  {{"zelBandClearOverrun", [] { return zelBandClearOverrun() + 0LL; }},
                   {"zelband_ClearOverrun", [] { return zelband_ClearOverrun() + 0LL; }}},
                  "CQ", swipe, 1, 1),
        numberRow(place, where + "Uptime",
                  {{"zelBandGetSystemUptime",
                    [] { return zelBandGetSystemUptime() >= 1000 ? 1LL : 0LL; }},
                   {"zelband_GetSystemUptime",
                    [] { return zelband_GetSystemUptime() >= 1000 ? 1LL : 0LL; }}},
                  "QUP", count, 1),
        numberRow(
            place, where + "CardsRead",
            {{"zelBandGetSystemCardsRead", [] { return zelBandGetSystemCardsRead() + 0LL; }},
             {"zelband_GetSystemCardsRead", [] { return zelband_GetSystemCardsRead() + 0LL; }}},
            "QUP", count, 2000),
        numberRow(place, where + "Counter",
                  {{"zelBandGetSystemInternalCount",
                    [] { return zelBandGetSystemInternalCount(2) + 0LL; }},
                   {"zelband_GetSystemInternalCount",
                    [] { return zelband_GetSystemInternalCount(2) + 0LL; }}},
                  "QDD", count, 13),
        numberRow(
            place, where + "QueueAge",
            {{"zelband_GetQueuedAge", [] { return zelband_GetQueuedAge(0) > 0 ? 1LL : 0LL; }},
             {"GetQueuedID_index", [] { return GetQueuedID_index(32) > 0 ? 1LL : 0LL; }}},
            "GQ0",
            [] {
                swipe();
                wait(5'000'000);
            },
            1),
    };
}

// Of the presence a failed question is asked again.
Operation presenceRow(Place place, const std::string& where) {
    Step step = ask(place, "QRZ", ends(0, 0), ends(0, 0), passes(1, 0));
    step.tries = kTwice;
    return {.name = where + "Presence",
            .place = place,
            .calls = {{"Ping", [] { return Ping() <= 65535 ? 1LL : 0LL; }},
                      {"zelband_IsDevicePresent", [] { return zelband_IsDevicePresent() + 0LL; }}},
            .steps = {step}};
}

long long kept(const char* track) {
    if (!track)
        return 0;
    std::copy_n(track, buffer().size(), buffer().begin());
    return 1;
}

void prepareTrack() {
    swipe();
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
    swipe();
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
            .again = swipe};
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

// What a caller can set is too short for a frame, so no reader answers.
Operation rawRow() {
    return {.name = "BandRawExchange",
            .place = Place::BandReports,
            .calls = {{"SetRawPayload_index", [] { return SetRawPayload_index(9, 0) + 0LL; }},
                      {"zelband_SetRawPayload_index",
                       [] { return zelband_SetRawPayload_index(9, 0) + 0LL; }}},
            .prepare = [] { SetRawPayload_index(0, 0); },
            .result = 0,
            .steps = {query("", ends(0, 0), ends(0, 0), ends(0, 0))}};
}

} // namespace

std::vector<Operation> bandRows() {
    std::vector<Operation> rows;
    for (const auto& [place, where] :
         {std::pair{Place::BandReports, "Band"}, std::pair{Place::BandLine, "BandLine"}}) {
        rows += commandRows(place, where);
        rows += numberRows(place, where);
        rows += trackRows(place, where);
        rows += {presenceRow(place, where), fieldRow(place, where)};
        rows += idRows(place, where);
    }
    rows += {rawRow()};
    return rows;
}

} // namespace zel::test::steps
