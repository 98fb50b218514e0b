// SPDX-License-Identifier: MIT
// The commands on the simulated reader, as the first thing that a new user types.
#include "tests/cli/run_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using nlohmann::json;

json runJson(const Arguments& arguments) {
    const Ended run = runZeltag(arguments);
    EXPECT_EQ(run.exit, 0);
    EXPECT_EQ(run.err, "");
    return json::parse(run.out);
}

const json kDevice = {{"index", 0}, {"name", "sim:zeltag-0"}};

TEST(SimulatedReader, IsListed) {
    EXPECT_EQ(runZeltag({"list", "--sim"}),
              (Ended{0,
                     "INDEX  NAME          PRODUCT   LUID  FIRMWARE      CONFIGS\n"
                     "    0  sim:zeltag-0  zelTag       7  3.2 ZT7_0302        1\n",
                     ""}));
}

TEST(SimulatedReader, IsListedAsJson) {
    json device = kDevice;
    device["product"] = "zelTag";
    device["luid"] = 7;
    device["firmware"] = {{"version", "3.2"}, {"file", "ZT7_0302"}};
    device["configurations"] = 1;
    EXPECT_EQ(runJson({"list", "--sim", "--json"}), (json{{"devices", {device}}}));
}

// Facility code 26 and number 3512 between an even and an odd parity bit.
TEST(SimulatedReader, ReadsItsFirstCard) {
    EXPECT_EQ(runZeltag({"read", "--sim"}),
              (Ended{0, "card   26 bits  0x02341B70  sim:zeltag-0\n", ""}));
}

TEST(SimulatedReader, ReadsItsFirstCardAsJson) {
    const json card = {{"device", kDevice},
                       {"bits", 26},
                       {"id", "02341B70"},
                       {"decimal", "36969328"},
                       {"bytes", {0x70, 0x1B, 0x34, 0x02}}};
    EXPECT_EQ(runJson({"read", "--sim", "--json"}), card);
}

TEST(SimulatedReader, CommonOptionsMayStandInFrontOfTheCommand) {
    EXPECT_EQ(runJson({"--sim", "--json", "--device", "0", "read"}).at("bits"), 26);
}

TEST(SimulatedReader, AnswersAPing) {
    const Ended run = runZeltag({"ping", "--sim"});
    EXPECT_EQ(run.exit, 0);
    EXPECT_TRUE(run.out.starts_with("sim:zeltag-0 answered in ")) << run.out;
    EXPECT_TRUE(run.out.ends_with(" ms\n")) << run.out;
}

TEST(SimulatedReader, AnswersAPingAsJson) {
    const json answer = runJson({"ping", "--sim", "--json"});
    EXPECT_EQ(answer.at("device"), kDevice);
    EXPECT_GE(answer.at("milliseconds"), 1);
}

TEST(SimulatedReader, IsTheOnlyOne) {
    EXPECT_EQ(runZeltag({"read", "--sim", "--device", "3"}),
              (Ended{69, "",
                     "zeltag: there is no reader 3: the only one is 0, sim:zeltag-0; "
                     "`zeltag list` shows them\n"}));
}

} // namespace

} // namespace zel::test
