// SPDX-License-Identifier: MIT
// A presence sensor: six blocks each way, its range, its resets. Block 0x81 is read without being
// asked for, by two fetches.
#include "family/echo/echo.h"
#include "frame/zelTagAPI.h"
#include "tests/family/echo/sensor_test.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kReadFailed = 0x20000;
constexpr std::int64_t kWriteFailed = 0x40000;
constexpr std::int64_t kResetFailed = 0x80000;
constexpr std::int64_t kRangeFailed = 0x1000000;

tsEcho& echo() { return record().Echo; }
sim::EchoSensor& sensor() { return *apparatus().echo; }

// The four records, whether they count, the marks, the three numbers.
const std::vector<Sight> kReadSights = {
    {"sonar", [] { return shownObject(echo().sSonarParms); }},
    {"walk away", [] { return shownObject(echo().sWalkAwayParms); }},
    {"walk up", [] { return shownObject(echo().sWalkUpParms); }},
    {"idle", [] { return shownObject(echo().sIdleParms); }},
    {"valid", [] { return shownWords({echo().bEchoCfgValid}); }},
    {"marks",
     [] {
         return shownWords(
             {echo().bDirtySonar, echo().bDirtyWalkAway, echo().bDirtyWalkUp, echo().bDirtyIdle});
     }},
    {"numbers", [] {
         return shownWords({record().iLUID, record().iDID, record().iFWVer, record().bLUIDDirty});
     }}};

void mark() {
    echo().bDirtySonar = echo().bDirtyWalkAway = echo().bDirtyWalkUp = echo().bDirtyIdle = 1;
    record().bLUIDDirty = 1;
}

void prepareRead() {
    sensor().settings() = kFullBlocks;
    std::memset(&echo().sSonarParms, 0x77, sizeof echo().sSonarParms);
    std::memset(&echo().sWalkAwayParms, 0x77, sizeof echo().sWalkAwayParms);
    std::memset(&echo().sWalkUpParms, 0x77, sizeof echo().sWalkUpParms);
    std::memset(&echo().sIdleParms, 0x77, sizeof echo().sIdleParms);
    mark();
    record().iLUID = record().iDID = record().iFWVer = 0x7777;
}

// A reply that comes alone.
Step fetch(Outcome lost, Outcome cut, Outcome ones) {
    Step step{"<"};
    step.of(Fault::Fetch) = std::move(lost);
    step.of(Fault::Cut) = std::move(cut);
    step.of(Fault::Ones) = std::move(ones);
    return step;
}

Outcome readEnds(const char* seen) { return ends(0, kReadFailed, seen); }

// What two blocks bring is half done between them. The settings count before the numbers are read.
Steps readSteps() {
    const Outcome good = passes(1, 0, "+++++++");
    const Outcome sonar = passes(1, 0, "!++++++");
    const Outcome away = passes(1, 0, "+!+++++");
    const Outcome up = passes(1, 0, "++!++++");
    const Outcome idle = passes(1, 0, "+++!+++");
    const Outcome numbers = passes(1, 0, "++++++!");
    return {query("80", readEnds("......."), sonar, sonar),
            fetch(readEnds("+......"), good, good),
            fetch(readEnds("+......"), away, away),
            query("82", readEnds("+!....."), away, away),
            query("83", readEnds("++....."), up, up),
            query("84", readEnds("++!...."), up, up),
            query("85", readEnds("+++...."), idle, idle),
            query("8A", readEnds("++++++."), numbers, numbers)};
}

template <std::size_t Block> std::string inSensor() { return shown(sensor().settings()[Block]); }

// The six blocks in the sensor, whether they are kept, the marks, the LUID and its mark.
const std::vector<Sight> kWriteSights = {
    {"block 0", inSensor<0>},
    {"block 1", inSensor<1>},
    {"block 2", inSensor<2>},
    {"block 3", inSensor<3>},
    {"block 4", inSensor<4>},
    {"block 5", inSensor<5>},
    {"kept", [] { return shown(sensor().committed()[0]); }},
    kReadSights[5],
    {"LUID", [] { return shownWords({sensor().luid()}); }},
    {"mark of the LUID", [] { return shownWords({record().bLUIDDirty}); }}};

void prepareWrite() {
    sensor().settings() = kFullBlocks;
    EXPECT_EQ(zelecho_ReadCfg(), 1);
    echo().sSonarParms.StartDlyS = 9;
    echo().sWalkAwayParms.Key1ModsWA = echo().sWalkAwayParms.Key1CodeWA = 9;
    echo().sWalkUpParms.Key1ModsWU = echo().sWalkUpParms.Key1CodeWU = 9;
    echo().sIdleParms.Key1CodeI = 9;
    record().iLUID = 0x4321;
    mark();
}

// Behind the commit nothing but the LUID waits.
Steps writeSteps() {
    const auto stops = [](const char* seen) { return ends(0, kWriteFailed, seen); };
    return {write("80", stops("..........")),   write("81", stops("+.........")),
            write("82", stops("++........")),   write("83", stops("+++.......")),
            write("84", stops("++++......")),   write("85", stops("+++++.....")),
            order("903F", stops("++++++....")), write("8A", stops("++++++++.."))};
}

// The read behind a reset goes as any other.
Operation resetRow(std::string name, std::vector<Call> calls, const std::string& command,
                   Sight sight) {
    Steps steps = {order(command, ends(0, kResetFailed, ".."))};
    for (Step step : readSteps()) {
        for (auto& outcome : step.outcomes)
            if (outcome)
                outcome->seen = {'+', outcome->seen[4]};
        steps.push_back(std::move(step));
    }
    return {.name = std::move(name),
            .place = Place::EchoReports,
            .calls = std::move(calls),
            .prepare = prepareRead,
            .sights = {sight, kReadSights[4]},
            .steps = steps};
}

