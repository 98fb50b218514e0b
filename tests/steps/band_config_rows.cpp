// SPDX-License-Identifier: MIT
// The configuration of a magnetic stripe reader, on USB and at the end of a line: 37 commands each
// way. A reply that is cut on USB is a good one without its data; on a line it is none.
#include "family/band/band.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kReadFailed = 0x20000;
constexpr std::int64_t kFieldFailed = 0x20001;
constexpr std::size_t kFields = 11;
constexpr int kTwice = 2;

bool isOnLine(Place place) { return place == Place::BandLine; }

template <std::size_t Field> std::string inRecord() {
    return shownObject(record().Band.UserField[Field]);
}

template <std::size_t Field> std::string inReader() {
    return shownObject(apparatus().band->settings().field[Field]);
}

template <std::size_t... Field> std::vector<Sight> fieldsInRecord(std::index_sequence<Field...>) {
    return {{"a field", inRecord<Field>}...};
}

template <std::size_t... Field> std::vector<Sight> fieldsInReader(std::index_sequence<Field...>) {
    return {{"a field", inReader<Field>}...};
}

// The part number, the two numbers, each field, the system's settings, the LEDs, the mark.
std::vector<Sight> readSights() {
    std::vector<Sight> sights = {{"part number", [] { return std::string(record().szPartNum); }},
                                 {"numbers", [] {
                                      return shownWords({record().iDID, record().iFWVer});
                                  }}};
    sights += fieldsInRecord(std::make_index_sequence<kFields>());
    sights += std::vector<Sight>{
        {"system",
         [] {
             const tsBand& band = record().Band;
             return shownWords({band.TrackEnables, band.KeyPressTime, band.KeyReleaseTime,
                                band.iBandLUID, band.Beeper, record().iLUID});
         }},
        {"LEDs", [] { return shownObject(record().Band.LedColor); }},
        {"mark", [] { return shownWords({record().Band.bBandCfgDirty}); }}};
    return sights;
}

// The same in the reader, and whether it is kept there.
std::vector<Sight> writeSights() {
    std::vector<Sight> sights = fieldsInReader(std::make_index_sequence<kFields>());
    sights +=
        std::vector<Sight>{{"system", [] { return shown(apparatus().band->settings().system); }},
                           {"LEDs", [] { return shown(apparatus().band->settings().leds); }},
                           {"kept", [] { return shown(apparatus().band->committed().leds); }}};
    return sights;
}

// No byte of the reader is zero, and none as the record's.
void prepareRead() {
    sim::BandSettings& settings = apparatus().band->settings();
    for (sim::BandField& field : settings.field) {
        field.first.fill(0x83);
        field.second.fill(0x21);
        field.control = {0xE2, 3, 4, 5, 6};
    }
    settings.system = {0xC5, 7, 8, 9, 10, 0x11};
    settings.leds = {0x5A, 0x03};
    apparatus().band->keepSettings();
    std::memset(&record().Band.UserField, 0x77, sizeof record().Band.UserField);
    std::memset(record().Band.LedColor, 0x77, sizeof record().Band.LedColor);
    record().Band.bBandCfgDirty = 1;
    record().Band.TrackEnables = 0x77;
    record().iDID = record().iFWVer = record().iLUID = 0x7777;
    std::strcpy(record().szPartNum, "an old part");
}

void prepareWrite() {
    prepareRead();
    EXPECT_EQ(zelband_ReadCfg(), 1);
    for (BandUserField& field : record().Band.UserField) {
        std::memset(field.Keybyte, 0x31, sizeof field.Keybyte);
        field.Length = 0x32;
    }
    record().Band.Beeper = 0x33;
    record().Band.LedColor[1] ^= 1;
}

// All sights from the first one up to a number of them are done, the next one as it is told.
std::string doneUpTo(std::size_t count, const std::string& next, std::size_t size) {
    std::string seen(count, '+');
    seen += next;
    seen.resize(size, '.');
    return seen;
}

std::string doneBut(std::size_t at, char symbol, std::size_t size) {
    std::string seen(size, '+');
    seen[at] = symbol;
    return seen;
}

constexpr std::size_t kRead = 2 + kFields + 3;
constexpr std::size_t kWritten = kFields + 3;

// A command that isn't answered by an R: lost on the way, or carried out. What a cut reply leaves
// on USB is told by `cut`.
Step ask(Place place, const std::string& command, const Outcome& lost, const Outcome& cut,
         const Outcome& notAnswered) {
    return query(command, lost, notAnswered, isOnLine(place) ? notAnswered : cut, notAnswered);
}

Step ask(Place place, const std::string& command, const Outcome& lost, const Outcome& cut) {
    return ask(place, command, lost, cut, lost);
}

