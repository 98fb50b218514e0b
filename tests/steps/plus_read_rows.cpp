// SPDX-License-Identifier: MIT
// Two configurations read from a TagPlus reader on USB, the second one first. The texts are left
// out here: they fail as those of a plain reader do.
#include "family/tag/read_config.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

#include <algorithm>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kReadFailed = 0x20000;

std::string lengthsOf(int n) {
    return shownWords({config(n).sIDDispParms.iFACDispLen, config(n).sIDDispParms.iIDDispLen});
}

// A block of each configuration, the one that is active in the library and in the reader, the
// state, the card types.
const std::vector<Sight> kSights = {
    {"configuration 1", [] { return lengthsOf(1); }},
    {"configuration 0", [] { return lengthsOf(0); }},
    {"active in the library", [] { return shownWords({record().iActConfig}); }},
    {"active in the reader",
     [] { return shownWords({static_cast<long long>(apparatus().tag->activeConfiguration())}); }},
    {"state", [] { return shownWords({record().iTagPlusState}); }},
    {"card types", [] { return shownObject(record().CardTypeList); }}};
const std::string kGood = "++...+";

void prepare() {
    for (const int n : {0, 1}) {
        fillReader(static_cast<std::size_t>(n));
        ageRecord(n);
        apparatus().tag->configuration(static_cast<std::size_t>(n)).page = {};
    }
    apparatus().tag->configuration(1).block[0][1] = 7;
    std::ranges::fill(record().CardTypeList, std::uint16_t{0x7707});
}

const std::vector<std::string> kBlocks = {"8A", "80", "81", "82", "83", "85000010"};
const std::vector<std::string> kTexts = {"8C040700", "8C040701", "8C040702", "8C040703", "8C040704",
                                         "8C040705", "8C040706", "8C040707", "8C040400", "8C040401",
                                         "8C040402", "8C0100",   "8C0101",   "8C0102"};
const std::string kTypes = "890400? 890401? ";

std::string oneRead() { return asked(kBlocks) + asked(kTexts); }

Outcome good() { return passes(1, 0, kGood); }

// Blocks that end the read; what is short or all ones is taken as it comes, and for the length of
// the identifier that shows.
Steps blockSteps(const std::string& none, const std::string& some, const std::string& other,
                 const std::string& then) {
    Steps steps;
    for (const std::string& block : kBlocks) {
        const bool isFirst = block == "8A" || block == "80";
        const Outcome stops = ends(0, kReadFailed, isFirst ? none : some, then);
        const Outcome taken = good();
        const Outcome ones = block == "80" ? passes(1, 0, other) : good();
        steps.push_back(block == "85000010" ? query(block, stops, good(), good(), good())
                                            : query(block, stops, taken, ones));
    }
    for (const std::string& text : kTexts)
        steps.push_back({text + '?'});
    return steps;
}

// The card type isn't needed for a read.
Step cardTypeStep() { return query("84", good(), good(), good()); }

// The second configuration. A reader that isn't told to move is read as the first one twice. Where
// the probe's question is lost, the rest is read as of a plain reader, from where it stands; where
// the reply is, the reader is found to be a TagPlus one again on the way to the first
// configuration, but by then that is passed. A reply without the number of configurations lets what
// is read of the second one go to the first one's record.
Steps secondSteps() {
    const std::string again = oneRead() + "8901? 84? " + oneRead() + "898100? " + kTypes;
    const Outcome lostReply = ends(1, 0, "+....+", again);
    Steps steps = {query("898101", passes(1, 0, ".+...+"), good(), good(), good()),
                   query("8901", lasting(ends(1, 0, "+.!!!.", oneRead() + oneRead()), "+.!!!."),
                         lostReply, ends(1, 0, "+!...+", again), lostReply),
                   cardTypeStep()};
    steps += blockSteps(".....+", "+....+", "!+...+", "898100? 898100? " + kTypes);
    return steps;
}

Steps firstSteps() {
    const Outcome unsettled = ends(1, 0, "++..0.", oneRead());
    Steps steps = {query("898100", passes(1, 0, "+....+"), good(), good(), good()),
                   query("8901", lasting(ends(1, 0, "++..!.", oneRead()), "++..!."), unsettled,
                         unsettled, unsettled),
                   cardTypeStep()};
    steps += blockSteps("+....+", "++...+", "+!...+", "898100? " + kTypes);
    return steps;
}

Steps typeSteps() {
    const Outcome some = passes(1, 0, "++...!");
    return {query("898100", good(), good(), good()),
            query("890400", some, ends(1, 0, "++...0"), ends(1, 0, "++...!"), some),
            query("890401", ends(1, 0, "++...!", "890402?"), ends(1, 0, "++...!"), good(),
                  ends(1, 0, "++...!", "890402?"))};
}

Steps allSteps() {
    Steps steps = secondSteps();
    steps += firstSteps();
    steps += typeSteps();
    return steps;
}

} // namespace

std::vector<Operation> plusReadRows() {
    return {{.name = "ReadTwoConfigurations",
             .place = Place::PlusReports,
             .calls = {{"ReadCfg", [] { return ReadCfg() + 0LL; }},
                       {"zeltag_ReadCfg", [] { return zeltag_ReadCfg() + 0LL; }}},
             .prepare = prepare,
             .sights = kSights,
             .steps = allSteps(),
             .seen = kGood}};
}

} // namespace zel::test::steps
