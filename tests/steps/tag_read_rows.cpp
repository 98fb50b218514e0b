// SPDX-License-Identifier: MIT
// A configuration read from a plain reader on USB. Its last steps clear the error word on their
// way, so what went wrong before them shows in the record alone.
#include "family/tag/read_config.h"
#include "family/tag/write_config.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

namespace zel::test::steps {

namespace {

constexpr std::int64_t kReadFailed = 0x20000;
constexpr std::int64_t kNoVersion = 0x70000000;

const std::string kGood = "++++++++++..";

const std::vector<std::string> kPartNumber = {"8C0100", "8C0101", "8C0102"};
const std::vector<std::string> kVersion = {"8C040400", "8C040401", "8C040402"};
const std::vector<std::string> kFileName = {"8C040700", "8C040701", "8C040702", "8C040703",
                                            "8C040704", "8C040705", "8C040706", "8C040707"};

// The IDs and the blocks end the read. What is cut has zeros behind its third byte.
Steps blockSteps() {
    return {
        query("8A", ends(0, kReadFailed, "............"), passes(1, 0, "!+++++++++.."),
              passes(1, 0, "!+++++++++..")),
        query("80", ends(0, kReadFailed, "+..........."), passes(1, 0, "+!++++++++.."),
              passes(1, 0, "+!++++++++..")),
        query("81", ends(0, kReadFailed, "++.........."), passes(1, 0, "++!+++++++.."),
              passes(1, 0, "++!+++++++..")),
        query("82", ends(0, kReadFailed, "+++........."), passes(1, 0, "+++!++++++.."),
              passes(1, 0, "+++!++++++..")),
        query("83", ends(0, kReadFailed, "++++........"), passes(1, 0, "++++!+++++.."),
              passes(1, 0, "++++!+++++..")),
    };
}

// A page that can't be asked for ends the read; one that doesn't come is zeros. The first page
// tells how many there are: of 0 or above 254 it tells of none, and nothing is stored.
Steps pageSteps(const std::string& texts) {
    const Outcome notAsked = ends(0, kReadFailed, "+++++.......");
    const Outcome other = passes(1, 0, "+++++!++++..");
    const Outcome none = ends(1, 0, "+++++0++++..", texts);
    Steps steps = {query("85000010", notAsked, none, other, none)};
    for (const char* page : {"85010010", "85020010", "85030010", "85040010", "85050010", "85060010",
                             "85070010", "85080010", "85090010", "850A0010", "850B0010"})
        steps.push_back(query(page, notAsked, other, other, other));
    return steps;
}

// A text that fails leaves its rest unasked. The version clears the word of the file name; the part
// number isn't asked for again until the next connect.
Steps textSteps() {
    Steps steps;
    const std::string behindName = asked(kVersion) + asked(kPartNumber);
    for (const std::string& character : kFileName)
        steps.push_back(query(character, ends(1, 0, "++++++0+++..", behindName),
                              passes(1, 0, kGood), passes(1, 0, "++++++!+++..")));
    for (const std::string& character : kVersion)
        steps.push_back(query(character, ends(1, kNoVersion, "+++++++0++..", asked(kPartNumber)),
                              passes(1, 0, kGood), passes(1, 0, "+++++++!++..")));
    for (const std::string& character : kPartNumber)
        steps.push_back(query(character,
                              lasting(ends(1, kReadFailed, "++++++++.+.!"), "++++++++.+.!"),
                              passes(1, 0, kGood), passes(1, 0, "++++++++!+..")));
    return steps;
}

Steps oneConfigurationSteps() {
    Steps steps = blockSteps();
    steps += pageSteps(asked(kFileName) + asked(kVersion) + asked(kPartNumber));
    steps += textSteps();
    return steps;
}

// A probe that can't be sent tells for good, until the next connect, that this is a plain reader.
Steps wholeSteps() {
    Steps steps = {query("8901", lasting(passes(1, 0, "++++++++++!."), "++++++++++!."),
                         passes(1, 0, kGood), passes(1, 0, kGood), passes(1, 0, kGood))};
    steps += oneConfigurationSteps();
    return steps;
}

// The reset isn't undone by a read that fails behind it.
Steps resetSteps() {
    Steps steps = {order("A0", ends(0, 0x80000, "..."))};
    for (Step step : lostAlone(wholeSteps())) {
        for (auto& outcome : step.outcomes)
            if (outcome)
                outcome =
                    Outcome{outcome->result,
                            outcome->error,
                            {'+', outcome->seen[9], outcome->seen[10]},
                            outcome->then,
                            outcome->later.empty() ? "" : std::string("++") + outcome->later[10]};
        steps.push_back(step);
    }
    return steps;
}

} // namespace

Steps readOneSteps() { return oneConfigurationSteps(); }

std::vector<Operation> tagReadRows() {
    return {
        {.name = "ReadConfiguration",
         .place = Place::TagReports,
         .calls = {{"ReadCfg", [] { return ReadCfg() + 0LL; }},
                   {"zeltag_ReadCfg", [] { return zeltag_ReadCfg() + 0LL; }}},
         .prepare = prepareRead,
         .sights = kReadSights,
         .steps = wholeSteps(),
         .seen = kGood},
        {.name = "ReadOneConfiguration",
         .place = Place::TagReports,
         .calls = {{"zeltag_ReadCfgOneConfig", [] { return zeltag_ReadCfgOneConfig() + 0LL; }}},
         .prepare = prepareRead,
         .sights = kReadSights,
         .steps = oneConfigurationSteps(),
         .seen = kGood},
        {.name = "FactoryReset",
         .place = Place::TagReports,
         .calls = {{"ResetFactoryDflts", [] { return ResetFactoryDflts() + 0LL; }},
                   {"zeltag_ResetFactoryDflts", [] { return zeltag_ResetFactoryDflts() + 0LL; }}},
         .prepare = prepareRead,
         .sights = {{"the reader's block 0",
                     [] { return shown(apparatus().tag->committed().configuration[0].block[0]); }},
                    kReadSights[9],
                    kReadSights[10]},
         .steps = resetSteps(),
         .seen = "++."}};
}

} // namespace zel::test::steps
