// SPDX-License-Identifier: MIT
// `zeltag read --watch` in real time: the simulated reader's card stays two seconds.
#include "tests/cli/run_program.h"

#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

TEST(Watch, PrintsEachCardAsItComesAndGoesUntilCtrlC) {
    RunningProgram watch({"read", "--watch", "--sim"});
    EXPECT_EQ(watch.readLine(), "card   26 bits  0x02341B70  sim:zeltag-0");
    EXPECT_EQ(watch.readLine(), "gone");
    watch.send(SIGINT);
    EXPECT_EQ(watch.finish(), (Ended{130, "", ""}));
}

TEST(Watch, PrintsAnObjectALineWithJson) {
    RunningProgram watch({"read", "--watch", "--sim", "--json"});
    const auto card = nlohmann::json::parse(watch.readLine());
    EXPECT_EQ(card.at("event"), "card");
    EXPECT_EQ(card.at("id"), "02341B70");
    watch.send(SIGTERM);
    EXPECT_EQ(watch.finish(), (Ended{130, "", ""}));
}

TEST(Watch, EndsWhenNobodyReadsItAnyMore) {
    RunningProgram watch({"read", "--watch", "--sim"});
    watch.readLine();
    watch.closeStdout();
    EXPECT_EQ(watch.finish(), (Ended{73, "",
                                     "zeltag: the results can't be written: Broken pipe; "
                                     "check where stdout goes\n"}));
}

} // namespace

} // namespace zel::test
