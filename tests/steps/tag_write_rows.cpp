// SPDX-License-Identifier: MIT
// A configuration written to a plain reader on USB. A write that fails keeps all marks, so the next
// one writes all of it again.
#include "family/tag/accessors.h"
#include "family/tag/field_data.h"
#include "family/tag/records.h"
#include "family/tag/write_config.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

#include <algorithm>
#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kWriteFailed = 0x40000;
constexpr std::int64_t kNoVolume = 0x1000000;

const std::string kGood = "+++++++++.";

void markAgain() { markAll(0); }

// A write that is ended by a failure, told by the word that stands behind the question for the
// pause, which clears it; without that question by its own.
struct Manner {
    std::int64_t word(std::int64_t own) const { return asksForVolume ? 0 : own; }
    Outcome failed(std::string seen) const {
        return ends(0, word(kWriteFailed), std::move(seen), asksForVolume ? "8C06?" : "");
    }
    Outcome passed(std::string seen, std::string later) const {
        return lasting(passes(1, word(kWriteFailed), std::move(seen)), std::move(later));
    }

    bool asksForVolume;
};

// A page or a key that isn't taken is passed over. The reader then counts as one without such data
// until the next connect, and where the page was announced also as one without a part number.
Step pageStep(const Manner& manner, const std::string& command, const std::string& seen) {
    return write(command, manner.passed(seen + '!', "+++++++++!"),
                 manner.passed(seen + '0', "+++++++++0"));
}

Steps writeSteps(const Manner& manner) {
    Steps steps = {
        write("8A", manner.failed("..........")), write("80", manner.failed("+.........")),
        write("81", manner.failed("++........")), write("82", manner.failed("+++.......")),
        write("83", manner.failed("++++......"))};
    for (const char* page :
         {"85000010", "85010010", "85020010", "85030010", "85040010", "85050010", "85060010",
          "85070010", "85080010", "85090010", "850A0010", "850B0010"})
        steps.push_back(pageStep(manner, page, "+++++!+++"));
    for (const char* page : {"85000100", "85010100", "85001100", "85011100"})
        steps.push_back(pageStep(manner, page, "++++++!++"));
    steps.push_back(order("90AF", manner.failed("+++++++...")));
    return steps;
}

// The length of the pause is asked for last; a reader that doesn't tell its volume counts as slow.
Steps pausedSteps() {
    Steps steps = writeSteps({true});
    steps.push_back(
        query("8C06", passes(1, kNoVolume, kGood), passes(1, 0, kGood), passes(1, 0, kGood)));
    return steps;
}

Operation blockRow() {
    return {.name = "WriteBlock2",
            .place = Place::TagReports,
            .calls = {{"WrtIDFrmtParms2", [] { return WrtIDFrmtParms2(&config()) + 0LL; }}},
            .prepare = prepareWrite,
            .sights = {kWriteSights[3]},
            .steps = {write("82", ends(0, kWriteFailed, "."))}};
}

// Tells nothing by a result.
Operation keyRow() {
    const Outcome lost = lasting(passes(1, kWriteFailed, "!!"), "+!");
    const Outcome dataLost = lasting(passes(1, kWriteFailed, "!0"), "+0");
    return {.name = "WriteKey",
            .place = Place::TagReports,
            .calls = {{"WriteHashKeyBlock",
                       [] {
                           WriteHashKeyBlock(&config(), 0, 1);
                           return 1LL;
                       }}},
            .prepare = prepareWrite,
            .sights = {kWriteSights[6], kWriteSights[9]},
            .steps = {write("85000100", lost, dataLost), write("85010100", lost, dataLost)},
            .seen = "+."};
}

// Outputs that are changed at once: the record takes the change whatever becomes of the write, and
// the result says so too.
void prepareOutputs() {
    fillReader(0);
    EXPECT_EQ(ReadCfg(), 1);
    config().sLEDCtrl.bVolatile = config().sBprRlyCtrl.bVolatile = 1;
}

long long lightRed() {
    sLEDCtrl lights = config().sLEDCtrl;
    lights.iRedLEDState = 0;
    lights.bVolatile = 1;
    return SetLEDCtrl(&lights);
}

long long lightRedOfTheFamily() {
    sLEDCtrl lights = config().sLEDCtrl;
    lights.iRedLEDState = 0;
    return zeltag_SetLEDCtrl(&lights);
}

