// SPDX-License-Identifier: MIT
// `zeltag trace` on simulated readers: the form of a trace, and that no secret is in it.
#include "sim/band/reader.h"
#include "sim/tag/stream.h"
#include "tests/cli/command_line_test.h"
#include "tests/cli/files_here.h"
#include "tests/support/bridge_test.h"
#include "tests/support/line_test.h"
#include "tests/support/temporary_folder.h"

#include <fmt/format.h>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr char kMasked[] =
    "zeltag: what cards and keys hold is masked in the trace; --secrets shows it\n";

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// What a card and a queue hold, each byte another one that nothing else in a trace has.
sim::Card secretCard() {
    sim::Card card = sim::cardOf(0xC1C2C3C4C5C6C7C8, 64);
    for (std::size_t i = 0; i < card.data.size(); ++i)
        card.data[i] = static_cast<std::uint8_t>(0xC9 + i);
    return card;
}

// Whether one of the card's bytes stands in the answers of a trace.
bool tellsTheCard(const std::string& trace) {
    std::istringstream lines(trace);
    for (std::string line; std::getline(lines, line);)
        for (int byte = 0xC1; line.starts_with("<") && byte <= 0xF0; ++byte)
            if (line.find(fmt::format(" {:02X}", byte)) != std::string::npos)
                return true;
    return false;
}

using Arguments = std::vector<const char*>;

class Trace : public CommandLineTest {};

TEST_F(Trace, ShowsEachExchangeByNameWithTheIdentifierMasked) {
    plugReader("a")->present(sim::cardOf(0x0A, 4));
    const CommandRun traced = run({"trace", "--", "read"});
    EXPECT_EQ(traced.exit, ExitCode::Done);
    EXPECT_EQ(traced.out, "card    4 bits  0x0A  a\n");
    EXPECT_TRUE(traced.err.starts_with("open a\n> 89 01 00 00 00 00 00 00  multi: query\n<"))
        << traced.err;
    EXPECT_TRUE(traced.err.ends_with(std::string("> 8F 00 00 00 00 00 00 00  identifier\n"
                                                 "< ** ** ** ** ** ** ** **\n"
                                                 "> 8E 00 00 00 00 00 00 00  bit count\n"
                                                 "< 04 00 00 00 00 00 00 00\n"
                                                 "close a\n") +
                                     kMasked))
        << traced.err;
}

TEST_F(Trace, ShowsSecretsOnDemand) {
    plugReader("a")->present(sim::cardOf(0x0A, 4));
    const CommandRun traced = run({"trace", "--secrets", "--", "read"});
    EXPECT_TRUE(contains(traced.err, "identifier\n< 0A 00 00 00 00 00 00 00\n"));
    EXPECT_FALSE(contains(traced.err, "masked"));
}

TEST_F(Trace, TellsFailuresAndThePausesBehindThem) {
    plugReader("a");
    bus().fail(0, sim::Fault::SendRefused, 2, connectReplies());
    const CommandRun traced = run({"trace", "--", "beep", "1"});
    const std::string beep = "> 8C 03 01 00 00 00 00 00  service: beep 1\n";
    EXPECT_TRUE(contains(traced.err,
                         beep + "! not sent\n~ 80 ms\n" + beep + "! not sent\n~ 80 ms\n" + beep))
        << traced.err;
}

TEST_F(Trace, TellsAnAnswerThatDoesNotCome) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies());
    EXPECT_TRUE(contains(run({"trace", "--", "read"}).err, "identifier\n! no answer\n"));
}

TEST_F(Trace, EndsAsTheCommandDoes) {
    EXPECT_EQ(run({"trace", "--", "list"}).exit, ExitCode::NoDevice);
    plugReader("a");
    const CommandRun empty = run({"trace", "--", "read"});
    EXPECT_EQ(empty.exit, ExitCode::NothingCame);
}

TEST_F(Trace, NumbersSeveralDevices) {
    plugReader("a");
    plugReader("b");
    const std::string trace = run({"trace", "--", "list"}).err;
    EXPECT_TRUE(contains(trace, "\n1open b\n")) << trace;
    EXPECT_TRUE(contains(trace, "\n1> 8A 00")) << trace;
}