// The part number is asked for twice. The device's numbers and the system's settings may be
// missing; a field's last part ends the read without an error word.
Steps readSteps(Place place) {
    const auto other = [](std::size_t at, char symbol) {
        return passes(1, 0, doneBut(at, symbol, kRead));
    };
    Steps steps = {ask(place, "QRZ", ends(0, kReadFailed, doneUpTo(0, "", kRead)), other(0, '0')),
                   ask(place, "QSV", other(1, '.'), other(1, '0'))};
    steps[0].tries = kTwice;
    for (std::size_t field = 0; field < kFields; ++field) {
        const std::size_t at = 2 + field;
        const std::string letter(1, static_cast<char>('a' + field));
        const auto stops = [&](std::int64_t error, const std::string& symbol) {
            return ends(0, error, doneUpTo(at, symbol, kRead));
        };
        steps.push_back(ask(place, "G" + letter + "0", stops(kFieldFailed, "."), other(at, '!')));
        steps.push_back(ask(place, "G" + letter + "1", stops(kFieldFailed, "!"), other(at, '!')));
        steps.push_back(ask(place, "G" + letter + "C", stops(0, "!"), other(at, '!')));
    }
    steps.push_back(ask(place, "GS0", other(13, '.'), other(13, '0')));
    steps.push_back(ask(place, "GL0", ends(0, 0, doneUpTo(14, "", kRead)), other(14, '0')));
    return steps;
}

// A field's last part and the system's settings are sent in vain without a word of it. The reader
// may have taken what it didn't answer.
Steps writeSteps(Place place) {
    const Outcome good = passes(1, 0, std::string(kWritten, '+'));
    const auto stops = [](std::int64_t error, std::size_t count, const std::string& next) {
        return ends(0, error, doneUpTo(count, next, kWritten));
    };
    Steps steps = {ask(place, "FR", stops(0, 0, ""), good)};
    // A reader that wasn't told of the write takes none of it.
    steps[0].of(Fault::Fetch) = stops(0, 0, "");
    for (std::size_t field = 0; field < kFields; ++field) {
        const std::string letter(1, static_cast<char>('a' + field));
        steps.push_back(ask(place, "S" + letter + "0", stops(kFieldFailed, field, "."), good,
                            stops(kFieldFailed, field, "!")));
        steps.push_back(ask(place, "S" + letter + "1", stops(kFieldFailed, field, "!"), good,
                            stops(kFieldFailed, field, "!")));
        steps.push_back(ask(place, "S" + letter + "C", passes(1, 0, doneBut(field, '!', kWritten)),
                            good, good));
    }
    steps.push_back(ask(place, "SS0", passes(1, 0, doneBut(kFields, '.', kWritten)), good, good));
    steps.push_back(ask(place, "SL0", stops(0, 12, ""), good, stops(0, 13, "")));
    steps.push_back(ask(place, "FW", stops(0, 13, ""), good, stops(0, 14, "")));
    return steps;
}

Steps resetSteps(Place place) {
    Steps steps = {
        ask(place, "FD", ends(0, 0x80000, ".."), passes(1, 0, "++"), ends(0, 0x80000, "+."))};
    for (Step step : lostAlone(readSteps(place))) {
        for (auto& outcome : step.outcomes)
            if (outcome)
                outcome->seen = {'+', outcome->seen[15]};
        steps.push_back(std::move(step));
    }
    return steps;
}

std::vector<Operation> rowsAt(Place place, const std::string& where) {
    return {
        {.name = where + "ReadConfiguration",
         .place = place,
         .calls = {{"ReadCfg", [] { return ReadCfg() + 0LL; }},
                   {"zelband_ReadCfg", [] { return zelband_ReadCfg() + 0LL; }}},
         .prepare = prepareRead,
         .sights = readSights(),
         .steps = readSteps(place)},
        {.name = where + "WriteConfiguration",
         .place = place,
         .calls = {{"WriteCfg", [] { return WriteCfg() + 0LL; }},
                   {"zelband_WriteCfg", [] { return zelband_WriteCfg() + 0LL; }}},
         .prepare = prepareWrite,
         .sights = writeSights(),
         .steps = writeSteps(place)},
        {.name = where + "FactoryReset",
         .place = place,
         .calls = {{"ResetFactoryDflts", [] { return ResetFactoryDflts() + 0LL; }},
                   {"zelband_ResetFactoryDflts", [] { return zelband_ResetFactoryDflts() + 0LL; }}},
         .prepare = prepareRead,
         .sights = {{"the reader's LEDs", [] { return shown(apparatus().band->settings().leds); }},
                    {"mark", [] { return shownWords({record().Band.bBandCfgDirty}); }}},
         .steps = resetSteps(place)}};
}

} // namespace

std::vector<Operation> bandConfigRows() {
    std::vector<Operation> rows = rowsAt(Place::BandReports, "Band");
    rows += rowsAt(Place::BandLine, "BandLine");
    return rows;
}

} // namespace zel::test::steps
