// SPDX-License-Identifier: MIT
// `zeltag raw` on readers that answer, stay silent, or stand beside others.
#include "tests/cli/command_line_test.h"

#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;

class BusRaw : public CommandLineTest {
protected:
    static CommandRun failed() {
        return refused(ExitCode::Failed,
                       "the exchange with a failed; the reader may have taken the report: "
                       "check its cable, then try `zeltag ping`");
    }
};

TEST_F(BusRaw, BytesLeftOutAreZero) {
    plugReader("a")->settings().luid = 0x0102;
    EXPECT_EQ(run({"raw", "8a"}), (CommandRun{ExitCode::Done,
                                              "sent   8A 00 00 00 00 00 00 00\n"
                                              "reply  02 01 42 01 00 00 00 00\n",
                                              ""}));
}

TEST_F(BusRaw, AllEightBytesGoOutInTheirPlaces) {
    plugReader("a")->replyWith({0xF1, 0x02, 0x0A, 0xB0, 0x05, 0x06, 0x07, 0xFF},
                               {8, 7, 6, 5, 4, 3, 2, 1});
    EXPECT_EQ(run({"raw", "F1", "0x02", "0Xa", "b0", "5", "06", "0x7", "0xff"}).out,
              "sent   F1 02 0A B0 05 06 07 FF\n"
              "reply  08 07 06 05 04 03 02 01\n");
}

TEST_F(BusRaw, ReportAndReplyAreArraysWithJson) {
    plugReader("a")->replyWith({0xF1}, {255});
    EXPECT_EQ(run({"raw", "F1", "--json"}).out,
              R"({"device":{"index":0,"name":"a"},"sent":[241,0,0,0,0,0,0,0],)"
              R"("reply":[255,0,0,0,0,0,0,0]})"
              "\n");
}

TEST_F(BusRaw, ReplyOfZerosIsNoFailure) {
    plugReader("a");
    EXPECT_EQ(run({"raw", "F1"}).out, "sent   F1 00 00 00 00 00 00 00\n"
                                      "reply  00 00 00 00 00 00 00 00\n");
}

TEST_F(BusRaw, ReplyThatDoesNotComeIsAFailure) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer, 1, connectReplies());
    EXPECT_EQ(run({"raw", "F1"}), failed());
}

TEST_F(BusRaw, ReportThatIsNotTakenIsAFailure) {
    const auto reader = plugReader("a");
    reader->replyWith({0xF1}, {1});
    const int before = bus().exchanges(0);
    run({"list"});
    const int connect = bus().exchanges(0) - before;
    bus().failExchange(0, connect + 1, 1000);
    EXPECT_EQ(run({"raw", "F1"}), failed());
}

TEST_F(BusRaw, ReaderWhoseConfigurationCantBeReadIsReachedAllTheSame) {
    plugReader("a")->replyWith({0xF1}, {1});
    bus().fail(0, sim::Fault::NoAnswer, vainReplies());
    EXPECT_EQ(run({"raw", "F1"}),
              (CommandRun{ExitCode::Done,
                          "sent   F1 00 00 00 00 00 00 00\n"
                          "reply  01 00 00 00 00 00 00 00\n",
                          "zeltag: warning: the configuration of a can't be read; unplug it and "
                          "plug it in again, then try `zeltag list`\n"}));
}

TEST_F(BusRaw, SeveralReadersNeedAChoice) {
    plugReader("a")->replyWith({0xF1}, {1});
    plugReader("b")->replyWith({0xF1}, {2});
    bus().takeTrace();
    EXPECT_EQ(run({"raw", "F1"}),
              refused(ExitCode::Usage, "there are several readers: 0 is a, 1 is b; "
                                       "choose one with --device, such as --device 0"));
    EXPECT_EQ(bus().takeTrace().find("> F1"), std::string::npos);
    EXPECT_EQ(run({"raw", "F1", "--device", "1"}).out, "sent   F1 00 00 00 00 00 00 00\n"
                                                       "reply  02 00 00 00 00 00 00 00\n");
}

} // namespace

} // namespace zel::test