std::vector<Operation> resetRows() {
    const Sight current = {"the sensor's block 3", inSensor<3>};
    const Sight user = {"the user's", [] { return shown(sensor().userDefaults()[3]); }};
    return {
        resetRow("EchoFactoryReset",
                 {{"ResetFactoryDflts", [] { return ResetFactoryDflts() + 0LL; }},
                  {"zelecho_ResetFactoryDflts", [] { return zelecho_ResetFactoryDflts() + 0LL; }}},
                 "A0", current),
        resetRow("EchoUserDefaultsRestored",
                 {{"ResetUserDflts", [] { return ResetUserDflts() + 0LL; }},
                  {"zelecho_ResetUserDflts", [] { return zelecho_ResetUserDflts() + 0LL; }}},
                 "D0", current),
        resetRow("EchoUserDefaultsSaved",
                 {{"SaveUserDflts", [] { return SaveUserDflts() + 0LL; }},
                  {"zelecho_SaveUserDflts", [] { return zelecho_SaveUserDflts() + 0LL; }}},
                 "E0", user)};
}

sRangeInfo range;

// A question that fails leaves zeros.
Operation rangeRow() {
    return {
        .name = "EchoRange",
        .place = Place::EchoReports,
        .calls = {{"GetObjRangeInfo", [] { return GetObjRangeInfo(&range) + 0LL; }},
                  {"zelecho_GetObjRangeInfo",
                   [] { return zelecho_GetObjRangeInfo(&range) + 0LL; }}},
        .prepare =
            [] {
                sensor().place(20);
                std::memset(&range, 0x77, sizeof range);
            },
        .sights = {{"the range", [] { return shownObject(range); }}},
        .steps = {query("8F", ends(0, kRangeFailed, "0"), passes(1, 0, "+"), passes(1, 0, "!"))}};
}

// Nobody is there where the range isn't told; the LUID is the record's in any case, and the result
// tells of no failure.
Operation presenceRow() {
    return {.name = "EchoIdentifier",
            .place = Place::EchoReports,
            .calls = {{"zelecho_GetActiveID",
                       [] { return zelecho_GetActiveID(buffer().data(), 4) + 0LL; }},
                      {"zelecho_GetActiveID32",
                       [] { return zelecho_GetActiveID32(buffer().data(), 4) + 0LL; }},
                      {"GetActiveID", [] { return GetActiveID(buffer().data(), 4) + 0LL; }},
                      {"GetActiveID32", [] { return GetActiveID32(buffer().data(), 4) + 0LL; }}},
            .prepare =
                [] {
                    sensor().place(20);
                    freshBuffer(ZELTAGAPI_ID_SIZE);
                    record().iLUID = 0x1234;
                },
            .sights = {{"presence", [] { return shown(buffer().first(2)); }},
                       {"LUID", [] { return shown(buffer().subspan(2, 2)); }}},
            .result = 4,
            .steps = {
                query("8F", ends(4, kRangeFailed, "0+"), passes(4, 0, "++"), passes(4, 0, "!+"))}};
}

// The one failure that the connect's word tells of.
Operation haltRow() {
    return {.name = "EchoHalt",
            .place = Place::EchoReports,
            .calls = {{"HaltKBSends", [] { return HaltKBSends(1) + 0LL; }},
                      {"zelecho_HaltKBSends", [] { return zelecho_HaltKBSends(1) + 0LL; }}},
            .prepare = [] { lLastCnctErr = 0; },
            .sights = {{"halted", [] { return shownWords({sensor().isHalted()}); }},
                       {"in the record", [] { return shownWords({echo().bEchoHalt}); }},
                       {"lLastCnctErr",
                        [] { return shownWords({static_cast<long long>(lLastCnctErr)}); }}},
            .steps = {order("B1", ends(0, 0, ".+!"))},
            .seen = "++."};
}

Operation flagsRow() {
    Operation row = haltRow();
    row.name = "EchoFlags";
    row.calls = {{"zelecho_SetFlags", [] {
                      sCfgFlags flags = {};
                      flags.bHaltKBSnd = 1;
                      return zelecho_SetFlags(&flags) + 0LL;
                  }}};
    row.steps = {order("B1", ends(1, 0, ".+!"))};
    return row;
}

} // namespace

std::vector<Operation> echoRows() {
    std::vector<Operation> rows = {
        {.name = "EchoReadConfiguration",
         .place = Place::EchoReports,
         .calls = {{"ReadCfg", [] { return ReadCfg() + 0LL; }},
                   {"zelecho_ReadCfg", [] { return zelecho_ReadCfg() + 0LL; }}},
         .prepare = prepareRead,
         .sights = kReadSights,
         .steps = readSteps()},
        {.name = "EchoWriteConfiguration",
         .place = Place::EchoReports,
         .calls = {{"WriteCfg", [] { return WriteCfg() + 0LL; }},
                   {"zelecho_WriteCfg", [] { return zelecho_WriteCfg() + 0LL; }}},
         .prepare = prepareWrite,
         .sights = kWriteSights,
         .steps = writeSteps(),
         .again = mark}};
    rows += resetRows();
    rows += {rangeRow(), presenceRow(), haltRow(), flagsRow()};
    return rows;
}

} // namespace zel::test::steps