long long closeRelay() {
    sBprRlyCtrl outputs = config().sBprRlyCtrl;
    outputs.iRelayState = 1;
    return SetBprRlyCtrl(&outputs);
}

long long closeRelayOfTheFamily() {
    sBprRlyCtrl outputs = config().sBprRlyCtrl;
    outputs.iRelayState = 1;
    return zeltag_SetBprRlyCtrl(&outputs);
}

Operation outputRow(std::string name, std::vector<Call> calls, Sight inRecord) {
    return {.name = std::move(name),
            .place = Place::TagReports,
            .calls = std::move(calls),
            .prepare = prepareOutputs,
            .sights = {inRecord, kWriteSights[3]},
            .steps = {write("82", passes(1, 0, "+."))}};
}

#define ZEL_SET(record, word, value)                                                               \
    Call{"set" #record "_" #word, [] { return set##record##_##word(value) + 0LL; }}, Call {        \
        "zeltag_set" #record "_" #word, [] { return zeltag_set##record##_##word(value) + 0LL; }    \
    }

// A word of a record that is volatile is written at once, also one that the block doesn't hold.
std::vector<Operation> wordRows() {
    const Sight leds = {"the record", [] { return shownObject(config().sLEDCtrl); }};
    const Sight outputs = {"the record", [] { return shownObject(config().sBprRlyCtrl); }};
    Operation unheld = outputRow("LedWordsThatNoBlockHolds",
                                 {ZEL_SET(LEDCtrl, iPad3, 9), ZEL_SET(LEDCtrl, iPad4, 9),
                                  ZEL_SET(LEDCtrl, iPad5, 9), ZEL_SET(LEDCtrl, iPad6, 9),
                                  ZEL_SET(LEDCtrl, bVolatile, 2)},
                                 leds);
    Operation unheldOutputs =
        outputRow("RelayWordsThatNoBlockHolds",
                  {ZEL_SET(BprRlyCtrl, iPad0, 9), ZEL_SET(BprRlyCtrl, iPad3, 9),
                   ZEL_SET(BprRlyCtrl, iPad4, 9), ZEL_SET(BprRlyCtrl, iPad5, 9),
                   ZEL_SET(BprRlyCtrl, iPad6, 9), ZEL_SET(BprRlyCtrl, bVolatile, 2)},
                  outputs);
    unheld.seen = unheldOutputs.seen = "+.";
    return {outputRow("LedWords",
                      {ZEL_SET(LEDCtrl, iRedLEDState, 0), ZEL_SET(LEDCtrl, iGrnLEDState, 0),
                       ZEL_SET(LEDCtrl, bAppCtrlsLED, 1)},
                      leds),
            outputRow("RelayWords",
                      {ZEL_SET(BprRlyCtrl, iBeeperState, 1), ZEL_SET(BprRlyCtrl, iRelayState, 1)},
                      outputs),
            unheld, unheldOutputs};
}

#undef ZEL_SET

} // namespace

std::vector<Operation> tagWriteRows() {
    std::vector<Operation> rows = {
        {.name = "WriteConfiguration",
         .place = Place::TagReports,
         .calls = {{"WriteCfg", [] { return WriteCfg() + 0LL; }},
                   {"zeltag_WriteCfg", [] { return zeltag_WriteCfg() + 0LL; }},
                   {"zeltag_WriteCfgOneConfig", [] { return zeltag_WriteCfgOneConfig() + 0LL; }}},
         .prepare = prepareWrite,
         .sights = kWriteSights,
         .steps = pausedSteps(),
         .again = markAgain,
         .seen = kGood},
        {.name = "WriteWithoutPause",
         .place = Place::TagReports,
         .calls = {{"zeltag_write_cfg", [] { return zeltag_write_cfg() + 0LL; }}},
         .prepare = prepareWrite,
         .sights = kWriteSights,
         .steps = writeSteps({false}),
         .again = markAgain,
         .seen = kGood},
    };
    rows +=
        {blockRow(), keyRow(),
         outputRow("LedNow", {{"SetLEDCtrl", lightRed}, {"zeltag_SetLEDCtrl", lightRedOfTheFamily}},
                   {"the record", [] { return shownObject(config().sLEDCtrl); }}),
         outputRow("RelayNow",
                   {{"SetBprRlyCtrl", closeRelay}, {"zeltag_SetBprRlyCtrl", closeRelayOfTheFamily}},
                   {"the record", [] { return shownObject(config().sBprRlyCtrl); }})};
    rows += wordRows();
    return rows;
}

} // namespace zel::test::steps
