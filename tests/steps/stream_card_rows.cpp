// SPDX-License-Identifier: MIT
// What a proximity reader on a byte stream delivers of a card, and its single operations.
#include "family/tag/card_data.h"
#include "family/tag/records.h"
#include "family/tag/services.h"
#include "family/tag/tag.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_card.h"
#include "tests/steps/tag_config.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kIdFailed = 0x1000000;
constexpr int kBits = 200;
constexpr int kIdTries = 3;
constexpr int kProbeTries = 2;

Operation idRow(Place place, std::string name, std::vector<Call> calls, std::vector<Sight> sights,
                Step (*step)(std::size_t)) {
    return {.name = std::move(name),
            .place = place,
            .calls = std::move(calls),
            .prepare = prepareId,
            .sights = sights,
            .result = kBits,
            .steps = {step(sights.size())}};
}

// The eight bytes are asked for three times.
Step shortId(std::size_t sights) {
    return frame("0000000C", ends(0, kIdFailed, std::string(sights, '0')), kIdTries);
}

// The 32 bytes are asked for once, and what came of a failed answer is taken: the bit count of a
// cut one, and of a refusal the second byte in its place.
Step longId(std::size_t sights) {
    const std::string none(sights, '0');
    return query("00000024", ends(0, kIdFailed, none),
                 ends(kBits, kIdFailed, std::string(sights, '!')), ends(255, kIdFailed, none));
}

std::vector<Operation> identifierRows(Place place, const std::string& where) {
    return {
        idRow(place, where + "Identifier",
              {{"GetActiveID", [] { return GetActiveID(buffer().data(), 32) + 0LL; }}},
              {kBuffer, kOwnBuffer}, shortId),
        idRow(
            place, where + "IdentifierOfTheFamily",
            {{"zeltag_GetActiveID", [] { return zeltag_GetActiveID(buffer().data(), 32) + 0LL; }}},
            {kBuffer}, shortId),
        idRow(place, where + "IdentifierInOwnBuffer",
              {{"getActiveID", [] { return getActiveID(32) + 0LL; }},
               {"zeltag_getActiveID", [] { return zeltag_getActiveID(32) + 0LL; }}},
              {kOwnBuffer}, shortId),
        idRow(place, where + "LongIdentifier",
              {{"GetActiveID32", [] { return GetActiveID32(buffer().data(), 32) + 0LL; }}},
              {kBuffer, kOwnBuffer}, longId),
        idRow(place, where + "LongIdentifierOfTheFamily",
              {{"zeltag_GetActiveID32",
                [] { return zeltag_GetActiveID32(buffer().data(), 32) + 0LL; }}},
              {kBuffer}, longId),
        idRow(place, where + "LongIdentifierInOwnBuffer",
              {{"getActiveID32", [] { return getActiveID32(32) + 0LL; }},
               {"zeltag_getActiveID32", [] { return zeltag_getActiveID32(32) + 0LL; }}},
              {kOwnBuffer}, longId),
    };
}

// What a reply of eight bytes leaves unread isn't discarded ahead of the next one on a line, which
// then is refused too. The question for its presence gets both in step again.
void getInStep() { Ping(); }

// Here the identifier of the read before isn't cleared.
Operation queuedRow(Place place, const std::string& where) {
    return {.name = where + "QueuedIdentifier",
            .place = place,
            .calls = {{"GetQueuedID", [] { return GetQueuedID(1, 0) + 0LL; }},
                      {"zeltag_GetQueuedID", [] { return zeltag_GetQueuedID(1, 0) + 0LL; }}},
            .prepare = prepareQueued,
            .sights = kQueuedSights,
            .steps = {frame("0C020001", ends(0, kIdFailed, ".......")),
                      frame("0C020101", ends(0, kIdFailed, "+......")),
                      frame("0C020201", ends(0, kIdFailed, "++....!")),
                      frame("0C020301", ends(0, kIdFailed, "+++...!")),
                      frame("0C020401", ends(0, kIdFailed, "++++..!"))},
            .again = getInStep};
}

void prepareRaw() {
    SetRawPayload(0xFA, 0x0C, 1, 0, 0, 0, 0, 0);
    constexpr short kRequest[] = {0, 0xFA, 0x0C, 1, 1, 0, 0, 0};
    for (short index = 0; index < 8; ++index)
        SetRawPayload_index(index, kRequest[index]);
}

std::string rawReply() {
    std::string text;
    for (short index = 0; index < 10; ++index)
        text += std::to_string(GetRawPayload_index(index)) + ' ';
    return text;
}

// Bytes 1 to 5 of the request are the frame. Its reply was cleared with its first byte.
Operation rawRow(Place place, const std::string& where) {
    return {.name = where + "RawExchange",
            .place = place,
            .calls = {{"SetRawPayload_index", [] { return SetRawPayload_index(8, 0) + 0LL; }},
                      {"zeltag_SetRawPayload_index",
                       [] { return zeltag_SetRawPayload_index(8, 0) + 0LL; }}},
            .prepare = prepareRaw,
            .sights = {{"the reply", rawReply}},
            .steps = {frame("0C010100", ends(0, 0, "."))},
            .again = getInStep};
}

