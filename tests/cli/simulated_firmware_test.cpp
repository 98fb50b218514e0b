// SPDX-License-Identifier: MIT
// Firmware and the simulated reader, as a new user tries them. These take their time.
#include "tests/cli/run_program.h"
#include "tests/firmware/firmware_file.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace zel::test {

namespace {

const std::string kExample = ZELTAG_EXAMPLES "/firmware.hex";

TEST(SimulatedFirmware, ExampleIsMadeForTheReader) {
    const Ended checked = runZeltag({"firmware", "check", kExample, "--sim"});
    EXPECT_EQ(checked, (Ended{0,
                              "file      " + kExample +
                                  ", checksum 34AC9996 holds\n"
                                  "firmware  ZT7_0303_DEMO\n"
                                  "family    ZT7\n"
                                  "micro     0\n"
                                  "lines     40\n"
                                  "reader    sim:zeltag-0 would take it\n",
                              ""}));
}

TEST(SimulatedFirmware, LoadsWithProgressInLines) {
    const TemporaryFolder folder;
    writeText("f.hex", FirmwareFile{.body = Lines(10, ":0102030405060708")}.text());
    std::string err = "zeltag: loading ZT7_0303_TEST into sim:zeltag-0; it takes some seconds "
                      "before the first line\n";
    for (int percentage = 0; percentage <= 100; percentage += 10)
        err += "zeltag: " + std::to_string(percentage) + " % of 10 lines\n";
    EXPECT_EQ(
        runZeltag({"firmware", "load", "f.hex", "--yes", "--sim"}),
        (Ended{0, "f.hex  ZT7_0303_TEST is in sim:zeltag-0: it took all of 10 lines\n", err}));
}

TEST(SimulatedFirmware, LoadWithoutATerminalNeedsYes) {
    if (isatty(STDIN_FILENO) == 0) {
        EXPECT_EQ(runZeltag({"firmware", "load", kExample, "--sim"}),
                  (Ended{64, "",
                         "zeltag: a load replaces the firmware and nobody can be asked; add --yes "
                         "to do it\n"}));
    }
}

// The library's entry takes four seconds: the signal comes in the middle of it.
TEST(SimulatedFirmware, CtrlCIsAnObjectOnStdoutTooWithJson) {
    RunningProgram program({"firmware", "load", kExample, "--yes", "--sim", "--json"});
    usleep(2'000'000);
    program.send(SIGINT);
    const Ended ended = program.finish();
    EXPECT_EQ(ended.exit, 1);
    EXPECT_EQ(nlohmann::json::parse(ended.out).at("error").at("message"),
              "interrupted: sim:zeltag-0 may be in its boot loader now, without firmware");
}

} // namespace

} // namespace zel::test
