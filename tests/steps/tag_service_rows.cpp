// SPDX-License-Identifier: MIT
// Single operations of a proximity reader on USB: one query each, or one for each character.
#include "family/tag/services.h"
#include "family/tag/tag.h"
#include "family/tag/write_config.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kServiceFailed = 0x1000000;
constexpr std::int64_t kNoFileName = 0x50000000;
constexpr std::int64_t kNoVersion = 0x70000000;
constexpr std::int64_t kReadFailed = 0x20000;

// A service whose reply isn't looked at, seen in the reader: a lost reply comes too late for it.
Operation serviceRow(std::string name, std::vector<Call> calls, std::string command,
                     std::int64_t error, Sight sight) {
    return {.name = std::move(name),
            .place = Place::TagReports,
            .calls = std::move(calls),
            .sights = {sight},
            .steps = {query(std::move(command), ends(0, error, "."), ends(0, error, "+"),
                            passes(1, 0, "+"), passes(1, 0, "+"))}};
}

std::vector<Operation> outputRows() {
    return {
        serviceRow("Beep",
                   {{"BeepNow", [] { return BeepNow(2, 0) + 0LL; }},
                    {"zeltag_BeepNow", [] { return zeltag_BeepNow(2, 0) + 0LL; }}},
                   "8C0302", kServiceFailed,
                   {"the beep", [] { return shownWords({apparatus().tag->lastBeep()}); }}),
        serviceRow("KeystrokeModeOfKq7",
                   {{"unlockKeystrokeModeOfKQ7",
                     [] {
                         unlockKeystrokeModeOfKQ7();
                         return record().lLastErr == 0 ? 1LL : 0LL;
                     }}},
                   "8C0301", kServiceFailed,
                   {"the beep", [] { return shownWords({apparatus().tag->lastBeep()}); }}),
        serviceRow("BeeperVolume",
                   {{"SetBeeperVolume", [] { return SetBeeperVolume(7) + 0LL; }},
                    {"zeltag_SetBeeperVolume", [] { return zeltag_SetBeeperVolume(7) + 0LL; }}},
                   "8C8607", kServiceFailed,
                   {"the volume", [] { return shownWords({*apparatus().tag->options().volume}); }}),
        serviceRow(
            "Radio",
            {{"SetBTLEConfiguration", [] { return SetBTLEConfiguration(3) + 0LL; }},
             {"zeltag_SetBTLEConfiguration", [] { return zeltag_SetBTLEConfiguration(3) + 0LL; }}},
            "8C8703", 0x20000000,
            {"the radio", [] { return shownWords({*apparatus().tag->options().radio}); }}),
    };
}

// Asks for a number in the first three bytes of the reply.
Operation numberRow(std::string name, std::vector<Call> calls, std::string command,
                    std::int64_t error, long long good, long long failed, long long ones) {
    return {.name = std::move(name),
            .place = Place::TagReports,
            .calls = std::move(calls),
            .result = good,
            .steps = {
                query(std::move(command), ends(failed, error), passes(good, 0), passes(ones, 0))}};
}

std::vector<Operation> numberRows() {
    return {
        numberRow("VolumeOfTheBeeper",
                  {{"GetBeeperVolume", [] { return GetBeeperVolume() + 0LL; }},
                   {"zeltag_GetBeeperVolume", [] { return zeltag_GetBeeperVolume() + 0LL; }}},
                  "8C06", kServiceFailed, 2, -1, 255),
        numberRow("WriteSpeed", {{"IsFastWriteReader", [] { return IsFastWriteReader() + 0LL; }}},
                  "8C06", kServiceFailed, 1, 0, 1),
        numberRow(
            "RadioConfiguration",
            {{"GetBTLEConfiguration", [] { return GetBTLEConfiguration() + 0LL; }},
             {"zeltag_GetBTLEConfiguration", [] { return zeltag_GetBTLEConfiguration() + 0LL; }}},
            "8C07", 0x40000000, 1, -1, 3),
        numberRow("RadioPresence",
                  {{"IsBTLEPresent", [] { return IsBTLEPresent() + 0LL; }},
                   {"zeltag_IsBTLEPresent", [] { return zeltag_IsBTLEPresent() + 0LL; }}},
                  "8C07", 0x40000000, 1, 0, 1),
        // Of a device that is absent the ping tells the time, which is more than any answer takes.
        numberRow("Presence",
                  {{"Ping", [] { return Ping() <= 65535 ? 1LL : 0LL; }},
                   {"zeltag_IsDevicePresent", [] { return zeltag_IsDevicePresent() + 0LL; }}},
                  "8A", 0, 1, 0, 1),
    };
}

// A text or null, in the caller's buffer.
long long kept(const char* text) {
    if (!text)
        return 0;
    std::strncpy(reinterpret_cast<char*>(buffer().data()), text, buffer().size());
    return 1;
}

void prepareText() { freshBuffer(24); }

// Each character is the first byte of a reply.
Operation textRow(std::string name, Call call, std::vector<std::string> commands,
                  std::int64_t error) {
    Steps steps;
    for (const std::string& command : commands)
        steps.push_back(query(command, ends(0, error, "."), passes(1, 0, "+"), passes(1, 0, "!")));
    return {.name = std::move(name),
            .place = Place::TagReports,
            .calls = {call},
            .prepare = prepareText,
            .sights = {kBuffer},
            .steps = steps,
            .again = prepareText};
}

std::vector<Operation> textRows() {
    return {
        textRow("FileName", {"zeltag_GetFWFilename", [] { return kept(zeltag_GetFWFilename()); }},
                {"8C040700", "8C040701", "8C040702", "8C040703", "8C040704", "8C040705", "8C040706",
                 "8C040707"},
                kNoFileName),
        textRow("FirmwareVersionText",
                {"zeltag_GetFullFWVersion", [] { return kept(zeltag_GetFullFWVersion()); }},
                {"8C040400", "8C040401", "8C040402"}, kNoVersion),
        textRow("PartNumber",
                {"zeltag_getPartNumberString", [] { return kept(zeltag_getPartNumberString()); }},
                {"8C0100", "8C0101", "8C0102"}, kReadFailed)};
}

long long keptSerialNumber(const unsigned char* bytes) {
    if (!bytes)
        return 0;
    std::copy_n(bytes, buffer().size(), buffer().begin());
    return 1;
}

// Only of a reader that tells its volume, which is asked for first.
Operation serialNumberRow() {
    const auto prepare = [] { freshBuffer(32); };
    Steps steps = {
        query("8C06", ends(0, kServiceFailed, "."), passes(1, 0, "+"), passes(1, 0, "+"))};
    for (const char* page : {"8C0500", "8C0501", "8C0502", "8C0503"})
        steps.push_back(
            query(page, ends(0, kServiceFailed, "."), passes(1, 0, "!"), passes(1, 0, "!")));
    return {.name = "SerialNumber",
            .place = Place::TagReports,
            .calls = {{"getESN", [] { return keptSerialNumber(getESN()); }},
                      {"zeltag_getESN", [] { return keptSerialNumber(zeltag_getESN()); }}},
            .prepare = prepare,
            .sights = {kBuffer},
            .steps = steps,
            .again = prepare};
}

} // namespace

std::vector<Operation> tagServiceRows() {
    std::vector<Operation> rows = outputRows();
    rows += numberRows();
    rows += textRows();
    rows += {serialNumberRow()};
    return rows;
}

} // namespace zel::test::steps
