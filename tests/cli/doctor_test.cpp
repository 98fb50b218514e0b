// SPDX-License-Identifier: MIT
// The doctor on serial lines made of files, on the simulator and in JSON.
#include "cli/doctor/line_checks.h"
#include "tests/cli/fake_machine.h"
#include "tests/cli/run_program.h"

#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr char kLine[] = "/dev/ttyUSB0";

class DoctorLine : public FakeMachine {
protected:
    // A character device that the machine calls a terminal.
    void attach(const std::string& subsystem = "tty") const {
        link(kLine, "/dev/null");
        link("/sys/dev/char/1:3/subsystem", "../../../class/" + subsystem);
    }

    std::string found(bool denies = false, const std::string& path = kLine) const {
        return linesOf(checkLine(path, machine(denies)));
    }
};

TEST_F(DoctorLine, FindsNothingWrongWhereAllIsWell) {
    attach();
    EXPECT_EQ(found(), "ok line: /dev/ttyUSB0 is a serial line\n"
                       "ok permission: /dev/ttyUSB0 may be opened\n");
}

TEST_F(DoctorLine, FindsThatThereIsNone) {
    EXPECT_EQ(found(), "fault line: there is no /dev/ttyUSB0\n");
}

TEST_F(DoctorLine, FindsAFileAndAnotherDeviceInItsPlace) {
    write(kLine, "");
    EXPECT_EQ(found(), "fault line: /dev/ttyUSB0 is no serial line\n");
    std::filesystem::remove(root() + kLine);
    attach("mem");
    EXPECT_EQ(found(), "fault line: /dev/ttyUSB0 is no serial line\n");
}

TEST_F(DoctorLine, FindsThatTheUserMayNotOpenIt) {
    attach();
    const auto findings = checkLine(kLine, machine(true));
    EXPECT_TRUE(contains(linesOf(findings), "fault permission: /dev/ttyUSB0 may not be opened"));
    EXPECT_EQ(cli::outcomeOf(findings)->exit, ExitCode::NoPermission);
}

TEST_F(DoctorLine, TellsWhoHasItOpenBehindALinkToo) {
    attach();
    write("/proc/97/comm", "screen\n");
    link("/proc/97/fd/3", kLine);
    EXPECT_TRUE(contains(found(), "fault held: /dev/ttyUSB0 is open in screen (97)\n"));
    link("/dev/serial/by-id/adapter", "../../ttyUSB0");
    EXPECT_TRUE(contains(found(false, "/dev/serial/by-id/adapter"),
                         "fault held: /dev/ttyUSB0 is open in screen (97)\n"));
}

TEST_F(DoctorLine, TellsALockAndOneThatWasLeft) {
    attach();
    write("/run/lock/LCK..ttyUSB0", "      97\n");
    EXPECT_TRUE(contains(found(), "warning lock: /run/lock/LCK..ttyUSB0 is left of a process that "
                                  "has ended\n"));
    write("/proc/97/comm", "screen\n");
    EXPECT_TRUE(contains(found(), "warning lock: process 97 keeps /dev/ttyUSB0 locked\n"));
}

TEST(Findings, MakeTheExitCodeOfTheWorst) {
    const auto exit = [](const cli::Findings& findings) {
        const auto outcome = cli::outcomeOf(findings);
        return outcome ? outcome->exit : ExitCode::Done;
    };
    const auto other = cli::fault("a", ExitCode::NothingCame, "", "");
    const auto none = cli::fault("b", ExitCode::NoDevice, "", "");
    const auto denied = cli::fault("c", ExitCode::NoPermission, "", "");
    EXPECT_EQ(exit({cli::ok("x", ""), cli::warning("y", "", "")}), ExitCode::Done);
    EXPECT_EQ(exit({cli::ok("x", ""), other}), ExitCode::Failed);
    EXPECT_EQ(exit({other, none}), ExitCode::NoDevice);
    EXPECT_EQ(exit({none, denied, other}), ExitCode::NoPermission);
}

TEST(Doctor, NeedsNothingForTheSimulatorAndTellsThatItAnswers) {
    const Ended run = runZeltag({"doctor", "--sim"});
    EXPECT_EQ(run.exit, 0);
    EXPECT_TRUE(contains(run.out, "ok       version     library and program are both 7.6.4\n"));
    EXPECT_TRUE(contains(run.out, "ok       simulator   "));
    EXPECT_TRUE(contains(run.out, "ok       answer      sim:zeltag-0, a zelTag, answers in "));
}

TEST(Doctor, TellsAFaultAndWhatToDoOfALineThatIsNone) {
    EXPECT_EQ(runZeltag({"doctor", "--port", "/dev/null"}),
              (Ended{69,
                     "ok       version     library and program are both 7.6.4\n"
                     "fault    line        /dev/null is no serial line\n"
                     "                     -> `ls /dev/serial/by-id` shows the adapters that are "
                     "there\n",
                     ""}));
}

TEST(Doctor, IsOneObjectWithTheFailureInJson) {
    const auto object =
        nlohmann::json::parse(runZeltag({"doctor", "--port", "/dev/null", "--json"}).out);
    EXPECT_EQ(object.at("findings").at(1).at("verdict"), "fault");
    EXPECT_EQ(object.at("error").at("code"), "no_device");
    EXPECT_EQ(object.at("error").at("hint"), object.at("findings").at(1).at("fix"));
}

TEST(Doctor, TellsThatAHostTakesNoConnection) {
    const Ended run = runZeltag({"doctor", "--tcp", "127.0.0.1:1"});
    EXPECT_EQ(run.exit, 69);
    EXPECT_TRUE(contains(run.out, "ok       address     127.0.0.1 is an address\n"
                                  "fault    connection  127.0.0.1 port 1 refuses connections\n"));
}

} // namespace

} // namespace zel::test
