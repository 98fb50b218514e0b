// SPDX-License-Identifier: MIT
// `zeltag wait`: readers that come and go on the simulated bus.
#include "tests/cli/command_line_test.h"

#include <chrono>
#include <gtest/gtest.h>

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr char kTable[] = "INDEX  NAME  PRODUCT   LUID  FIRMWARE  CONFIGS\n"
                          "    0  a     zelTag       7  -               1\n";

// The bus as it is, but with nothing on it at the first two looks; a connect lists it twice.
int gLooks = 0;
UsbBackend lateBus(const UsbBackend& bus) {
    static int (*list)() = nullptr;
    UsbBackend late = bus;
    list = bus.list;
    gLooks = 0;
    late.list = [] { return ++gLooks <= 4 ? 0 : list(); };
    return late;
}

class Wait : public CommandLineTest {
protected:
    static void plugA() { plugReader("a")->settings().luid = 7; }
};

TEST_F(Wait, EndsAtOnceWhereAReaderIsAndListsIt) {
    plugA();
    EXPECT_EQ(run({"wait"}), (CommandRun{ExitCode::Done, kTable, ""}));
}

TEST_F(Wait, LooksFourTimesASecondUntilOneComes) {
    plugA();
    const UsbBackend late = lateBus(bus().backend());
    ASSERT_EQ(UsbDriver_UseBackend(&late), 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(run({"wait"}), (CommandRun{ExitCode::Done, kTable, ""}));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
}

TEST_F(Wait, EndsWith2WhenTheTimeIsOver) {
    EXPECT_EQ(run({"wait", "--wait", "0.1"}),
              refused(ExitCode::NothingCame, "no reader was there within 0.1 s; `zeltag doctor` "
                                             "looks for the reason"));
}

TEST_F(Wait, MakesNoExchangeWhileNothingIsThere) {
    run({"wait", "--wait", "0.3"});
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Wait, IsForTheChosenReader) {
    plugA();
    EXPECT_EQ(run({"wait", "--device", "1", "--wait", "0"}).exit, ExitCode::NothingCame);
    plugReader("b");
    EXPECT_EQ(run({"wait", "--device", "1", "--wait", "0"}).exit, ExitCode::Done);
}

TEST_F(Wait, GoneEndsWhenTheReaderNoLongerAnswers) {
    plugA();
    bus().fail(0, sim::Fault::NoAnswer, 1000, connectReplies() + 1);
    EXPECT_EQ(run({"wait", "--gone"}), (CommandRun{ExitCode::Done, "a is gone\n", ""}));
}

TEST_F(Wait, GoneIsAnObjectWithJson) {
    plugA();
    bus().fail(0, sim::Fault::NoAnswer, 1000, connectReplies() + 1);
    EXPECT_EQ(run({"wait", "--gone", "--json"}).out, "{\"gone\":[{\"index\":0,\"name\":\"a\"}]}\n");
}

TEST_F(Wait, GoneWithoutAReaderIsDone) {
    EXPECT_EQ(run({"wait", "--gone"}), (CommandRun{ExitCode::Done, "no reader is there\n", ""}));
}

TEST_F(Wait, GoneEndsWith2WhereTheReaderStays) {
    plugA();
    EXPECT_EQ(run({"wait", "--gone", "--wait", "0.1"}),
              refused(ExitCode::NothingCame,
                      "a wasn't gone within 0.1 s; unplug it, or wait longer with --wait"));
}

} // namespace

} // namespace zel::test