TEST_F(Trace, GoesToAFileOnDemand) {
    plugReader("a");
    const TemporaryFolder folder;
    const CommandRun traced = run({"trace", "--output", "trace.txt", "--", "ping"});
    EXPECT_FALSE(contains(traced.err, "open a"));
    EXPECT_TRUE(filesHere().at("trace.txt").starts_with("open a\n"));
}

TEST_F(Trace, RefusesAFileThatCannotBeWritten) {
    EXPECT_EQ(run({"trace", "--output", "/nowhere/x", "--", "ping"}),
              cantWrite("/nowhere/x", "No such file or directory"));
}

TEST_F(Trace, RefusesToTraceItself) {
    EXPECT_EQ(run({"trace", "--", "trace", "--", "list"}),
              refused(ExitCode::Usage, "a trace can't be traced; name the command that matters"));
}

TEST_F(Trace, IsAnObjectALineWithJson) {
    plugReader("a")->present(sim::cardOf(0x0A, 4));
    const CommandRun traced = run({"trace", "--json", "--", "read"});
    std::istringstream lines(traced.err);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, R"({"event":"open","device":"a","text":"a"})");
    std::getline(lines, line);
    EXPECT_EQ(line, R"({"event":"send","device":"a","text":"89 01 00 00 00 00 00 00",)"
                    R"("name":"multi: query"})");
    EXPECT_TRUE(nlohmann::json::accept(traced.out)) << traced.out;
}

TEST_F(Trace, OfUsbHoldsNothingOfACard) {
    for (const Arguments& command : {Arguments{"read"},
                                     {"read", "--long"},
                                     {"read", "--card-data"},
                                     {"read", "--queued"},
                                     {"raw", "8F"},
                                     {"raw", "88", "01"},
                                     {"raw", "8D"},
                                     {"raw", "8C", "02"},
                                     {"raw", "C1"}}) {
        bus().clear();
        bus().install();
        const auto reader = plugReader("a");
        const sim::Card card = secretCard();
        reader->present(card);
        reader->queue({.id = card.id, .age = 42, .byte2 = 1, .word3 = 26, .byte7 = 3});
        Arguments words = {"trace", "--"};
        words.insert(words.end(), command.begin(), command.end());
        EXPECT_FALSE(tellsTheCard(run(words).err)) << command.back();
        words.insert(words.begin() + 1, "--secrets");
        if (command[0] == std::string("read")) {
            EXPECT_TRUE(tellsTheCard(run(words).err)) << "nothing to be masked: " << command.back();
        }
    }
}

TEST_F(Trace, OfKeysHoldsNoByteOfThem) {
    const TemporaryFolder folder;
    std::ofstream("keys.ini", std::ios::binary)
        << "[Blob1]\r\nhdr=10 01 04 00\r\ndata=A1 A2 A3 A4\r\n"
           "[Blob2]\r\nhdr=10 02 04 00\r\ndata=B1 B2 B3 B4\r\n"
           "[EOF]\r\niEndOfIniFile=41FFF99F\r\n";
    plugPlus(1);
    const std::string trace = run({"trace", "--", "keys", "load", "keys.ini"}).err;
    EXPECT_TRUE(contains(trace, "> 89 90 00 01 ** ** ** **  multi: write blob chunk 1\n")) << trace;
    for (const char* byte : {" A1", " A2", " A3", " A4", " B1", " B2", " B3", " B4"})
        EXPECT_FALSE(contains(trace, byte)) << byte;
}

class LineTrace : public LineTest {
protected:
    static std::string trace(Arguments command, bool secrets = false) {
        Arguments words = {"trace", "--", "--port", kPath};
        words.insert(words.end(), command.begin(), command.end());
        if (secrets)
            words.insert(words.begin() + 1, "--secrets");
        return runCommand(words).err;
    }
};

TEST_F(LineTrace, JoinsThePiecesOfFrames) {
    attachReader()->reader().settings().luid = 7;
    const std::string all = trace({"beep", "1"});
    EXPECT_TRUE(contains(all, "> FA 04 ED ED 04  presence\n< 04 ")) << all;
    EXPECT_TRUE(contains(all, "> FA 04 00 00 04  LUID\n< 04 07 00 42 01 90 00\n")) << all;
    EXPECT_TRUE(contains(all, "> FA 0C 03 01 00  service: beep 1\n< 90 00\n")) << all;
}

