// SPDX-License-Identifier: MIT
// Key blobs go to the reader and come back four bytes a report; what fails, and what is passed
// over.
#include "firmware/key_blobs.h"
#include "tests/support/library_test.h"

#include <algorithm>
#include <array>
#include <climits>
#include <new>
#include <numeric>

using namespace zel::test;
using zel::firmware::readSecure;
using zel::firmware::writeSecure;
using zel::sim::BlobFault;
using zel::sim::TagBlob;

namespace {

constexpr std::int64_t kBlobFailed = 0x81000000;
constexpr int kSendTries = 6;

const std::string kHeaderOut = "> 89 90 00 00 10 07 05 00  multi: write blob\n"
                               "< 89 90 00 00 00 00 00 00\n";
const std::string kChunksOut = "> 89 90 00 01 01 02 03 04  multi: write blob chunk 1\n"
                               "< 89 90 00 01 00 00 00 00\n"
                               "> 89 90 00 02 05 00 00 00  multi: write blob chunk 2\n"
                               "< 89 90 00 02 00 00 00 00\n";
const std::string kSaved = "> 89 90 00 FF 00 00 00 00  multi: save blob\n"
                           "< 89 90 00 FF 00 00 00 00\n"
                           "~ 500 ms\n"
                           "> 90 00 00 00 00 00 00 00  commit\n";
const std::string kHeaderIn = "> 89 10 00 00 10 07 05 00  multi: read blob\n"
                              "< 89 10 00 00 10 07 05 00\n";

struct Outcome {
    int result;
    std::int64_t error;
    bool operator==(const Outcome&) const = default;
};

using Output = std::array<unsigned char, 12>;
constexpr unsigned char kOld = 0xEE; // what the output held before

class KeyBlobs : public LibraryTest {
protected:
    KeyBlobs() {
        reader_ = connectReader({.tagPlusConfigurations = 2});
        output_.fill(kOld);
        DevDat[0].lLastErr = 0x55;
    }

    // Holds the blob, saved and committed.
    void hold() {
        EXPECT_EQ(writeSecure().WriteSecureData(blob_, 9), 1);
        bus().takeTrace();
        DevDat[0].lLastErr = 0x55;
    }

    static Outcome outcomeOf(int result) { return {result, DevDat[0].lLastErr}; }
    Outcome write(int size = 9) { return outcomeOf(writeSecure().WriteSecureData(blob_, size)); }
    Outcome read() { return outcomeOf(readSecure().readSecureData(blob_, output_.data())); }

    // The n-th exchange fails for good: a send is tried six times, a fetch once.
    static void failExchange(int n) { bus().failExchange(0, n, n % 2 == 1 ? kSendTries : 1); }
    static bool isSent(const std::string& report) {
        return bus().takeTrace().find(report) != std::string::npos;
    }

    std::shared_ptr<zel::sim::TagReader> reader_;
    unsigned char blob_[4 + 255] = {0x10, 7, 5, 0, 1, 2, 3, 4, 5};
    Output output_;
};

constexpr Outcome kGood = {1, 0};

} // namespace

TEST_F(KeyBlobs, OfFiveBytesIsAHeaderTwoChunksASaveAndACommitHalfASecondLater) {
    EXPECT_EQ(write(), kGood);
    EXPECT_EQ(bus().takeTrace(), kHeaderOut + kChunksOut + kSaved);
    EXPECT_EQ(reader_->blobs(),
              (std::vector<TagBlob>{{0x10, 7, 5, {1, 2, 3, 4, 5, 0, 0, 0}, true}}));
}

TEST_F(KeyBlobs, PassesTheFourthHeaderByteOnAsItStands) {
    blob_[3] = 0xA5;
    EXPECT_EQ(write(), kGood);
    EXPECT_EQ(reader_->blobs().at(0).fourth, 0xA5);
}

TEST_F(KeyBlobs, OfTheMostBytesIs64Chunks) {
    std::iota(blob_ + 4, std::end(blob_), std::uint8_t{1});
    blob_[2] = 255;
    EXPECT_EQ(write(259), kGood);
    std::vector<std::uint8_t> data(blob_ + 4, std::end(blob_));
    data.push_back(0);
    EXPECT_EQ(reader_->blobs().at(0).data, data);
    EXPECT_TRUE(isSent("> 89 90 00 40 FD FE FF 00  multi: write blob chunk 64\n"));
}

