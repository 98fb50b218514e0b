// SPDX-License-Identifier: MIT
// `zeltag swipe`: which tracks are printed, what is hidden, and how it ends without a card.
#include "cli/main/program.h"
#include "tests/cli/stripe_test.h"
#include "tests/cli/terminal.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iterator>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

const sim::BandCard kCard =
    sim::bandCard("%B0000000000000000^SIMULATED/CARD^9999?", ";0000000000000000=99991?");

class Swipe : public StripeTest {
protected:
    // A card that passes when the reader is asked for data the given time.
    void swipeAtLook(int look, const sim::BandCard& card) {
        reader().onBytes = [this, look, card, looks = 0](const std::string& bytes) mutable {
            if (bytes.starts_with("QS0") && ++looks == look)
                reader().swipe(card);
        };
    }

    static CommandRun noAnswer(const std::string& out = "") {
        return {ExitCode::Failed, out,
                "zeltag: no answer from COM1:; it may have been unplugged: check its cable, then "
                "try `zeltag list`\n"};
    }
};

TEST_F(Swipe, PrintsTheTracksThatHoldData) {
    reader().swipe(sim::bandCard("%B00^SIMULATED?", "", ";11=2?"));
    EXPECT_EQ(run({"swipe"}), (CommandRun{ExitCode::Done,
                                          "track 1  B00^SIMULATED\n"
                                          "track 3  11=2\n",
                                          ""}));
}

TEST_F(Swipe, PipeHidesNothing) {
    reader().swipe(sim::bandCard("", ";00001111=2?"));
    EXPECT_EQ(run({"swipe"}).out, "track 2  00001111=2\n");
}

TEST_F(Swipe, MaskHidesTheNumberOnEachTrack) {
    reader().swipe(kCard);
    EXPECT_EQ(run({"swipe", "--mask"}).out, "track 1  B****************^SIMULATED/CARD^****\n"
                                            "track 2  ******************9991\n");
}

TEST_F(Swipe, SentinelsAreShownOnDemand) {
    reader().swipe(sim::bandCard("%B00?", ";00=1?7"));
    EXPECT_EQ(run({"swipe", "--sentinels"}).out, "track 1  %B00?\ntrack 2  ;00=1?7\n");
    reader().swipe(sim::bandCard("", ";000000=1?7"));
    EXPECT_EQ(run({"swipe", "--sentinels", "--mask"}).out, "track 2  ;****00=1?*\n");
}

TEST_F(Swipe, TerminalHidesTheNumberUnlessToldOtherwise) {
    const auto shownBy = [this](std::vector<const char*> arguments) {
        reader().swipe(sim::bandCard("", ";00001111=2?"));
        const Terminal terminal(STDOUT_FILENO);
        arguments.insert(arguments.begin(), "zeltag");
        arguments.insert(arguments.end(), {"--port", kPath});
        cli::runProgram(static_cast<int>(arguments.size()), arguments.data());
        return terminal.shownLine();
    };
    EXPECT_EQ(shownBy({"swipe"}), "track 2  ******11=2\r\n");
    EXPECT_EQ(shownBy({"swipe", "--no-mask"}), "track 2  00001111=2\r\n");
    EXPECT_EQ(json::parse(shownBy({"swipe", "--json"})).at("masked"), true);
}

TEST_F(Swipe, JsonTellsWhetherTheNumberIsHidden) {
    reader().swipe(sim::bandCard("", ";00001111=2?"));
    EXPECT_EQ(run({"swipe", "--json"}).out,
              R"({"device":{"index":0,"name":"COM1:","port":"/dev/ttySIM1"},"masked":false,)"
              R"("tracks":{"2":"00001111=2"}})"
              "\n");
    reader().swipe(sim::bandCard("", ";00001111=2?"));
    EXPECT_EQ(runJson({"swipe", "--mask"}),
              (json{{"device", device()}, {"masked", true}, {"tracks", {{"2", "******11=2"}}}}));
}

TEST_F(Swipe, CardIsTakenFromTheReader) {
    reader().swipe(kCard);
    run({"swipe"});
    EXPECT_EQ(run({"swipe", "--wait", "0"}).exit, ExitCode::NothingCame);
}

TEST_F(Swipe, WaitsForTheCardAndLooksCalmly) {
    swipeAtLook(4, sim::bandCard("", ";00?"));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(run({"swipe"}).out, "track 2  00\n");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
}

