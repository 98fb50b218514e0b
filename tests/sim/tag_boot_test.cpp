// SPDX-License-Identifier: MIT
// The simulated boot loader by itself, and its record of exchanges that come too early.
#include "tests/sim/simulated_reader.h"
#include "tests/support/virtual_time.h"

using namespace zel::sim;
using zel::test::SpokenReader;
using zel::test::wait;

namespace {

using Block = TagReader::Block;

constexpr Block kReady = {0, '.'};
constexpr Block kBusy = {0, 'T'};

class SimulatedBootLoader : public ::testing::Test {
protected:
    TagBootOptions& options() { return reader_.bootLoader().options(); }
    const TagBoot& boot() { return reader_.bootLoader(); }

    Block poll() {
        Block reply = {};
        EXPECT_TRUE(reader_.answer(0, reply));
        return reply;
    }

    void enter(TagBootKind kind, std::uint8_t micro = 0) {
        options().kind = kind;
        reader_.command({0xF0, micro});
        wait(3'000'000);
        poll();
    }

    // The frames of a line with the bytes 1 to 8, with pauses that suit every boot loader.
    void sendLine() {
        for (const Block& frame :
             {Block{7, 1, 2, 3, 4, 5, 6, 7}, Block{1, 8, 9}, Block{0, 1, 2, 3, 4, 5, 6, 7}}) {
            reader_.command(frame);
            wait(10'000);
        }
    }
    Block line() {
        sendLine();
        wait(80'000);
        return poll();
    }

    // Violations of a poll that comes so long after the last frame of a line, or after a busy
    // answer to it.
    int violationsOfPoll(std::uint64_t pause) {
        const int before = reader_.violations();
        sendLine();
        wait(pause - 10'000);
        poll();
        wait(100'000);
        return reader_.violations() - before;
    }
    int violationsOfSecondPoll(std::uint64_t pause) {
        options().lineBusy = 1;
        sendLine();
        wait(80'000);
        EXPECT_EQ(poll(), kBusy);
        const int before = reader_.violations();
        wait(pause);
        poll();
        wait(100'000);
        return reader_.violations() - before;
    }

    // Violations of a frame that comes so long after another.
    int violationsOfFrame(std::uint64_t pause) {
        const int before = reader_.violations();
        reader_.command({1, 1});
        wait(pause);
        reader_.command({1, 2});
        wait(100'000);
        reader_.command({1, 3});
        wait(100'000);
        poll();
        return reader_.violations() - before;
    }

    SpokenReader reader_;
};

} // namespace

TEST_F(SimulatedBootLoader, TakesTheFirmwaresPlaceWhenItIsEntered) {
    EXPECT_FALSE(boot().isRunning());
    enter(TagBootKind::Slow, 1);
    EXPECT_TRUE(boot().isRunning());
    EXPECT_EQ(boot().micro(), 1);
    EXPECT_EQ(reader_.query({0x8A}), Block{}) << "a command means nothing to it";
}

TEST_F(SimulatedBootLoader, IsNotEnteredByTheDataOfAWrite) {
    reader_.write({0x83}, {0xF0, 1});
    EXPECT_FALSE(boot().isRunning());
}

TEST_F(SimulatedBootLoader, IsBusyAsOftenAsTold) {
    options().entryBusy = 2;
    reader_.command({0xF0, 0});
    wait(3'000'000);
    EXPECT_EQ(poll(), kBusy);
    wait(50'000);
    EXPECT_EQ(poll(), kBusy);
    wait(50'000);
    EXPECT_EQ(poll(), kReady);
    options().lineBusy = 1;
    EXPECT_EQ(line(), kBusy);
    wait(80'000);
    EXPECT_EQ(poll(), kReady);
    EXPECT_EQ(reader_.violations(), 0);
}

TEST_F(SimulatedBootLoader, FillsItsMemoryFromTheFrames) {
    enter(TagBootKind::Slow);
    EXPECT_EQ(line(), kReady);
    EXPECT_EQ(line(), kReady);
    EXPECT_EQ(boot().memory(),
              (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(boot().lines(), 2);
}

TEST_F(SimulatedBootLoader, ErasesItsMemoryWhenItIsEnteredAgain) {
    enter(TagBootKind::Slow);
    line();
    enter(TagBootKind::Slow);
    EXPECT_EQ(boot().memory(), std::vector<std::uint8_t>{});
    EXPECT_EQ(boot().lines(), 0);
}

TEST_F(SimulatedBootLoader, TellsItsKind) {
    struct Row {
        TagBootKind kind;
        Block entry, line;
    };
    for (const Row& row : {Row{TagBootKind::Slow, kReady, kReady},
                           Row{TagBootKind::FastFrames, kReady, Block{0, '.', ';'}},
                           Row{TagBootKind::Fast, kReady, Block{0, '.', '>'}},
                           Row{TagBootKind::Lark, Block{0, '.', 'W'}, Block{0, '.', 'W'}}}) {
        SCOPED_TRACE(static_cast<int>(row.kind));
        options().kind = row.kind;
        reader_.command({0xF0});
        wait(3'000'000);
        EXPECT_EQ(poll(), row.entry);
        EXPECT_EQ(line(), row.line);
    }
}

TEST_F(SimulatedBootLoader, AsksForTimeWithEachLine) {
    options().delay = 0x0FA0;
    enter(TagBootKind::Lark);
    EXPECT_EQ(line(), (Block{0, '.', 'W', 0xA0, 0x0F}));
    wait(3'999'999);
    sendLine();
    EXPECT_EQ(reader_.violations(), 1);
    EXPECT_EQ(reader_.lastViolation(), "line 2 frame 1, 1 us too early");
}

TEST_F(SimulatedBootLoader, RefusesTheLineThatItIsToldTo) {
    options().reply[2] = {0, 'R'};
    enter(TagBootKind::Slow);
    EXPECT_EQ(line(), kReady);
    EXPECT_EQ(line(), (Block{0, 'R'}));
    EXPECT_EQ(boot().lines(), 1);
    EXPECT_EQ(line(), Block{}) << "it wants to be entered anew";
    EXPECT_EQ(boot().memory().size(), 8U);
}

TEST_F(SimulatedBootLoader, RefusesToStart) {
    options().reply[0] = {0, 'E'};
    reader_.command({0xF0});
    wait(3'000'000);
    EXPECT_EQ(poll(), (Block{0, 'E'}));
    EXPECT_EQ(line(), Block{});
    EXPECT_TRUE(boot().isRunning());
}

TEST_F(SimulatedBootLoader, MayNeverComeBack) {
    options().comesBack = false;
    reader_.command({0xF0});
    wait(3'000'000);
    Block reply;
    EXPECT_FALSE(reader_.answer(0, reply));
}

TEST_F(SimulatedBootLoader, StaysBehindALossOfPowerAndMustBeEnteredAnew) {
    options().powerCutAfter = 1;
    enter(TagBootKind::Slow);
    EXPECT_EQ(line(), kReady) << "the line's answer still came";
    Block reply;
    EXPECT_FALSE(reader_.answer(0, reply));
    EXPECT_FALSE(reader_.take(0, Block{7}));
    reader_.powerUp();
    EXPECT_TRUE(boot().isRunning());
    EXPECT_EQ(line(), Block{});
    options().powerCutAfter = 0;
    enter(TagBootKind::Slow);
    EXPECT_EQ(line(), kReady);
}

TEST_F(SimulatedBootLoader, StartsTheFirmwareBehindItsLastLine) {
    options().lines = 2;
    enter(TagBootKind::Slow);
    line();
    EXPECT_TRUE(boot().isRunning());
    line();
    EXPECT_FALSE(boot().isRunning());
    EXPECT_EQ(reader_.query({0x8A})[2], 0x42) << "the firmware tells its device ID";
    reader_.powerUp();
    EXPECT_FALSE(boot().isRunning());
}

TEST_F(SimulatedBootLoader, NamesItsReports) {
    EXPECT_EQ(reader_.nameOf(Block{0xF0, 255}), "enter boot loader: micro 255");
    enter(TagBootKind::Slow);
    EXPECT_EQ(reader_.nameOf(Block{7}), "line 1 frame 1");
    reader_.command({7});
    EXPECT_EQ(reader_.nameOf(Block{0}), "line 1 frame 2");
    EXPECT_EQ(reader_.nameOf(Block{0xF0, 1}), "enter boot loader: micro 1");
    EXPECT_EQ(reader_.nameOf(Block{8}), "");
}

TEST_F(SimulatedBootLoader, IsLeftThreeSecondsBeforeTheFirstPoll) {
    reader_.command({0xF0});
    wait(2'999'999);
    poll();
    EXPECT_EQ(reader_.violations(), 1);
    EXPECT_EQ(reader_.lastViolation(), "poll, 1 us too early");
    EXPECT_EQ(reader_.takeRemark(), "too early");
    wait(1);
    reader_.command({0xF0});
    wait(3'000'000);
    poll();
    EXPECT_EQ(reader_.violations(), 1);
}

TEST_F(SimulatedBootLoader, IsLeft50MillisecondsBehindABusyAnswer) {
    options().entryBusy = 2;
    reader_.command({0xF0});
    wait(3'000'000);
    poll();
    wait(50'000);
    poll();
    EXPECT_EQ(reader_.violations(), 0);
    wait(49'999);
    poll();
    EXPECT_EQ(reader_.violations(), 1);
}

TEST_F(SimulatedBootLoader, IsLeft10MillisecondsBehindAFrameWhenItIsSlow) {
    enter(TagBootKind::Slow);
    EXPECT_EQ(violationsOfFrame(9'999), 1);
    EXPECT_EQ(violationsOfFrame(10'000), 0);
}

TEST_F(SimulatedBootLoader, NeedsNoPauseBehindAFrameWhenItIsFast) {
    for (const TagBootKind kind : {TagBootKind::FastFrames, TagBootKind::Fast, TagBootKind::Lark}) {
        SCOPED_TRACE(static_cast<int>(kind));
        enter(kind);
        EXPECT_EQ(violationsOfFrame(0), 0);
    }
}

TEST_F(SimulatedBootLoader, IsPolledTwoMillisecondsBehindItsFirstLine) {
    enter(TagBootKind::Slow);
    EXPECT_EQ(violationsOfPoll(11'999), 1);
    enter(TagBootKind::Slow);
    EXPECT_EQ(violationsOfPoll(12'000), 0);
}

TEST_F(SimulatedBootLoader, IsPolled50MillisecondsBehindItsLaterLines) {
    enter(TagBootKind::Slow);
    line();
    EXPECT_EQ(violationsOfPoll(59'999), 1);
    EXPECT_EQ(violationsOfPoll(60'000), 0);
    enter(TagBootKind::FastFrames);
    line();
    EXPECT_EQ(violationsOfPoll(49'999), 1);
    EXPECT_EQ(violationsOfPoll(50'000), 0);
    EXPECT_EQ(violationsOfSecondPoll(49'999), 1);
    EXPECT_EQ(violationsOfSecondPoll(50'000), 0);
}

TEST_F(SimulatedBootLoader, ThatIsLarkIsLeft50MillisecondsBehindABusyAnswerToALine) {
    enter(TagBootKind::Lark);
    EXPECT_EQ(violationsOfSecondPoll(49'999), 1);
    EXPECT_EQ(violationsOfSecondPoll(50'000), 0);
}

TEST_F(SimulatedBootLoader, ThatIsFastIsPolledTwoMillisecondsBehindALine) {
    enter(TagBootKind::Fast);
    line();
    EXPECT_EQ(violationsOfSecondPoll(1'999), 1);
    EXPECT_EQ(violationsOfSecondPoll(2'000), 0);
}

TEST_F(SimulatedBootLoader, OfAnotherMicroIsPolled80MillisecondsBehindALine) {
    enter(TagBootKind::Fast, 1);
    EXPECT_EQ(violationsOfPoll(79'999), 1);
    EXPECT_EQ(violationsOfPoll(80'000), 0);
    EXPECT_EQ(violationsOfSecondPoll(79'999), 1);
    EXPECT_EQ(violationsOfSecondPoll(80'000), 0);
}
