// SPDX-License-Identifier: MIT
// The pauses that the simulated reader demands, and its record of commands that come too early.
#include "tests/sim/simulated_reader.h"
#include "tests/support/virtual_time.h"

#include <optional>

using namespace zel::sim;
using zel::test::SpokenReader;
using zel::test::wait;

namespace {

using Block = TagReader::Block;

// Violations of a ping that comes so many microseconds after what `work` tells the reader.
template <typename Work>
int violationsAfter(const TagReader::Options& options, std::uint64_t pause, const Work& work) {
    SpokenReader reader(options);
    work(reader);
    wait(pause);
    reader.query({0x8A});
    return reader.violations();
}

const TagReader::Options kSlow = {};
const TagReader::Options kWithVolume = {.volume = std::uint8_t{0}};
const TagReader::Options kTagPlus = {.tagPlusConfigurations = 3};

void commit(SpokenReader& reader) { reader.command({0x90, 0x01}); }
void commitNothing(SpokenReader& reader) { reader.command({0x90, 0x00}); }
void reset(SpokenReader& reader) { reader.command({0xA0}); }
void writeCardType(SpokenReader& reader) { reader.write({0x84}, {0, 4, 0x12, 1}); }
void moveSet(SpokenReader& reader) { reader.query({0x89, 0x82, 1, 2, 0, 0xFF}); }

} // namespace

TEST(SimulatedPause, OfACommitIs1200MillisecondsOnASlowReader) {
    EXPECT_EQ(violationsAfter(kSlow, 1'199'999, commit), 1);
    EXPECT_EQ(violationsAfter(kSlow, 1'200'000, commit), 0);
}

TEST(SimulatedPause, OfACommitIs20MillisecondsOnAReaderWithVolume) {
    EXPECT_EQ(violationsAfter(kWithVolume, 19'999, commit), 1);
    EXPECT_EQ(violationsAfter(kWithVolume, 20'000, commit), 0);
}

TEST(SimulatedPause, OfACommitIs20MillisecondsOnATagPlusReader) {
    EXPECT_EQ(violationsAfter(kTagPlus, 19'999, commit), 1);
    EXPECT_EQ(violationsAfter(kTagPlus, 20'000, commit), 0);
}

TEST(SimulatedPause, OfACommitOfNothingIsTheSame) {
    EXPECT_EQ(violationsAfter(kSlow, 1'199'999, commitNothing), 1);
    EXPECT_EQ(violationsAfter(kSlow, 1'200'000, commitNothing), 0);
}

TEST(SimulatedPause, OfAFactoryResetIs1200MillisecondsOnEveryReader) {
    EXPECT_EQ(violationsAfter(kSlow, 1'199'999, reset), 1);
    EXPECT_EQ(violationsAfter(kTagPlus, 1'199'999, reset), 1);
    EXPECT_EQ(violationsAfter(kTagPlus, 1'200'000, reset), 0);
}

TEST(SimulatedPause, OfACardTypeIs10Milliseconds) {
    EXPECT_EQ(violationsAfter(kTagPlus, 9'999, writeCardType), 1);
    EXPECT_EQ(violationsAfter(kTagPlus, 10'000, writeCardType), 0);
}

TEST(SimulatedPause, OfAMovedSetIs100Milliseconds) {
    EXPECT_EQ(violationsAfter(kTagPlus, 99'999, moveSet), 1);
    EXPECT_EQ(violationsAfter(kTagPlus, 100'000, moveSet), 0);
}

TEST(SimulatedPause, IsNotNeededBehindARefusedMove) {
    EXPECT_EQ(violationsAfter(kSlow, 0, moveSet), 0);
}

TEST(SimulatedPause, IsNotNeededBehindOtherWrites) {
    EXPECT_EQ(violationsAfter(kSlow, 0, [](SpokenReader& r) { r.write({0x80}, {1}); }), 0);
    EXPECT_EQ(violationsAfter(kSlow, 0, [](SpokenReader& r) { r.write({0x8A}, {0, 1}); }), 0);
    EXPECT_EQ(violationsAfter(kSlow, 0, [](SpokenReader& r) { r.query({0x84}); }), 0);
}

TEST(SimulatedPause, LetsTheVolumeBeAskedForBehindACommit) {
    EXPECT_EQ(violationsAfter(kSlow, 1'200'000,
                              [](SpokenReader& r) {
                                  commit(r);
                                  r.query({0x8C, 6});
                              }),
              0);
}

TEST(SimulatedPause, IsNotNeededBehindTheCommitOfAReference) {
    const auto transfer = [](SpokenReader& reader) {
        reader.query({0x89, 0x90, 0, 0, 1, 9, 0});
        reader.query({0x89, 0x90, 0, 0xFF});
        commitNothing(reader);
    };
    EXPECT_EQ(violationsAfter(kTagPlus, 0, transfer), 0);
    EXPECT_EQ(violationsAfter(kTagPlus, 0,
                              [&](SpokenReader& reader) {
                                  transfer(reader);
                                  commitNothing(reader);
                              }),
              1)
        << "a second commit is one of its own";
}

TEST(SimulatedPause, OfTheLongerOfTwoWorksCounts) {
    EXPECT_EQ(violationsAfter(kTagPlus, 1'199'999,
                              [](SpokenReader& r) {
                                  reset(r);
                                  commit(r);
                              }),
              2)
        << "the commit and the ping";
}

TEST(SimulatedPause, EndsWithALossOfPower) {
    EXPECT_EQ(violationsAfter(kSlow, 0,
                              [](SpokenReader& r) {
                                  commit(r);
                                  r.powerUp();
                              }),
              0);
}

TEST(SimulatedPause, EndsWhenTheClockIsSetBack) {
    SpokenReader reader;
    commit(reader);
    zel::test::setVirtualMicroseconds(zel::test::virtualMicroseconds() - 1);
    reader.query({0x8A});
    EXPECT_EQ(reader.violations(), 0);
}

TEST(SimulatedPause, ThatIsTooShortIsToldButTheCommandIsAnswered) {
    SpokenReader reader(kTagPlus);
    writeCardType(reader);
    wait(4'000);
    EXPECT_EQ(reader.query({0x89, 0x81, 2}), (Block{0x89, 0x81}));
    EXPECT_EQ(reader.violations(), 1);
    EXPECT_EQ(reader.lastViolation(), "multi: select 2, 6000 us too early");
    EXPECT_EQ(reader.takeRemark(), "too early");
    EXPECT_EQ(reader.takeRemark(), "") << "said once";
}