TEST_F(KeyBlobs, OfAnotherSizeThanItsHeaderTellsSendsNothingAndLeavesTheErrorWord) {
    for (const int size : {8, 10, 4, 3, 0, -1, 265, INT_MAX, INT_MIN})
        EXPECT_EQ(write(size), (Outcome{0, 0x55})) << size;
    const std::vector<unsigned char> cut = {0x10, 7};
    EXPECT_EQ(writeSecure().WriteSecureData(cut.data(), 2), 0) << "its length byte isn't there";
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(KeyBlobs, WithoutDataIsAHeaderAloneAndNotSaved) {
    blob_[2] = 0;
    EXPECT_EQ(write(4), (Outcome{0, 0}));
    EXPECT_EQ(bus().takeTrace(), "> 89 90 00 00 10 07 00 00  multi: write blob\n"
                                 "< 89 90 00 00 00 00 00 00\n");
}

TEST_F(KeyBlobs, WriteThatFailsAtAnyStep) {
    const Outcome failed{0, kBlobFailed};
    const Outcome quiet{0, 0};
    // The header, two chunks, the save: out and in; the commit. Without a header the reader takes
    // no chunk; a reply that doesn't come is passed over but for the save's.
    const Outcome expected[] = {quiet, kGood, failed, kGood, failed, kGood, failed, quiet, failed};
    int exchange = 0;
    for (const Outcome& outcome : expected) {
        failExchange(++exchange);
        EXPECT_EQ(write(), outcome) << exchange << " gave error " << DevDat[0].lLastErr;
        bus().failExchange(0, 1, 0);
        reader_->powerUp();
    }
    bus().takeTrace();
    failExchange(10);
    EXPECT_EQ(write(), kGood) << "there is no tenth";
}

TEST_F(KeyBlobs, SendTheDataThoughTheHeaderCouldNotBeSent) {
    failExchange(1);
    write();
    EXPECT_TRUE(isSent("multi: write blob chunk 2"));
}

TEST_F(KeyBlobs, HeaderToldByItselfSetsAnErrorWordForTheReplyOnly) {
    const auto header = [this] { return outcomeOf(writeSecure().WriteSecureHeader(blob_)); };
    EXPECT_EQ(header(), kGood);
    EXPECT_EQ(bus().takeTrace(), kHeaderOut);
    reader_->failBlobChunk(0, BlobFault::Refused);
    EXPECT_EQ(header(), (Outcome{0, 0}));
    reader_->failBlobChunk(0, BlobFault::NoAnswer);
    EXPECT_EQ(header(), (Outcome{0, kBlobFailed}));
    reader_->failBlobChunk(0, BlobFault::WrongEcho);
    EXPECT_EQ(header(), (Outcome{0, 0}));
}

TEST_F(KeyBlobs, AreWrittenWhenOneChunkIsAcknowledged) {
    for (const BlobFault fault : {BlobFault::WrongEcho, BlobFault::NoAnswer})
        for (const std::uint8_t chunk : {std::uint8_t{1}, std::uint8_t{2}}) {
            SCOPED_TRACE(::testing::Message()
                         << "fault " << static_cast<int>(fault) << " chunk " << int{chunk});
            reader_->failBlobChunk(chunk, fault);
            EXPECT_EQ(write(), kGood);
            reader_->failBlobChunk(chunk, BlobFault::None);
        }
}

TEST_F(KeyBlobs, AreNotSavedWhenNoChunkIsAcknowledged) {
    for (const BlobFault fault : {BlobFault::WrongEcho, BlobFault::NoAnswer}) {
        SCOPED_TRACE(static_cast<int>(fault));
        reader_->failBlobChunk(1, fault);
        reader_->failBlobChunk(2, fault);
        EXPECT_EQ(write(), (Outcome{0, 0}));
        EXPECT_FALSE(isSent("multi: save blob"));
    }
}

TEST_F(KeyBlobs, EndAtAChunkThatCannotBeSent) {
    reader_->failBlobChunk(1, BlobFault::Refused);
    EXPECT_EQ(write(), (Outcome{0, kBlobFailed}));
    EXPECT_FALSE(isSent("multi: write blob chunk 2"));
}

TEST_F(KeyBlobs, AreNotCommittedWithoutTheEchoOfTheSave) {
    for (const BlobFault fault : {BlobFault::WrongEcho, BlobFault::NoAnswer, BlobFault::Refused}) {
        SCOPED_TRACE(static_cast<int>(fault));
        takePausedMicroseconds();
        reader_->failBlobChunk(0xFF, fault);
        EXPECT_EQ(write(), (Outcome{0, fault == BlobFault::Refused ? kBlobFailed : 0}));
        EXPECT_EQ(takePausedMicroseconds(), fault == BlobFault::Refused ? 480'000U : 0U);
        EXPECT_FALSE(isSent("commit"));
        reader_->powerUp();
    }
}

TEST_F(KeyBlobs, ReadBackIsTheHeaderThenItsChunksEachStoredWhole) {
    hold();
    EXPECT_EQ(read(), kGood);
    EXPECT_EQ(bus().takeTrace(), kHeaderIn + "> 89 10 00 01 00 00 00 00  multi: read blob chunk 1\n"
                                             "< 89 10 00 01 01 02 03 04\n"
                                             "> 89 10 00 02 00 00 00 00  multi: read blob chunk 2\n"
                                             "< 89 10 00 02 05 00 00 00\n");
    EXPECT_EQ(output_, (Output{1, 2, 3, 4, 5, 0, 0, 0, kOld, kOld, kOld, kOld}));
}

TEST_F(KeyBlobs, ReadWithoutDataIsTheHeaderAlone) {
    hold();
    blob_[2] = 0;
    EXPECT_EQ(read(), kGood);
    EXPECT_EQ(bus().takeTrace(), "> 89 10 00 00 10 07 00 00  multi: read blob\n"
                                 "< 89 10 00 00 10 07 00 00\n");
    EXPECT_EQ(output_[0], kOld);
}

TEST_F(KeyBlobs, ReadThatFailsAtAnyStep) {
    hold();
    struct Step {
        Outcome outcome;
        Output output; // the first five bytes are cleared before the first chunk
    };
    const Output untouched = {kOld, kOld, kOld, kOld, kOld, kOld,
                              kOld, kOld, kOld, kOld, kOld, kOld};
    const Output nothing = {0, 0, 0, 0, 0, kOld, kOld, kOld, kOld, kOld, kOld, kOld};
    const Output first = {1, 2, 3, 4, 0, kOld, kOld, kOld, kOld, kOld, kOld, kOld};
    const Output second = {5, 0, 0, 0, 0, kOld, kOld, kOld, kOld, kOld, kOld, kOld};
    const Step expected[] = {{{0, kBlobFailed}, untouched}, {{0, 0}, untouched},
                             {{1, kBlobFailed}, nothing},   {{1, 0}, second},
                             {{1, kBlobFailed}, first},     {{1, 0}, first}};
    int exchange = 0;
    for (const Step& step : expected) {
        output_.fill(kOld);
        failExchange(++exchange);
        EXPECT_EQ(read(), step.outcome) << exchange;
        EXPECT_EQ(output_, step.output) << exchange;
        bus().failExchange(0, 1, 0);
    }
}

TEST_F(KeyBlobs, ReadWithAWrongEchoMovesTheNextChunkUp) {
    hold();
    reader_->failBlobChunk(1, BlobFault::WrongEcho);
    EXPECT_EQ(read(), kGood);
    EXPECT_EQ(output_, (Output{5, 0, 0, 0, 0, kOld, kOld, kOld, kOld, kOld, kOld, kOld}));
}

TEST_F(KeyBlobs, ReadNeedsAnEchoOfAllEightBytesOfTheHeader) {
    hold();
    for (std::size_t byte = 0; byte < 8; ++byte) {
        zel::sim::TagBlock reply = {0x89, 0x10, 0, 0, 0x10, 7, 5, 0};
        reply[byte] ^= 0x80;
        reader_->replyWith({0x89, 0x10, 0, 0}, reply);
        EXPECT_EQ(read(), (Outcome{0, 0})) << byte;
    }
    EXPECT_FALSE(isSent("chunk"));
}

TEST_F(KeyBlobs, AnyOfTheFirstFourBytesTellsAWrongEchoOfAChunk) {
    for (std::size_t byte = 0; byte < 8; ++byte) {
        zel::sim::TagBlock reply = {0x89, 0x90, 0, 1};
        reply[byte] ^= 0x80;
        reader_->replyWith({0x89, 0x90, 0, 1}, reply);
        EXPECT_EQ(writeSecure().WriteKeyData(blob_ + 4, 4), byte < 4 ? 0 : 1) << byte;
    }
}

TEST_F(KeyBlobs, DataByItselfTellsWhetherAnyChunkCame) {
    hold();
    ASSERT_EQ(readSecure().readSecureHeader(blob_), 1);
    EXPECT_EQ(readSecure().readKeyData(output_.data(), 5), 1);
    reader_->failBlobChunk(1, BlobFault::NoAnswer);
    EXPECT_EQ(readSecure().readKeyData(output_.data(), 4), 0);
    EXPECT_EQ(readSecure().readKeyData(output_.data(), 0), 0);
}

TEST_F(KeyBlobs, DataThatNoHeaderCanTellIsRefusedAndNothingIsSent) {
    for (const int length : {256, 1 << 30, -1, -(1 << 30)}) {
        EXPECT_EQ(readSecure().readKeyData(output_.data(), length), 0) << length;
        EXPECT_EQ(writeSecure().WriteKeyData(blob_, length), 0) << length;
    }
    EXPECT_EQ(output_[0], kOld);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(KeyBlobs, LeaveNothingInTheObjectThatMovedThem) {
    alignas(writeSecure) unsigned char storage[sizeof(writeSecure)];
    auto* const object = new (storage) writeSecure;
    EXPECT_EQ(object->WriteSecureData(blob_, 9), 1);
    EXPECT_EQ(object->WriteKeyData(blob_ + 4, 5), 0) << "the reader was told no header";
    object->~writeSecure();
    EXPECT_EQ(std::count(std::begin(storage), std::end(storage), 0),
              std::ptrdiff_t{sizeof storage});
}
