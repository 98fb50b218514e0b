// SPDX-License-Identifier: MIT
// Tables and colours on terminals of any width, and in pipes.
#include "cli/command/table.h"
#include "tests/cli/terminal.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace zel::cli {

namespace {

using Lines = std::vector<std::string>;

Table sample() {
    Table table({{"N", Table::Side::Right, 3}, {"NAME"}, {"STATE"}});
    table.add({"1", "/dev/serial/by-id/usb-adapter", "well"});
    table.add({"12", "reader", ""});
    return table;
}

TEST(Table, IsAsWideAsItsContentsInAPipe) {
    EXPECT_EQ(sample().lines({}),
              (Lines{"  N  NAME                           STATE",
                     "  1  /dev/serial/by-id/usb-adapter  well", " 12  reader"}));
}

TEST(Table, ShortensTheWidestColumnWhereTheTerminalIsNarrower) {
    EXPECT_EQ(sample().lines(30), (Lines{"  N  NAME                STATE",
                                         "  1  /dev/serial/by-id…  well", " 12  reader"}));
    EXPECT_EQ(sample().lines(41), sample().lines({}));
}

TEST(Table, KeepsFourColumnsOfTheWidestInTheNarrowestTerminal) {
    EXPECT_EQ(sample().lines(5), (Lines{"  N  NAME  STATE", "  1  /de…  well", " 12  rea…"}));
}

class Environment : public ::testing::Test {
protected:
    Environment() {
        for (const char* name : {"COLUMNS", "NO_COLOR"})
            unsetenv(name);
        setenv("TERM", "xterm", 1);
    }
    ~Environment() override { unsetenv("COLUMNS"), unsetenv("NO_COLOR"); }
};

TEST_F(Environment, TellsTheColumnsOnATerminalAlone) {
    setenv("COLUMNS", "33", 1);
    std::FILE* const file = std::tmpfile();
    EXPECT_EQ(terminalColumns(file), std::nullopt);
    std::fclose(file);
    const test::Terminal terminal(STDERR_FILENO);
    EXPECT_EQ(terminalColumns(stderr), 33U);
}

TEST_F(Environment, WordThatIsNoNumberOfColumnsIsPassedOver) {
    setenv("COLUMNS", "wide", 1);
    const test::Terminal terminal(STDERR_FILENO);
    EXPECT_EQ(terminalColumns(stderr), std::nullopt); // this terminal has no size
}

TEST_F(Environment, ColoursShowOnATerminalUnlessItSaysNo) {
    EXPECT_EQ(coloured("x", Colour::Red, stderr), isatty(STDERR_FILENO) ? "\x1B[31mx\x1B[0m" : "x");
    const test::Terminal terminal(STDERR_FILENO);
    EXPECT_EQ(coloured("x", Colour::Red, stderr), "\x1B[31mx\x1B[0m");
    setenv("TERM", "dumb", 1);
    EXPECT_EQ(coloured("x", Colour::Red, stderr), "x");
    setenv("TERM", "xterm", 1);
    setenv("NO_COLOR", "1", 1);
    EXPECT_EQ(coloured("x", Colour::Red, stderr), "x");
}

} // namespace

} // namespace zel::cli