TEST_F(Swipe, NothingSwipedInTime) {
    EXPECT_EQ(run({"swipe", "--wait", "0.15"}),
              refused(ExitCode::NothingCame, "no card was swiped on COM1:; swipe one and try "
                                             "again, or wait longer with --wait 60"));
}

TEST_F(Swipe, ReaderThatVanishesIsNoEmptyOne) {
    reader().onBytes = [this](const std::string& bytes) {
        if (bytes.starts_with("QS0"))
            reader().fail(sim::BandFault::Silence, 1'000);
    };
    EXPECT_EQ(run({"swipe", "--wait", "0"}), noAnswer());
    reader().fail(sim::BandFault::None);
}

TEST_F(Swipe, WatchPrintsEachCardUntilTheReaderIsGone) {
    reader().onBytes = [this, looks = 0](const std::string& bytes) mutable {
        if (!bytes.starts_with("QS0"))
            return;
        ++looks;
        if (looks == 1 || looks == 3)
            reader().swipe(sim::bandCard("", looks == 1 ? ";00?" : ";11?"));
        if (looks == 4)
            reader().fail(sim::BandFault::Silence, 1'000);
    };
    EXPECT_EQ(run({"swipe", "--watch"}), noAnswer("track 2  00\ntrack 2  11\n"));
}

TEST_F(Swipe, WatchedCardIsAnEventInJson) {
    reader().onBytes = [this, looks = 0](const std::string& bytes) mutable {
        if (bytes.starts_with("QS0") && ++looks == 2)
            reader().fail(sim::BandFault::Silence, 1'000);
    };
    reader().swipe(sim::bandCard("", ";00?"));
    const std::string out = run({"swipe", "--watch", "--json"}).out;
    EXPECT_EQ(json::parse(out.substr(0, out.find('\n'))), (json{{"event", "swipe"},
                                                                {"device", device()},
                                                                {"masked", false},
                                                                {"tracks", {{"2", "00"}}}}));
}

TEST_F(Swipe, CtrlCEndsAWatch) {
    const auto watch = [this] {
        reader().onBytes = [looks = 0](const std::string& bytes) mutable {
            if (bytes.starts_with("QS0") && ++looks == 2)
                std::raise(SIGINT);
        };
        const char* const arguments[] = {"zeltag", "swipe", "--watch", "--port", kPath};
        std::_Exit(static_cast<int>(cli::runProgram(std::size(arguments), arguments)));
    };
    EXPECT_EXIT(watch(), ::testing::ExitedWithCode(130), "");
}

TEST_F(Swipe, TrackThatCantBeFetchedFails) {
    reader().swipe(kCard);
    reader().replyWith("G21", "E");
    EXPECT_EQ(run({"swipe"}),
              refused(ExitCode::Failed, "reading the tracks of COM1: failed; it may have been "
                                        "unplugged: check its cable, then try `zeltag list`"));
}

TEST_F(Swipe, CardThatCantBeClearedFailsBehindItsTracks) {
    reader().swipe(sim::bandCard("", ";00?"));
    reader().replyWith("CD0", "E");
    const CommandRun done = run({"swipe"});
    EXPECT_EQ(done.exit, ExitCode::Failed);
    EXPECT_EQ(done.out, "track 2  00\n");
    EXPECT_TRUE(done.err.starts_with("zeltag: clearing the tracks of COM1: failed")) << done.err;
}

TEST_F(Swipe, ProximityReaderHasNoStripe) {
    plugReader("a");
    EXPECT_EQ(runCommand({"swipe"}),
              refused(ExitCode::Failed, "a is a zelTag: it reads no magnetic stripe; "
                                        "`zeltag read` reads its cards"));
}

TEST_F(Swipe, OptionsThatDontGoTogether) {
    for (const auto& arguments :
         std::vector<std::vector<const char*>>{{"swipe", "--mask", "--no-mask"},
                                               {"swipe", "--watch", "--wait", "1"},
                                               {"swipe", "--wait", "nan"},
                                               {"swipe", "card"}})
        EXPECT_EQ(run(arguments).exit, ExitCode::Usage) << arguments.back();
    EXPECT_EQ(lines().opens(), 0);
}

} // namespace

} // namespace zel::test
