// SPDX-License-Identifier: MIT
// The simulated reader keeps the key blobs it is sent, hands them back, and fails on a chosen
// chunk.
#include "sim/tag/blobs.h"
#include "tests/sim/simulated_reader.h"
#include "tests/support/virtual_time.h"

using namespace zel::sim;
using zel::test::SpokenReader;
using zel::test::wait;
using Block = TagReader::Block;

namespace {

constexpr Block kOpen = {0x89, 0x90, 0, 0, 0x10, 7, 5, 0xA5};
constexpr Block kChunk1 = {0x89, 0x90, 0, 1, 1, 2, 3, 4};
constexpr Block kChunk2 = {0x89, 0x90, 0, 2, 5};
constexpr Block kSave = {0x89, 0x90, 0, 0xFF};
constexpr Block kCommit = {0x90};
constexpr Block kSelect = {0x89, 0x10, 0, 0, 0x10, 7, 5, 0xA5};
constexpr Block kRead1 = {0x89, 0x10, 0, 1};

class SimulatedBlob : public ::testing::Test {
protected:
    void writeBlob() {
        for (const Block& report : {kOpen, kChunk1, kChunk2, kSave})
            reader_.query(report);
    }
    void commitLater() {
        wait(500'000);
        reader_.command(kCommit);
    }

    SpokenReader reader_{TagReader::Options{.tagPlusConfigurations = 2}};
    const TagBlob blob_{0x10, 7, 5, {1, 2, 3, 4, 5, 0, 0, 0}, true, 0xA5};
};

} // namespace

TEST_F(SimulatedBlob, IsEchoedChunkByChunkAndKept) {
    EXPECT_EQ(reader_.query(kOpen), (Block{0x89, 0x90}));
    EXPECT_EQ(reader_.query(kChunk1), (Block{0x89, 0x90, 0, 1}));
    EXPECT_EQ(reader_.query(kChunk2), (Block{0x89, 0x90, 0, 2}));
    EXPECT_FALSE(reader_.blobs().at(0).isClosed);
    EXPECT_EQ(reader_.query(kSave), (Block{0x89, 0x90, 0, 0xFF}));
    EXPECT_EQ(reader_.blobs(), std::vector<TagBlob>{blob_});
    EXPECT_TRUE(reader_.references().empty());
}

TEST_F(SimulatedBlob, IsReadBackByKindAndNumber) {
    writeBlob();
    EXPECT_EQ(reader_.query(kSelect), kSelect);
    EXPECT_EQ(reader_.query(kRead1), (Block{0x89, 0x10, 0, 1, 1, 2, 3, 4}));
    EXPECT_EQ(reader_.query({0x89, 0x10, 0, 2}), (Block{0x89, 0x10, 0, 2, 5}));
    EXPECT_EQ(reader_.query({0x89, 0x10, 0, 3}), (Block{0x89, 0x10, 0, 3})) << "past its end";
    EXPECT_EQ(reader_.query({0x89, 0x10, 0, 0, 0x10, 8, 5}), Block{}) << "another number";
    EXPECT_EQ(reader_.query({0x89, 0x10, 0, 0, 0x11, 7, 5}), Block{}) << "another kind";
    EXPECT_EQ(reader_.query(kRead1), Block{}) << "nothing is selected";
}

TEST_F(SimulatedBlob, ThatCameLaterIsTheOneRead) {
    writeBlob();
    reader_.query(kOpen);
    reader_.query({0x89, 0x90, 0, 1, 9, 9, 9, 9});
    reader_.query(kSelect);
    EXPECT_EQ(reader_.query(kRead1), (Block{0x89, 0x10, 0, 1, 1, 2, 3, 4})) << "not saved yet";
    reader_.query(kSave);
    reader_.query(kSelect);
    EXPECT_EQ(reader_.query(kRead1), (Block{0x89, 0x10, 0, 1, 9, 9, 9, 9}));
}

TEST_F(SimulatedBlob, OfAReferenceIsReadBackToo) {
    reader_.query({0x89, 0x90, 0, 0, 1, 7, 4});
    reader_.query(kChunk1);
    reader_.query(kSave);
    EXPECT_EQ(reader_.query({0x89, 0x10, 0, 0, 1, 7, 4}), (Block{0x89, 0x10, 0, 0, 1, 7, 4}));
    EXPECT_EQ(reader_.query(kRead1), (Block{0x89, 0x10, 0, 1, 1, 2, 3, 4}));
}

TEST_F(SimulatedBlob, OutlivesALossOfPowerWhenItWasCommitted) {
    writeBlob();
    reader_.powerUp();
    EXPECT_TRUE(reader_.blobs().empty());
    writeBlob();
    commitLater();
    reader_.powerUp();
    EXPECT_EQ(reader_.blobs(), std::vector<TagBlob>{blob_});
    EXPECT_EQ(reader_.query(kRead1), Block{}) << "nothing is selected";
    EXPECT_EQ(reader_.query(kChunk1), Block{}) << "nothing is open";
}

TEST_F(SimulatedBlob, NeedsHalfASecondBehindItsSave) {
    writeBlob();
    wait(499'999);
    reader_.command(kCommit);
    EXPECT_EQ(reader_.violations(), 1);
    EXPECT_EQ(reader_.lastViolation(), "commit, 1 us too early");
}

TEST_F(SimulatedBlob, NeedsNoPauseBehindItsCommit) {
    writeBlob();
    commitLater();
    reader_.query(kOpen);
    EXPECT_EQ(reader_.violations(), 0);
}

TEST_F(SimulatedBlob, NeedsNoPauseBehindASaveThatIsRefused) {
    reader_.query(kSave);
    reader_.query(kOpen);
    EXPECT_EQ(reader_.violations(), 0);
}

TEST_F(SimulatedBlob, ChunkThatIsRefusedChangesNothing) {
    reader_.failBlobChunk(1, BlobFault::Refused);
    reader_.query(kOpen);
    EXPECT_FALSE(reader_.take(0, kChunk1));
    EXPECT_TRUE(reader_.blobs().at(0).data.empty());
    EXPECT_FALSE(reader_.take(0, kRead1)) << "read likewise";
    reader_.failBlobChunk(1, BlobFault::None);
    EXPECT_EQ(reader_.query(kChunk1), (Block{0x89, 0x90, 0, 1}));
}

TEST_F(SimulatedBlob, ChunkWithoutAnAnswerIsTaken) {
    reader_.failBlobChunk(1, BlobFault::NoAnswer);
    reader_.query(kOpen);
    EXPECT_TRUE(reader_.take(0, kChunk1));
    Block reply = {};
    EXPECT_FALSE(reader_.answer(0, reply));
    EXPECT_EQ(reader_.blobs().at(0).data, (std::vector<std::uint8_t>{1, 2, 3, 4}));
    EXPECT_EQ(reader_.query(kChunk2), (Block{0x89, 0x90, 0, 2}));
}

TEST_F(SimulatedBlob, ChunkWithAWrongEchoIsTaken) {
    for (const std::uint8_t chunk : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{0xFF}})
        reader_.failBlobChunk(chunk, BlobFault::WrongEcho);
    EXPECT_EQ(reader_.query(kOpen), (Block{0x89, 0x90, 0, 1}));
    EXPECT_EQ(reader_.query(kChunk1), (Block{0x89, 0x90, 0, 0}));
    EXPECT_EQ(reader_.query(kSave), (Block{0x89, 0x90, 0, 0xFE}));
    EXPECT_TRUE(reader_.blobs().at(0).isClosed);
    EXPECT_EQ(reader_.query({0x8A}), (Block{0, 0, 0x42, 0x01})) << "another command fails never";
}

TEST_F(SimulatedBlob, IsNamedInATrace) {
    EXPECT_EQ(reader_.nameOf(kOpen), "multi: write blob");
    EXPECT_EQ(reader_.nameOf(kChunk1), "multi: write blob chunk 1");
    EXPECT_EQ(reader_.nameOf(kSave), "multi: save blob");
    EXPECT_EQ(reader_.nameOf(kSelect), "multi: read blob");
    EXPECT_EQ(reader_.nameOf(kRead1), "multi: read blob chunk 1");
    const Block reference = {0x89, 0x90, 0, 0, 2, 7};
    EXPECT_EQ(reader_.nameOf(reference), "multi: file reference 7");
    reader_.query(reference);
    EXPECT_EQ(reader_.nameOf(kChunk1), "multi: reference page 1");
    EXPECT_EQ(reader_.nameOf(kSave), "multi: reference end");
    EXPECT_EQ(reader_.nameOf(Block{0x89, 0x01}), "multi: query");
}

TEST(SimulatedPlainReader, HasNoBlobs) {
    SpokenReader reader;
    EXPECT_EQ(reader.query(kOpen), Block{});
    EXPECT_EQ(reader.query(kSelect), Block{});
    EXPECT_TRUE(reader.blobs().empty());
}
