// SPDX-License-Identifier: MIT
// The commands that every reader has, on a magnetic stripe reader.
#include "tests/cli/stripe_test.h"

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

using StripeCommand = StripeTest;

TEST_F(StripeCommand, ListShowsProductLuidAndVersion) {
    reader().settings().system[3] = 7;
    EXPECT_EQ(run({"list"}),
              (CommandRun{ExitCode::Done,
                          "INDEX  NAME                PRODUCT   LUID  FIRMWARE   CONFIGS\n"
                          "    0  COM1: /dev/ttySIM1  zelBand      7  0B01/0123        1\n",
                          ""}));
}

TEST_F(StripeCommand, ListTellsItInJson) {
    json row = device();
    row["product"] = "zelBand";
    row["luid"] = 0;
    row["firmware"] = {{"version", "0B01/0123"}, {"file", ""}};
    row["configurations"] = 1;
    EXPECT_EQ(runJson({"list"}), (json{{"devices", {row}}}));
}

TEST_F(StripeCommand, InfoTellsWhatItCounts) {
    reader().replyWith("QUP", "RUP100E00000C000000");
    reader().counters() = {1, 2, 3, 0x1234};
    EXPECT_EQ(run({"info"}), (CommandRun{ExitCode::Done,
                                         "name            COM1: /dev/ttySIM1\n"
                                         "product         zelBand\n"
                                         "LUID            0\n"
                                         "device ID       2817\n"
                                         "part number     SIMULATED-STRIPE-001\n"
                                         "firmware        0B01/0123\n"
                                         "uptime          3600\n"
                                         "cards read      12\n"
                                         "counters        1 2 3 4660\n",
                                         ""}));
}

TEST_F(StripeCommand, InfoTellsNumbersInJson) {
    reader().setCardsRead(12);
    const json info = runJson({"info"});
    EXPECT_EQ(info.at("device"), device());
    EXPECT_EQ(info.at("cards_read"), 12);
    EXPECT_EQ(info.at("counters"), (json{0, 0, 0, 0}));
}

TEST_F(StripeCommand, ShortPartNumberIsToldWithoutWhatFillsItsFrame) {
    reader().options().partNumber = "STRIPE-100";
    EXPECT_EQ(runJson({"info"}).at("part_number"), "STRIPE-100");
}

TEST_F(StripeCommand, LongPartNumberHasNothingBehindIt) {
    reader().options().partNumber = "SIMULATED-STRIPE-0000";
    EXPECT_EQ(runJson({"info"}).at("part_number"), "SIMULATED-STRIPE-0000");
}

TEST_F(StripeCommand, PingIsAnswered) {
    const json ping = runJson({"ping"});
    EXPECT_EQ(ping.at("device"), device());
    EXPECT_GE(ping.at("milliseconds"), 60);
}

TEST_F(StripeCommand, BeepIsHeard) {
    EXPECT_EQ(run({"beep", "2", "--long"}),
              (CommandRun{ExitCode::Done, "COM1: beeped: 2 long\n", ""}));
    EXPECT_EQ(reader().takeBeeps(), (std::vector<sim::BandBeep>{{2, true}}));
}

TEST_F(StripeCommand, LuidIsWritten) {
    EXPECT_EQ(run({"luid", "513"}), (CommandRun{ExitCode::Done, "LUID of COM1:  0 -> 513\n", ""}));
    EXPECT_EQ(reader().committed().system[3], 1);
    EXPECT_EQ(reader().committed().system[4], 2);
}

TEST_F(StripeCommand, ReadPointsToSwipeAndTakesNoCardAway) {
    reader().swipe(sim::bandCard("", ";0000=0?"));
    EXPECT_EQ(run({"read"}), refused(ExitCode::Failed, "COM1: is a zelBand: its cards are swiped; "
                                                       "use `zeltag swipe`"));
    EXPECT_EQ(run({"swipe"}).out, "track 2  0000=0\n");
}

TEST_F(StripeCommand, ConfigurationThatCantBeReadIsAFailure) {
    reader().replyWith("GaC", "E");
    EXPECT_EQ(run({"config", "show"}).exit, ExitCode::Failed);
    const CommandRun list = run({"list"});
    EXPECT_EQ(list.exit, ExitCode::Done);
    EXPECT_NE(list.out.find("zelBand      -  -"), std::string::npos) << list.out;
    EXPECT_TRUE(list.err.starts_with("zeltag: warning: the configuration of COM1: can't be read"));
}

} // namespace

} // namespace zel::test
