// SPDX-License-Identifier: MIT
// What can be a serial line, and why nobody answers on one.
#include "cli/device/serial_line.h"

#include "cli/command/line_words.h"

#include "tests/cli/pseudo_line.h"
#include "tests/cli/unprivileged.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace zel::cli {

namespace {

using test::PseudoLine;
using test::Unprivileged;

constexpr char kShowsAdapters[] = "`ls /dev/serial/by-id` shows ";

Options on(const std::string& path) {
    Options options;
    options.port = path;
    return options;
}

TEST(LinePath, StandsUnderDev) {
    EXPECT_EQ(checkLinePath("/dev/ttyUSB0"), "");
    for (const char* wrong : {"", "ttyUSB0", "/dev/", "/tmp/line", "dev/ttyUSB0"})
        EXPECT_EQ(checkLinePath(wrong), "\"" + std::string(wrong) +
                                            "\" is no path of a device; write it as /dev/ttyUSB0");
}

TEST(LinePath, IsNoLongerThanTheLibraryKeeps) {
    const std::string longest = "/dev/" + std::string(123, 'x');
    EXPECT_EQ(checkLinePath(longest), "");
    EXPECT_EQ(checkLinePath(longest + "x"), "the path is longer than 128 characters");
}

TEST(LineSpeed, IsOneOfFive) {
    for (const char* speed : {"9600", "19200", "38400", "57600", "115200"})
        EXPECT_EQ(checkSpeed(speed), "") << speed;
    for (const char* wrong : {"", "0", "300", "9601", "9600 ", "x"})
        EXPECT_EQ(checkSpeed(wrong),
                  std::string(wrong) + " is none of 9600, 19200, 38400, 57600, 115200");
}

TEST(LineChoice, TakesATerminalAndAPathThatIsntThere) {
    const PseudoLine line;
    EXPECT_FALSE(useLine(on(line.path())));
    EXPECT_FALSE(useLine(on("/dev/ttyNONE")));
}

// What is written there would go to a disk, a screen or nowhere.
TEST(LineChoice, RefusesWhatIsSomethingElse) {
    for (const char* other : {"/dev/null", "/dev/zero", "/dev/..", "/dev/../etc/passwd"}) {
        const Outcome refused = useLine(on(other));
        ASSERT_TRUE(refused) << other;
        EXPECT_EQ(refused->exit, ExitCode::NoDevice);
        EXPECT_EQ(asLine(*refused), std::string(other) + " is no serial line; " + kShowsAdapters +
                                        "the adapters that are there");
    }
}

TEST(SilentLine, IsMissing) {
    const Failure failure = explainNoLine(on("/dev/ttyNONE"));
    EXPECT_EQ(failure.exit, ExitCode::NoDevice);
    EXPECT_EQ(asLine(failure), "there is no /dev/ttyNONE; plug the adapter in; " +
                                   std::string(kShowsAdapters) + "those that are there");
}

// The owner is this test where it doesn't run as root.
TEST(SilentLine, IsForAGroupThatTheUserIsNotIn) {
    constexpr gid_t kOther = 20;
    const PseudoLine line;
    ASSERT_TRUE(geteuid() != 0 || chown(line.path().c_str(), 0, kOther) == 0);
    ASSERT_EQ(chmod(line.path().c_str(), 0060), 0);
    const Unprivileged user;
    const Failure failure = explainNoLine(on(line.path()));
    EXPECT_EQ(failure.exit, ExitCode::NoPermission);
    EXPECT_EQ(asLine(failure),
              "no permission to open " + line.path() + "; it is open to the group " + line.group() +
                  ": `sudo usermod -aG " + line.group() + " $USER`, then log in anew");
}

TEST(SilentLine, IsForNobody) {
    const PseudoLine line;
    ASSERT_EQ(chmod(line.path().c_str(), 0), 0);
    const Unprivileged user;
    EXPECT_EQ(asLine(explainNoLine(on(line.path()))),
              "no permission to open " + line.path() +
                  "; ask who runs this machine to let you read and write it");
}

TEST(SilentLine, HasNobodyWhoAnswers) {
    const PseudoLine line;
    Options options = on(line.path());
    options.baud = 19200;
    const Failure failure = explainNoLine(options);
    EXPECT_EQ(failure.exit, ExitCode::NoDevice);
    EXPECT_EQ(asLine(failure), "no reader answers on " + line.path() +
                                   " at 19200 baud; check its cable and power, and that no other "
                                   "program has the line open; a reader set to another speed needs "
                                   "--baud");
}

} // namespace

} // namespace zel::cli
