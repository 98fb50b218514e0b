// SPDX-License-Identifier: MIT
// Two configurations written to a TagPlus reader on USB, the second one first, a block of each. A
// failure ends the writes, but the reader is still led back to the first configuration.
#include "family/tag/write_config.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

namespace zel::test::steps {

namespace {

constexpr std::int64_t kNoVolume = 0x1000000;

template <std::size_t Configuration> std::string inReader() {
    return shown(apparatus().tag->configuration(Configuration).block[1]);
}

// The block of each configuration in the reader, the marks of each, and the configurations that are
// active in the library and in the reader.
const std::vector<Sight> kSights = {
    {"configuration 1", inReader<1>},
    {"configuration 0", inReader<0>},
    {"marks 1", [] { return shownWords({config(1).bDirtyTime}); }},
    {"marks 0", [] { return shownWords({config(0).bDirtyTime}); }},
    {"active in the library", [] { return shownWords({record().iActConfig}); }},
    {"active in the reader",
     [] { return shownWords({static_cast<long long>(apparatus().tag->activeConfiguration())}); }}};
const std::string kGood = "++++..";

void mark() { config(0).bDirtyTime = config(1).bDirtyTime = 1; }

void prepare() {
    config(0).sTimeParms.iIDHoldTO = 500;
    config(1).sTimeParms.iIDHoldTO = 750;
    mark();
}

// What a write tells is forgotten with the question for its pause, that question's own failure with
// the next write.
Outcome good(std::int64_t error = 0) { return passes(1, error, kGood); }

Outcome stops(const std::string& seen, const std::string& then) { return ends(0, 0, seen, then); }

// A card type that isn't taken, ahead of the blocks or behind them, is passed over.
Steps oneSteps(const std::string& select, const std::string& before, const std::string& written,
               const std::string& then, std::int64_t lastError) {
    const Outcome notMoved = stops(before, then);
    return {query(select, notMoved, good(), notMoved),
            write("84", good()),
            write("81", stops(before, "8C06? " + then)),
            write("84", good()),
            order("9002", stops(written, "8C06? " + then)),
            query("8C06", good(lastError), good(), good())};
}

Steps allSteps() {
    Steps steps = oneSteps("898101", "......", "+.....", "898100? 898100?", 0);
    steps += oneSteps("898100", "+.+...", "+++...", "898100?", kNoVolume);
    steps.push_back(query("898100", good(), good(), good()));
    return steps;
}

} // namespace

std::vector<Operation> plusWriteRows() {
    return {{.name = "WriteTwoConfigurations",
             .place = Place::PlusReports,
             .calls = {{"WriteCfg", [] { return WriteCfg() + 0LL; }},
                       {"zeltag_WriteCfg", [] { return zeltag_WriteCfg() + 0LL; }}},
             .prepare = prepare,
             .sights = kSights,
             .steps = allSteps(),
             .again = mark,
             .seen = kGood}};
}

} // namespace zel::test::steps