TEST_F(LineTrace, NamesTheDataOfAWrite) {
    attachReader();
    const std::string all = trace({"luid", "12"});
    EXPECT_TRUE(contains(all, "> FA 06 00 00 02  write LUID\n< 06\n> 0C 00  write LUID data\n"
                              "< 90 00\n"))
        << all;
}

TEST_F(LineTrace, OfFramesHoldsNothingOfACard) {
    const auto stream = attachReader();
    stream->reader().present(secretCard());
    for (const Arguments& command :
         {Arguments{"read"}, {"read", "--long"}, {"read", "--card-data"}, {"read", "--queued"}}) {
        stream->reader().queue({.id = secretCard().id});
        EXPECT_FALSE(tellsTheCard(trace(command))) << command.back();
    }
    EXPECT_TRUE(tellsTheCard(trace({"read", "--long"}, true)));
}

TEST_F(LineTrace, OfFramesShowsThatACardIsMaskedAndTheStatusWord) {
    attachReader()->reader().present(secretCard());
    const std::string all = trace({"read"});
    EXPECT_TRUE(contains(all, "identifier\n< 00 ** ** ** ** ** ** ** ** ** ** ** ** 90 00\n"))
        << all;
}

// The answer comes half, and the rest of it may stand before the next one.
TEST_F(LineTrace, MasksTheAnswerBehindOneThatDidNotComeWhole) {
    const auto stream = attachReader();
    stream->reader().present(secretCard());
    stream->fail(sim::StreamFault::ShortData, 20, 8);
    EXPECT_FALSE(tellsTheCard(trace({"read"})));
}

TEST_F(LineTrace, OfLinesOfTextHoldsNothingOfACard) {
    attachReader()->reader().present(secretCard());
    const std::string all = trace({"read", "--ascii"});
    EXPECT_TRUE(contains(all, "> \"\\rZTAG:QID.ID\\r\"\n")) << all;
    EXPECT_TRUE(contains(all, "ZTAG:cmd.echo=0")) << all;
    EXPECT_FALSE(contains(all, "C1C2")) << all;
    EXPECT_TRUE(contains(trace({"read", "--ascii"}, true), "C1C2C3C4C5C6C7C8"));
}

TEST_F(LineTrace, OfAStripeReaderHoldsNoCharacterOfATrack) {
    const auto reader = std::make_shared<sim::BandReader>();
    lines().attach(kPath, reader);
    reader->swipe(sim::bandCard("%B000^SIMULATED?", ";0000=11?"));
    const std::string open = trace({"swipe"}, true);
    reader->swipe(sim::bandCard("%B000^SIMULATED?", ";0000=11?"));
    const std::string masked = trace({"swipe"});
    int chunks = 0;
    std::istringstream all(open);
    for (std::string line; std::getline(all, line);) {
        if (line.size() < 20 || line[3] != 'R' || line[4] < '1' || line[4] > '3')
            continue;
        ++chunks;
        EXPECT_FALSE(contains(masked, line)) << line;
    }
    EXPECT_GT(chunks, 1) << open;
    EXPECT_TRUE(contains(masked, "< \"R10*********************\"\n")) << masked;
}

class BridgeTrace : public BridgeTest {};

TEST_F(BridgeTrace, HoldsNothingOfACard) {
    const auto reader = std::make_shared<sim::TagReader>();
    reader->present(secretCard());
    const auto& bridge = addBridge(1, std::make_shared<sim::TagStream>(reader));
    const std::string place = std::to_string(a()) + "." + std::to_string(b()) + "." +
                              std::to_string(c()) + ".1:" + std::to_string(bridge.port());
    const std::string all = runCommand({"trace", "--tcp", place.c_str(), "--", "read"}).err;
    EXPECT_TRUE(all.starts_with("open " + place + "\n")) << all;
    EXPECT_TRUE(contains(all, "identifier\n< 00 ** **")) << all;
    EXPECT_FALSE(tellsTheCard(all));
}

} // namespace

} // namespace zel::test
