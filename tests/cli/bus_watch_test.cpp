// SPDX-License-Identifier: MIT
// `zeltag read --watch` on a reader whose field and failures a test scripts, one look at a time.
#include "tests/cli/command_line_test.h"

#include <chrono>
#include <gtest/gtest.h>

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr char kGoneReader[] = "zeltag: reading a failed (library error 0x1000000); "
                               "it may have been unplugged: check its cable, then try "
                               "`zeltag list`\n";

class BusWatch : public CommandLineTest {
protected:
    // A look for each card, then the reader is unplugged.
    static void script(std::vector<sim::Card> looks) {
        plugReader("a")->follow([looks = std::move(looks), next = std::size_t{0}]() mutable {
            if (next == looks.size()) {
                bus().unplug(0);
                return sim::Card{};
            }
            return looks[next++];
        });
    }
};

const sim::Card kA = sim::cardOf(0xA, 4);
const sim::Card kB = sim::cardOf(0xB, 4);

TEST_F(BusWatch, CardThatStaysIsToldOnceAndTheLostReaderEndsIt) {
    script({kA, kA, {}, {}});
    EXPECT_EQ(run({"read", "--watch"}),
              (CommandRun{ExitCode::Failed, "card    4 bits  0x0A  a\ngone\n", kGoneReader}));
}

TEST_F(BusWatch, CardThatReplacesAnotherIsToldAfterTheOtherHasGone) {
    script({kA, kB});
    EXPECT_EQ(run({"read", "--watch"}).out, "card    4 bits  0x0A  a\n"
                                            "gone\n"
                                            "card    4 bits  0x0B  a\n");
}

TEST_F(BusWatch, LooksEvery100Milliseconds) {
    script({kA, kA, kA});
    const auto start = std::chrono::steady_clock::now();
    run({"read", "--watch"});
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
}

// The second look's first reply is lost; the third sees the empty field.
TEST_F(BusWatch, OneLostReplyIsNoEventAndNoEnd) {
    script({kA, {}});
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies() + 2);
    EXPECT_EQ(run({"read", "--watch"}).out, "card    4 bits  0x0A  a\ngone\n");
}

TEST_F(BusWatch, EventsAndTheFailureAreAnObjectALineWithJson) {
    script({kA, {}});
    EXPECT_EQ(run({"read", "--watch", "--json"}).out,
              R"({"event":"card","device":{"index":0,"name":"a"},"bits":4,"id":"0A",)"
              R"("decimal":"10","bytes":[10]})"
              "\n"
              R"({"event":"gone","device":{"index":0,"name":"a"}})"
              "\n"
              R"({"error":{"code":"failed","exit":1,)"
              R"-("message":"reading a failed (library error 0x1000000)",)-"
              R"("hint":"it may have been unplugged: check its cable, then try `zeltag list`",)"
              R"("device":"a"}})"
              "\n");
}

} // namespace

} // namespace zel::test
