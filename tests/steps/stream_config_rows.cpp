// SPDX-License-Identifier: MIT
// The configuration of a proximity reader on a byte stream, and what a TagPlus one knows. Frames
// that fail have no error word of their own, but for the IDs.
#include "family/tag/card_types.h"
#include "family/tag/field_data.h"
#include "family/tag/multi_config.h"
#include "family/tag/read_config.h"
#include "family/tag/services.h"
#include "family/tag/write_config.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

#include <algorithm>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kReadFailed = 0x20000;
constexpr std::int64_t kNoVersion = 0x70000000; // a stream reader tells none
constexpr int kTwice = 2;

const std::string kRead = "++++++++++..";

void preparePlainRead() {
    prepareRead();
    record().iTagPlusState = 1;
}

// A store whose first eight bytes don't come isn't asked for until the next connect; one whose
// whole doesn't come is read as zeros. What a refusal leaves unread on a line is taken for the
// answer to the next question, the one for the part number.
Steps readSteps(Place place) {
    const std::string texts = "0C010000? 0C010100? 0C010200?";
    Steps steps = {
        frame("04000004", ends(0, kReadFailed, "............")),
        frame("01000008", ends(0, 0, "+...........")),
        frame("01010008", ends(0, 0, "++..........")),
        frame("01020008", ends(0, 0, "+++.........")),
        frame("01030008", ends(0, 0, "++++........")),
        frame("09000008", lasting(ends(1, kNoVersion, "+++++0++++.!", texts), "+++++0++++.!")),
        frame("09000020", passes(1, kNoVersion, "+++++0++++..")),
        frame("0C010000", lasting(ends(1, kNoVersion, "++++++++.+.!"), "++++++++.+.!")),
        frame("0C010100", lasting(ends(1, kNoVersion, "++++++++.+.!"), "++++++++.+.!")),
        frame("0C010200", lasting(ends(1, kNoVersion, "++++++++.+.!"), "++++++++.+.!"))};
    if (place == Place::TagTcp)
        return steps;
    const std::string asked = "0C010000?";
    steps[5].of(Fault::Ones) = lasting(ends(1, kNoVersion, "+++++0++.+.0", asked), "+++++0++.+.0");
    steps[6].of(Fault::Ones) = lasting(ends(1, kNoVersion, "+++++0++.+.!", asked), "++++++++.+.!");
    return steps;
}

// Nothing that was left unread is discarded ahead of a reset: its status word would be taken from
// there. The question for the reader's presence discards it.
void getInStep() { Ping(); }

// The read behind the reset goes as any other.
Steps resetSteps(Place place) {
    Steps steps = {
        frameOrder("03000000", ends(0, 0, ".."), ends(0, 0, "+."), passes(1, kNoVersion, "++"))};
    for (Step step : readSteps(place)) {
        for (auto& outcome : step.outcomes)
            if (outcome) {
                outcome->seen = {'+', outcome->seen[9]};
                outcome->later.clear();
            }
        steps.push_back(std::move(step));
    }
    // A store of the factory tells of no pages.
    steps[7].command = "09000000?";
    return steps;
}

std::vector<Operation> readRows(Place place, const std::string& where) {
    return {
        {.name = where + "ReadConfiguration",
         .place = place,
         .calls = {{"ReadCfg", [] { return ReadCfg() + 0LL; }},
                   {"zeltag_ReadCfg", [] { return zeltag_ReadCfg() + 0LL; }},
                   {"zeltag_ReadCfgOneConfig", [] { return zeltag_ReadCfgOneConfig() + 0LL; }}},
         .prepare = preparePlainRead,
         .sights = kReadSights,
         .steps = readSteps(place),
         .seen = kRead,
         .error = kNoVersion},
        {.name = where + "FactoryReset",
         .place = place,
         .calls = {{"ResetFactoryDflts", [] { return ResetFactoryDflts() + 0LL; }},
                   {"zeltag_ResetFactoryDflts", [] { return zeltag_ResetFactoryDflts() + 0LL; }}},
         .prepare = preparePlainRead,
         .sights = {{"the reader's block 0",
                     [] { return shown(apparatus().tag->committed().configuration[0].block[0]); }},
                    kReadSights[9]},
         .steps = resetSteps(place),
         .again = getInStep,
         .error = kNoVersion}};
}

const std::string kWritten = "+++++++++.";

void preparePlainWrite() {
    record().iTagPlusState = 1;
    prepareWrite();
}

void markAgain() { markAll(0); }

// With the question for the length of the pause behind it, or not.
Steps writeSteps(const std::string& question) {
    const auto failed = [&](std::string seen) { return ends(0, 0, std::move(seen), question); };
    const auto passed = [](std::string seen) {
        return lasting(passes(1, 0, std::move(seen)), "+++++++++!");
    };
    const Outcome good = passes(1, 0, kWritten);
    return {
        frameWrite("06000002", failed(".........."), failed("+........."), good),
        frameWrite("81000008", failed("+........."), failed("++........"), good),
        frameWrite("81010008", failed("++........"), failed("+++......."), good),
        frameWrite("81020008", failed("+++......."), failed("++++......"), good),
        frameWrite("81030008", failed("++++......"), failed("+++++....."), good),
        frameWrite("8A000060", passed("+++++.+++!"), passed("+++++++++!"), good),
        frameWrite("8A000110", passed("++++++!++!"), passed("+++++++++!"), good),
        frameWrite("8A001110", passed("++++++!++!"), passed("+++++++++!"), good),
        // A plain reader knows no card types, and is asked for one twice.
        frame("81040008", good),
        frame("81040008", good),
        frameOrder("02AF0000", failed("+++++++..."), failed("++++++++.."), good),
    };
}