const Sight kBeep = {"the beep", [] { return shownWords({apparatus().tag->lastBeep()}); }};
const Sight kVolume = {"the volume",
                       [] { return shownWords({*apparatus().tag->options().volume}); }};

// A number, told without an error word.
Operation numberRow(Place place, std::string name, std::vector<Call> calls, std::string command,
                    long long good, long long failed, int tries = 1) {
    return {.name = std::move(name),
            .place = place,
            .calls = std::move(calls),
            .prepare = [] { WriteBaudRate(5); },
            .result = good,
            .steps = {frame(std::move(command), ends(failed, 0), tries)}};
}

std::vector<Operation> serviceRows(Place place, const std::string& where) {
    return {
        {.name = where + "Beep",
         .place = place,
         .calls = {{"BeepNow", [] { return BeepNow(2, 0) + 0LL; }},
                   {"zeltag_BeepNow", [] { return zeltag_BeepNow(2, 0) + 0LL; }}},
         .sights = {kBeep},
         .steps = {frameOrder("0C030200", ends(0, 0, "."), ends(0, 0, "+"), passes(1, 0, "+"))}},
        {.name = where + "BeeperVolume",
         .place = place,
         .calls = {{"SetBeeperVolume", [] { return SetBeeperVolume(7) + 0LL; }},
                   {"zeltag_SetBeeperVolume", [] { return zeltag_SetBeeperVolume(7) + 0LL; }}},
         .sights = {kVolume},
         .steps = {frame("0C860700", ends(0, 0, "."), ends(0, 0, "+"))}},
        {.name = where + "WriteSpeedCode",
         .place = place,
         .calls = {{"WriteBaudRate", [] { return WriteBaudRate(4) + 0LL; }},
                   {"zeltag_WriteBaudRate", [] { return zeltag_WriteBaudRate(4) + 0LL; }}},
         .steps = {frame("0D810400", ends(0, 0))}},
        numberRow(place, where + "SpeedCode",
                  {{"ReadBaudRate", [] { return ReadBaudRate() + 0LL; }},
                   {"zeltag_ReadBaudRate", [] { return zeltag_ReadBaudRate() + 0LL; }}},
                  "0D010000", 5, -1),
        numberRow(place, where + "VolumeOfTheBeeper",
                  {{"GetBeeperVolume", [] { return GetBeeperVolume() + 0LL; }},
                   {"zeltag_GetBeeperVolume", [] { return zeltag_GetBeeperVolume() + 0LL; }}},
                  "0C060000", 2, -1),
        numberRow(place, where + "WriteSpeed",
                  {{"IsFastWriteReader", [] { return IsFastWriteReader() + 0LL; }}}, "0C060000", 1,
                  0),
        numberRow(place, where + "Presence",
                  {{"Ping", [] { return Ping() <= 65535 ? 1LL : 0LL; }},
                   {"zeltag_IsDevicePresent", [] { return zeltag_IsDevicePresent() + 0LL; }}},
                  "04EDED04", 1, 0, kProbeTries),
    };
}

long long keptPartNumber() {
    const char* const text = zeltag_getPartNumberString();
    if (text)
        std::strncpy(reinterpret_cast<char*>(buffer().data()), text, buffer().size());
    return text ? 1 : 0;
}

Operation partNumberRow(Place place, const std::string& where) {
    const auto prepare = [] { freshBuffer(24); };
    return {.name = where + "PartNumber",
            .place = place,
            .calls = {{"zeltag_getPartNumberString", keptPartNumber}},
            .prepare = prepare,
            .sights = {kBuffer},
            .steps = {frame("0C010000", ends(0, 0, ".")), frame("0C010100", ends(0, 0, ".")),
                      frame("0C010200", ends(0, 0, "."))},
            .again = [] {
                freshBuffer(24);
                getInStep();
            }};
}

void prepareOutputs() {
    fillReader(0);
    record().iTagPlusState = 1;
    EXPECT_EQ(ReadCfg(), 1);
}

long long light(int (*set)(sLEDCtrl*)) {
    sLEDCtrl lights = config().sLEDCtrl;
    lights.iRedLEDState = 0;
    lights.bVolatile = 1;
    return set(&lights);
}

// The record takes the change whatever becomes of the write.
Operation ledRow(Place place, const std::string& where) {
    return {
        .name = where + "LedNow",
        .place = place,
        .calls = {{"SetLEDCtrl", [] { return light(SetLEDCtrl); }},
                  {"zeltag_SetLEDCtrl", [] { return light(zeltag_SetLEDCtrl); }}},
        .prepare = prepareOutputs,
        .sights = {{"the record", [] { return shownObject(config().sLEDCtrl); }}, kWriteSights[3]},
        .steps = {frameWrite("81020008", ends(1, 0, "+."), ends(1, 0, "++"), ends(1, 0, "++"))}};
}

} // namespace

std::vector<Operation> streamCardRows() {
    std::vector<Operation> rows;
    for (const auto& [place, where] :
         {std::pair{Place::TagLine, "Line"}, std::pair{Place::TagTcp, "Tcp"}}) {
        rows += identifierRows(place, where);
        rows += {queuedRow(place, where), rawRow(place, where), partNumberRow(place, where),
                 ledRow(place, where)};
        rows += serviceRows(place, where);
    }
    return rows;
}

} // namespace zel::test::steps
