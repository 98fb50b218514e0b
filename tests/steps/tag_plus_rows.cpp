// SPDX-License-Identifier: MIT
// What only a TagPlus reader knows, on USB: its configurations, card types and stored sets.
#include "family/tag/card_types.h"
#include "family/tag/multi_config.h"
#include "family/tag/services.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

#include <algorithm>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kReadFailed = 0x20000;
constexpr std::int64_t kWriteFailed = 0x40000;
constexpr std::int64_t kMoveFailed = 0x1000000;

sim::TagReader& reader() { return *apparatus().tag; }

// A probe whose question can't be sent finds a plain reader for good, until the next connect; one
// that isn't answered, or not rightly, finds nothing yet.
Operation probeRow() {
    return {.name = "ProbeForConfigurations",
            .place = Place::PlusReports,
            .calls = {{"SendGetTagPlus", [] { return SendGetTagPlus() + 0LL; }}},
            .prepare = prepareProbe,
            .sights = kProbeSights,
            .steps = {[] {
                          Outcome plain = lasting(ends(0, 0, "!0.."), "!0..");
                          plain.laterResult = 0;
                          return query("8901", plain, ends(0, 0, "00.."), ends(0, 0, "00+."),
                                       ends(0, 0, "00.."));
                      }(),
                      query("84", ends(0, kReadFailed, "..+."), passes(1, 0, "..+!"),
                            passes(1, 0, "..+!"))},
            .seen = "..++"};
}

Operation cardTypeRow() {
    return {.name = "WriteCardType",
            .place = Place::PlusReports,
            .calls = {{"SendSetTagPlus", [] { return SendSetTagPlus() + 0LL; }}},
            .prepare = [] { config().iCardType = 0x2345; },
            .sights = {{"the reader's card type",
                        [] { return shownWords({reader().configuration(0).cardType}); }}},
            .steps = {write("84", ends(0, kWriteFailed, "."))}};
}

// The library has moved before it asks.
Operation selectRow() {
    return {.name = "SelectConfiguration",
            .place = Place::PlusReports,
            .calls = {{"zeltag_SendSelectActConfig",
                       [] { return zeltag_SendSelectActConfig(1) + 0LL; }}},
            .sights = {{"in the library", [] { return shownWords({record().iActConfig}); }},
                       {"in the reader",
                        [] {
                            return shownWords(
                                {static_cast<long long>(reader().activeConfiguration())});
                        }}},
            .steps = {query("898101", ends(0, 0, "+."), ends(0, 0, "++"), passes(1, 0, "++"),
                            ends(0, 0, "++"))}};
}

// A page that can't be asked for is left out; one that doesn't come ends the list. Behind the page
// with the last type another one is asked for where it brings no end.
Operation cardTypesRow() {
    return {.name = "CardTypes",
            .place = Place::PlusReports,
            .calls = {{"zeltag_GetCardTypeListFromDevice",
                       [] {
                           zeltag_GetCardTypeListFromDevice();
                           return 1LL;
                       }}},
            .prepare = [] { std::ranges::fill(record().CardTypeList, std::uint16_t{0x7707}); },
            .sights = {{"the list", [] { return shownObject(record().CardTypeList); }}},
            .steps = {query("890400", passes(1, 0, "!"), ends(1, 0, "0"), ends(1, 0, "!"),
                            passes(1, 0, "!")),
                      query("890401", ends(1, 0, "!", "890402?"), ends(1, 0, "!"),
                            passes(1, 0, "+"), ends(1, 0, "!", "890402?"))}};
}

std::string idLengths(const sim::TagSettings& settings) {
    return shownWords(
        {settings.configuration[0].block[0][1], settings.configuration[1].block[0][1]});
}

// Each set differs from the others. What the pause of a move protects comes behind the operation.
void prepareSets() {
    reader().settings().configuration[0].block[0][1] = 9;
    reader().keepSettings();
    PlusBlockMove(1, 2);
    wait(1'000'000);
    reader().settings().configuration[0].block[0][1] = 8;
    reader().keepSettings();
}

const Sight kCurrent = {"current", [] { return idLengths(reader().settings()); }};
const Sight kUser = {"the user's", [] { return idLengths(reader().userDefaults()); }};

// A lost request has no error word, a lost reply has.
Operation moveRow(std::string name, std::vector<Call> calls, std::string command,
                  std::string seen) {
    const std::string none(seen.size(), '.');
    return {.name = std::move(name),
            .place = Place::PlusReports,
            .calls = std::move(calls),
            .prepare = prepareSets,
            .sights = {kCurrent, kUser},
            .steps = {query(std::move(command), ends(0, 0, none), ends(0, kMoveFailed, seen),
                            passes(1, 0, seen), passes(1, 0, seen))},
            .seen = seen};
}

// Both moves are made, and the second one tells the result.
Operation defaultsRow() {
    return {.name = "FactoryDefaultsIntoBoth",
            .place = Place::PlusReports,
            .calls = {{"zelTagPlusDefaults", [] { return zelTagPlusDefaults() + 0LL; }}},
            .prepare = prepareSets,
            .sights = {kCurrent, kUser},
            .steps = {query("8982030200FF", passes(1, 0, "+."), passes(1, kMoveFailed, "++"),
                            passes(1, 0, "++"), passes(1, 0, "++")),
                      query("8982030100FF", ends(0, 0, ".+"), ends(0, kMoveFailed, "++"),
                            passes(1, 0, "++"), passes(1, 0, "++"))}};
}

Operation versionRow() {
    return {.name = "FirmwareVersionWord",
            .place = Place::PlusReports,
            .calls = {{"zeltag_SendGetFirmwareVersion",
                       [] { return zeltag_SendGetFirmwareVersion(0, 0) + 0LL; }}},
            .prepare = [] { record().FWVerTbl[0][0] = 0x77; },
            .sights = {{"the table", [] { return shownWords({record().FWVerTbl[0][0]}); }}},
            .result = 0x01020304,
            .steps = {query("89030000", ends(0, 0, "."), ends(0, 0x1000000, "."), passes(0, 0, "0"),
                            passes(0, 0, "0"))}};
}

} // namespace

std::vector<Operation> tagPlusRows() {
    return {probeRow(),
            cardTypeRow(),
            selectRow(),
            cardTypesRow(),
            moveRow("MoveOfASet", {{"PlusBlockMove", [] { return PlusBlockMove(3, 1) + 0LL; }}},
                    "8982030100FF", "+."),
            moveRow("UserDefaultsRestored",
                    {{"ResetUserDflts", [] { return ResetUserDflts() + 0LL; }}}, "8982020100FF",
                    "+."),
            moveRow("UserDefaultsSaved", {{"SaveUserDflts", [] { return SaveUserDflts() + 0LL; }}},
                    "8982010200FF", ".+"),
            defaultsRow(),
            versionRow()};
}

} // namespace zel::test::steps
