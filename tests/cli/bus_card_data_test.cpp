// SPDX-License-Identifier: MIT
// `zeltag read` beyond the plain identifier: whole, queued, and the card's data.
#include "tests/cli/command_line_test.h"

#include <nlohmann/json.hpp>
#include <numeric>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

class BusCardData : public CommandLineTest {
protected:
};

// A byte stands behind the four bits of the identifier.
sim::Card cardWithMore() {
    sim::Card card = sim::cardOf(0xA, 4);
    card.id[31] = 0xEE;
    return card;
}

TEST_F(BusCardData, LongReadPrintsAll32Bytes) {
    plugReader("a")->present(cardWithMore());
    EXPECT_EQ(run({"read", "--long"}),
              (CommandRun{ExitCode::Done, "card    4 bits  0xEE" + std::string(60, '0') + "0A  a\n",
                          ""}));
    EXPECT_EQ(bus().takeTrace().find("> 8F"), std::string::npos);
}

TEST_F(BusCardData, LongReadHasAll32BytesInJson) {
    plugReader("a")->present(cardWithMore());
    const json card = json::parse(run({"read", "--long", "--json"}).out);
    json bytes = json::array({0x0A});
    bytes.insert(bytes.end(), 30, 0);
    bytes.push_back(0xEE);
    EXPECT_EQ(card.at("bits"), 4);
    EXPECT_EQ(card.at("bytes"), bytes);
}

TEST_F(BusCardData, LongReadWaitsAndWatches) {
    plugReader("a")->follow([looks = 0]() mutable {
        if (++looks == 4)
            bus().unplug(0);
        return looks % 2 == 0 ? cardWithMore() : sim::Card{};
    });
    const std::string line = "card    4 bits  0xEE" + std::string(60, '0') + "0A  a\n";
    EXPECT_EQ(run({"read", "--long", "--wait", "60"}).out, line);
    EXPECT_EQ(run({"read", "--long", "--watch"}).exit, ExitCode::Failed);
}

TEST_F(BusCardData, WatchIsLongToo) {
    plugReader("a")->follow([looks = 0]() mutable {
        if (++looks == 2)
            bus().unplug(0);
        return cardWithMore();
    });
    EXPECT_EQ(run({"read", "--long", "--watch"}).out,
              "card    4 bits  0xEE" + std::string(60, '0') + "0A  a\n");
}

sim::QueuedId entry() {
    sim::QueuedId queued;
    queued.id[0] = 0x34;
    queued.id[9] = 0x12;
    queued.age = 0x8001;
    queued.byte2 = 200;
    queued.word3 = -2;
    queued.byte7 = 7;
    return queued;
}

TEST_F(BusCardData, QueuedIdentifierComesWithTheWordsAboutIt) {
    plugReader("a")->queue(entry());
    EXPECT_EQ(run({"read", "--queued"}), (CommandRun{ExitCode::Done,
                                                     "name     a\n"
                                                     "id       0x12000000000000000034\n"
                                                     "age      32769\n"
                                                     "word 32  -2\n"
                                                     "byte 34  200\n"
                                                     "byte 35  7\n",
                                                     ""}));
}

TEST_F(BusCardData, QueuedIdentifierIsAnObjectWithJson) {
    plugReader("a")->queue(entry());
    json bytes = json::array();
    bytes.insert(bytes.end(), 32, 0);
    bytes[0] = 0x34;
    bytes[9] = 0x12;
    const json expected = {{"device", {{"index", 0}, {"name", "a"}}},
                           {"id", "12000000000000000034"},
                           {"decimal", "85002596691653613846580"},
                           {"bytes", bytes},
                           {"age", 32769},
                           {"word_32", -2},
                           {"byte_34", 200},
                           {"byte_35", 7}};
    const CommandRun queued = run({"read", "--queued", "--json"});
    EXPECT_EQ(json::parse(queued.out), expected) << queued.err;
}

TEST_F(BusCardData, LookIntoTheQueueSetsNoFlag) {
    plugReader("a")->queue(entry());
    run({"read", "--queued"});
    EXPECT_NE(bus().takeTrace().find("> 8C 02 04 00 00 00 00 00"), std::string::npos);
}

TEST_F(BusCardData, EmptyQueueIsNothing) {
    sim::QueuedId empty = entry();
    empty.id = {};
    plugReader("a")->queue(empty);
    EXPECT_EQ(run({"read", "--queued"}),
              refused(ExitCode::NothingCame, "nothing is queued on a; "
                                             "hold a card to the reader and try again"));
}

TEST_F(BusCardData, QueueThatCantBeReadTellsTheErrorWord) {
    plugReader("a")->queue(entry());
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies() + 4);
    EXPECT_EQ(run({"read", "--queued"}),
              refused(ExitCode::Failed, "reading the queue of a failed (library error 0x1000000); "
                                        "check its cable, then try `zeltag list`"));
}

sim::Card cardWithData() {
    sim::Card card = sim::cardOf(0xA, 4);
    std::iota(card.data.begin(), card.data.end(), std::uint8_t{0x1C});
    card.data[39] = 0x7F;
    return card;
}

TEST_F(BusCardData, DataIsPrintedABlockALineWithItsText) {
    plugReader("a")->present(cardWithData());
    EXPECT_EQ(run({"read", "--card-data"}), (CommandRun{ExitCode::Done,
                                                        " 0  1C 1D 1E 1F 20 21 22 23  .... !\"#\n"
                                                        " 8  24 25 26 27 28 29 2A 2B  $%&'()*+\n"
                                                        "16  2C 2D 2E 2F 30 31 32 33  ,-./0123\n"
                                                        "24  34 35 36 37 38 39 3A 3B  456789:;\n"
                                                        "32  3C 3D 3E 3F 40 41 42 7F  <=>?@AB.\n",
                                                        ""}));
}

TEST_F(BusCardData, DataIsAnArrayOf40BytesWithJson) {
    const sim::Card card = cardWithData();
    plugReader("a")->present(card);
    const json expected = {{"device", {{"index", 0}, {"name", "a"}}}, {"bytes", card.data}};
    const CommandRun data = run({"read", "--card-data", "--json"});
    EXPECT_EQ(json::parse(data.out), expected) << data.err;
}

TEST_F(BusCardData, FieldWithoutDataIsNothing) {
    plugReader("a");
    EXPECT_EQ(run({"read", "--card-data"}),
              refused(ExitCode::NothingCame, "no card data in a; "
                                             "hold a card to the reader and try again"));
}

TEST_F(BusCardData, DataThatCantBeReadTellsTheErrorWord) {
    plugReader("a")->present(cardWithData());
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies() + 4);
    EXPECT_EQ(run({"read", "--card-data"}),
              refused(ExitCode::Failed,
                      "reading the card data of a failed (library error 0x1000000); "
                      "check its cable, then try `zeltag list`"));
}

} // namespace

} // namespace zel::test
