// SPDX-License-Identifier: MIT
// Outputs, counters and presence of a magnetic stripe reader. A failure is told by the result
// alone.
#include "family/band/band.h"
#include "family/band/frame.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/band_wire.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

namespace {

constexpr int kTwice = 2;

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
                  "CD0", swipeCard, 1, 1),
        numberRow(place, where + "DataAvailable",
                  {{"zelBandIsDataAvailable", [] { return zelBandIsDataAvailable() + 0LL; }},
                   {"zelband_IsDataAvailable", [] { return zelband_IsDataAvailable() + 0LL; }}},
                  "QS0", swipeCard, 3),
        numberRow(
            place, where + "ClearData",
            {{"zelBandClearDataAvailable", [] { return zelBandClearDataAvailable() + 0LL; }},
             {"zelband_ClearDataAvailable", [] { return zelband_ClearDataAvailable() + 0LL; }}},
            "CD0", swipeCard, 1, 1),
        numberRow(place, where + "ClearOverrun",
                  {{"zelBandClearOverrun", [] { return zelBandClearOverrun() + 0LL; }},
                   {"zelband_ClearOverrun", [] { return zelband_ClearOverrun() + 0LL; }}},
                  "CQ", swipeCard, 1, 1),
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
                swipeCard();
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
        rows += {presenceRow(place, where)};
    }
    rows += {rawRow()};
    return rows;
}

} // namespace zel::test::steps
