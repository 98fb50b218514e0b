// SPDX-License-Identifier: MIT
// Whether a stripe reader answers: the bytes and pauses of the question.
#include "family/band/band.h"
#include "family/band/frame.h"
#include "tests/family/band/stripe_reader.h"
#include "tests/family/line_scan.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/usb_scan.h"

using namespace zel::test;

namespace {

// A reader on line 1 whose record is the only one.
class StripeOnLine : public LineScan {
protected:
    StripeOnLine() {
        lines().attach(kPath, reader);
        zel::freshPort(DevDat[0]);
        DevDat[0].iDevType = 1;
        DevDat[0].pPort->SetPort(1);
        EXPECT_TRUE(DevDat[0].pPort->Connect());
        told();
    }

    std::shared_ptr<StripeLine> reader = std::make_shared<StripeLine>();
};

class StripeOnUsb : public LineScan {
protected:
    StripeOnUsb() {
        bus().plug(reader, {zel::sim::TagReader::kVendor, zel::sim::TagReader::kProduct, "stripe"});
        zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, nullptr);
        told();
    }

    std::shared_ptr<StripeUsb> reader = std::make_shared<StripeUsb>();
};

const std::string kWake = "~ 30 ms\n"
                          "> \"\\r\\r\"\n"
                          "~ 30 ms\n";
const std::string kQuery = "> \"QRZ00000000000000000000\\r\"\n";
const std::string kPresent = "< \"RRZZB100\\rxxxxxxxxxxxxxxx\"\n";
const std::string kSilence = "~ 5 ms x 100\n";

const std::string kReport =
    "> 51 52 5A 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 "
    "0D  QRZ\n";

std::string reply(const std::string& start) { return start + std::string(24 - start.size(), 'x'); }

} // namespace

TEST_F(StripeOnLine, IsWokenThenAsked) {
    EXPECT_EQ(zelband_IsDevicePresent(), 1);
    EXPECT_EQ(told(), kWake + kQuery + "~ 5 ms\n" + kPresent + "~ 2 ms\n");
}

TEST_F(StripeOnLine, IsAskedAgainWhenItKeepsSilent) {
    reader->answer("");
    EXPECT_EQ(zelband_IsDevicePresent(), 1);
    EXPECT_EQ(told(), kWake + kQuery + kSilence + "~ 2 ms\n~ 25 ms\n" + kQuery + "~ 5 ms\n" +
                          kPresent + "~ 2 ms\n");
}

TEST_F(StripeOnLine, IsAskedTwiceAtMost) {
    lines().silence(kPath);
    EXPECT_EQ(zelband_IsDevicePresent(), 0);
    EXPECT_EQ(told(),
              kWake + kQuery + kSilence + "~ 2 ms\n~ 25 ms\n" + kQuery + kSilence + "~ 2 ms x 2\n");
}

TEST_F(StripeOnLine, LosesWhatItSaysToTheWake) {
    reader->answerToWake = "E";
    EXPECT_EQ(zelband_IsDevicePresent(), 1);
    EXPECT_EQ(told(), "~ 30 ms\n"
                      "> \"\\r\\r\"\n"
                      "~ 30 ms\n"
                      "< \"EE\"\n"
                      "x \"EE\"\n" +
                          kQuery + "~ 5 ms\n" + kPresent + "~ 2 ms\n");
}

TEST_F(StripeOnLine, EndsACommandThatWasBegun) {
    reader->receive(std::vector<std::uint8_t>{'G', 'a'});
    EXPECT_EQ(zelband_IsDevicePresent(), 1);
}

// The second question is always answered well: what counts is whether it was needed.
TEST_F(StripeOnLine, IsPresentByAWholeReplyThatRepeatsTheCommand) {
    struct Case {
        std::string reply;
        bool counts;
    };
    for (const Case& each :
         {Case{reply("RRZ"), true}, Case{reply("RRz"), false}, Case{reply("RQZ"), false},
          Case{reply("ERZ"), false}, Case{reply("RRZ").substr(1), false}, Case{"RRZ\r", false},
          Case{std::string(24, '\0'), false}}) {
        reader->answer(each.reply);
        EXPECT_EQ(zelband_IsDevicePresent(), 1);
        EXPECT_EQ(told().find("~ 25 ms") == std::string::npos, each.counts) << each.reply;
    }
}

TEST_F(StripeOnLine, PausesOnceAfterAReplyOfSuccessToAnotherCommand) {
    reader->answer(reply("RSV"));
    zelband_IsDevicePresent();
    EXPECT_EQ(told(), kWake + kQuery + "~ 5 ms\n< \"RSVxxxxxxxxxxxxxxxxxxxxx\"\n~ 25 ms\n" +
                          kQuery + "~ 5 ms\n" + kPresent + "~ 2 ms\n");
}

TEST_F(StripeOnLine, WithoutAnObjectIsAbsent) {
    zel::freePort(DevDat[0]);
    told();
    EXPECT_EQ(zelband_IsDevicePresent(), 0);
    EXPECT_EQ(told(), "~ 30 ms x 2\n~ 2 ms\n~ 25 ms\n~ 2 ms x 2\n");
}

TEST_F(StripeOnLine, TakesCommandsCutAtTwentyThreeCharacters) {
    char answer[24];
    reader->answer(reply("RS"));
    EXPECT_EQ(SendBandCmd("Sa00123456789ABCDEFGHIJKLMN", answer), 1);
    EXPECT_EQ(std::string(answer, 24), reply("RS"));
    EXPECT_EQ(told(), "> \"Sa00123456789ABCDEFGHIJ\\r\"\n"
                      "~ 5 ms\n"
                      "< \"RSxxxxxxxxxxxxxxxxxxxxxx\"\n");
}

TEST_F(StripeOnLine, TellsZerosForAReplyThatIsNoSuccess) {
    char answer[24] = {'R'};
    reader->answer(reply("ERZ"));
    EXPECT_EQ(SendBandCmd("QRZ", answer), 0);
    EXPECT_EQ(std::string(answer, 24), std::string(24, '\0'));
}

// Two of the commands that begin with F write the reader's flash.
TEST_F(StripeOnLine, NeedsTimeForItsFlash) {
    char answer[24];
    for (const char* const command : {"FW", "FD", "FR"}) {
        reader->answer(reply("R"));
        EXPECT_EQ(SendBandCmd(command, answer), 1);
        EXPECT_EQ(told().find("~ 200 ms") == std::string::npos, command[1] == 'R') << command;
    }
}

TEST_F(StripeOnUsb, IsAskedWithoutAWake) {
    EXPECT_EQ(zelband_IsDevicePresent(), 1);
    EXPECT_EQ(told(), kReport + "~ 2 ms\n"
                                "< 52 52 5A 5A 42 31 30 30 0D 78 78 78 78 78 78 78 78 78 78 78 78 "
                                "78 78 78\n");
}

TEST_F(StripeOnUsb, IsAskedTwiceAtMost) {
    reader->answer("");
    reader->answer(reply("E"));
    EXPECT_EQ(zelband_IsDevicePresent(), 0);
    EXPECT_EQ(told(), kReport +
                          "~ 2 ms\n"
                          "! no answer\n"
                          "~ 2 ms\n"
                          "~ 25 ms\n" +
                          kReport +
                          "~ 2 ms\n"
                          "< 45 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 "
                          "78\n"
                          "~ 2 ms\n");
}
