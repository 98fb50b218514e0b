// SPDX-License-Identifier: MIT
// The commands on a machine without a reader.
#include "cli/device/diagnosis.h"
#include "tests/cli/run_program.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

class NoReader : public ::testing::Test {
protected:
    void SetUp() override {
        if (cli::systemReaders().empty())
            return;
        std::cout << "skipped: this machine has a reader" << std::endl;
        std::exit(77);
    }
};

TEST_F(NoReader, EveryCommandSaysWhatToDo) {
    const Ended expected{
        69, "", "zeltag: no reader found; plug one in, or add --sim to try a simulated one\n"};
    for (const char* command : {"list", "info", "read", "ping", "beep"})
        EXPECT_EQ(runZeltag({command}), expected) << command;
    for (const Arguments& arguments :
         {Arguments{"luid", "1"}, Arguments{"config", "show"},
          Arguments{"config", "set", "bBeepID=1"}, Arguments{"config", "reset", "--yes"},
          Arguments{"raw", "8A"}, Arguments{"dump", "dump.txt"}, Arguments{"read", "--queued"},
          Arguments{"read", "--card-data"}})
        EXPECT_EQ(runZeltag(arguments), expected) << arguments.front();
    EXPECT_EQ(runZeltag({"read", "--watch"}), expected);
}

TEST_F(NoReader, IsAnObjectOnStdoutTooWithJson) {
    const Ended run = runZeltag({"list", "--json"});
    EXPECT_EQ(run.exit, 69);
    const nlohmann::json expected = {
        {"error",
         {{"code", "no_device"},
          {"exit", 69},
          {"message", "no reader found"},
          {"hint", "plug one in, or add --sim to try a simulated one"}}}};
    EXPECT_EQ(nlohmann::json::parse(run.out), expected);
}

TEST_F(NoReader, FirmwareFileIsToldAllTheSame) {
    const Ended run = runZeltag({"firmware", "check", ZELTAG_EXAMPLES "/firmware.hex", "--json"});
    EXPECT_EQ(run.exit, 69);
    const auto object = nlohmann::json::parse(run.out);
    EXPECT_EQ(object.at("firmware").at("name"), "ZT7_0303_DEMO");
    EXPECT_EQ(object.at("device"), nullptr);
    EXPECT_EQ(object.at("taken"), nullptr);
    EXPECT_EQ(object.at("error").at("code"), "no_device");
}

} // namespace

} // namespace zel::test