std::vector<Operation> writeRows(Place place, const std::string& where) {
    Steps paused = writeSteps("0C060000?");
    paused.push_back(frame("0C060000", passes(1, 0, kWritten)));
    return {
        {.name = where + "WriteConfiguration",
         .place = place,
         .calls = {{"WriteCfg", [] { return WriteCfg() + 0LL; }},
                   {"zeltag_WriteCfg", [] { return zeltag_WriteCfg() + 0LL; }},
                   {"zeltag_WriteCfgOneConfig", [] { return zeltag_WriteCfgOneConfig() + 0LL; }}},
         .prepare = preparePlainWrite,
         .sights = kWriteSights,
         .steps = paused,
         .again = markAgain,
         .seen = kWritten},
        {.name = where + "WriteWithoutPause",
         .place = place,
         .calls = {{"zeltag_write_cfg", [] { return zeltag_write_cfg() + 0LL; }}},
         .prepare = preparePlainWrite,
         .sights = kWriteSights,
         .steps = writeSteps(""),
         .again = markAgain,
         .seen = kWritten},
        {.name = where + "WriteBlock2",
         .place = place,
         .calls = {{"WrtIDFrmtParms2", [] { return WrtIDFrmtParms2(&config()) + 0LL; }}},
         .prepare = preparePlainWrite,
         .sights = {kWriteSights[3]},
         .steps = {frameWrite("81020008", ends(0, 0, "."), ends(0, 0, "+"), passes(1, 0, "+"))}}};
}

sim::TagReader& reader() { return *apparatus().tag; }

// A reader whose answer doesn't come whole counts as a plain one until the next connect.
Operation probeRow() {
    Outcome plain = lasting(ends(0, 0, "!0.."), "!0..");
    plain.laterResult = 0;
    return {.name = "LineProbeForConfigurations",
            .place = Place::PlusLine,
            .calls = {{"SendGetTagPlus", [] { return SendGetTagPlus() + 0LL; }}},
            .prepare = prepareProbe,
            .sights = kProbeSights,
            .steps = {frame("09010000", plain, kTwice)},
            .seen = "..++"};
}

std::vector<Operation> plusRows() {
    const Outcome none = ends(1, 0, "0");
    const Outcome part = ends(1, 0, "!");
    Step version = frame("09030000", ends(0, 0));
    version.of(Fault::Cut) = ends(0x01000000, 0); // the first of four bytes
    return {
        probeRow(),
        {.name = "LineWriteCardType",
         .place = Place::PlusLine,
         .calls = {{"SendSetTagPlus", [] { return SendSetTagPlus() + 0LL; }}},
         .prepare = [] { config().iCardType = 0x2345; },
         .sights = {{"the reader's card type",
                     [] { return shownWords({reader().configuration(0).cardType}); }}},
         .steps = {frameWrite("81040008", ends(0, 0, "."), ends(0, 0, "+"), passes(1, 0, "+"),
                              kTwice)}},
        {.name = "LineSelectConfiguration",
         .place = Place::PlusLine,
         .calls = {{"zeltag_SendSelectActConfig",
                    [] { return zeltag_SendSelectActConfig(1) + 0LL; }}},
         .sights = {{"in the library", [] { return shownWords({record().iActConfig}); }},
                    {"in the reader",
                     [] {
                         return shownWords(
                             {static_cast<long long>(reader().activeConfiguration())});
                     }}},
         .steps = {frame("09810100", ends(0, 0, "+."), ends(0, 0, "++"), kTwice)}},
        {.name = "LineCardTypes",
         .place = Place::PlusLine,
         .calls = {{"zeltag_GetCardTypeListFromDevice",
                    [] {
                        zeltag_GetCardTypeListFromDevice();
                        return 1LL;
                    }}},
         .prepare = [] { std::ranges::fill(record().CardTypeList, std::uint16_t{0x7707}); },
         .sights = {{"the list", [] { return shownObject(record().CardTypeList); }}},
         .steps = {frame("09040000", none), frame("09040100", part)}},
        {.name = "LineMoveOfASet",
         .place = Place::PlusLine,
         .calls = {{"PlusBlockMove", [] { return PlusBlockMove(2, 1) + 0LL; }},
                   {"ResetUserDflts", [] { return ResetUserDflts() + 0LL; }}},
         .prepare = [] { reader().settings().configuration[0].block[0][1] = 8; },
         .sights = {{"current",
                     [] { return shown(reader().settings().configuration[0].block[0]); }}},
         .steps = {frame("0982020100FF", ends(0, 0, "."), ends(0, 0, "+"), kTwice)}},
        {.name = "LineFirmwareVersionWord",
         .place = Place::PlusLine,
         .calls = {{"zeltag_SendGetFirmwareVersion",
                    [] { return zeltag_SendGetFirmwareVersion(0, 0) + 0LL; }}},
         .result = 0x01020304,
         .steps = {version}},
    };
}

} // namespace

std::vector<Operation> streamConfigRows() {
    std::vector<Operation> rows;
    for (const auto& [place, where] :
         {std::pair{Place::TagLine, "Line"}, std::pair{Place::TagTcp, "Tcp"}}) {
        rows += readRows(place, where);
        rows += writeRows(place, where);
    }
    rows += plusRows();
    return rows;
}

} // namespace zel::test::steps
