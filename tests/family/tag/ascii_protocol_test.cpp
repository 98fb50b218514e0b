// SPDX-License-Identifier: MIT
// Single lines of the ASCII protocol: assignments, beeps, LEDs, the reset; and which readers they
// are for.
#include "family/tag/tag.h"
#include "frame/zelTagAPI.h"
#include "tests/family/tag/ascii_script.h"

#include <climits>

using namespace zel::test;

namespace {
class Assignment : public AsciiProtocolTest {};
class AsciiBeep : public AsciiProtocolTest {};
class AsciiLed : public AsciiProtocolTest {};
class AsciiReset : public AsciiProtocolTest {};
class AsciiProtocol : public AsciiProtocolTest {};
class AsciiProtocolOverUsb : public LibraryTest {
protected:
    ~AsciiProtocolOverUsb() override { useACPMode = 0; }
};
} // namespace

TEST_F(Assignment, GoesOutTwoCharactersAtATime) {
    SendAcpCommand("chr.fac='\\x%02X'", 0x2D);
    EXPECT_EQ(told(), "> \"\\rz\"\n~ 1 ms\n"
                      "> \"ta\"\n~ 1 ms\n"
                      "> \"g:\"\n~ 1 ms\n"
                      "> \"ch\"\n~ 1 ms\n"
                      "> \"r.\"\n~ 1 ms\n"
                      "> \"fa\"\n~ 1 ms\n"
                      "> \"c=\"\n~ 1 ms\n"
                      "> \"'\\\\\"\n~ 1 ms\n"
                      "> \"x2\"\n~ 1 ms\n"
                      "> \"D'\"\n~ 1 ms\n"
                      "> \"\\r\"\n~ 1 ms\n"
                      "~ 5 ms x 100\n");
}

TEST_F(Assignment, DropsTwelveBytesOfItsAnswer) {
    script_->answer = "ABCDEFGHIJKLMN";
    SendAcpCommand("op.beep=%d", 1);
    EXPECT_EQ(pauses(), "~ 1 ms x 8\n") << "they came with the last pause";
    char rest[4] = {};
    EXPECT_EQ(ReadSerialPort(reinterpret_cast<unsigned char*>(rest), 3), 2);
    EXPECT_STREQ(rest, "MN");
}

TEST_F(Assignment, PrintsItsNumberAsItIs) {
    const struct {
        const char* format;
        int value;
        const char* line;
    } rows[] = {{"wieg.id.bits=%d", 64, "\rztag:wieg.id.bits=64\r"},
                {"op.sdk=%d", -32768, "\rztag:op.sdk=-32768\r"},
                {"op.sdk=%d", INT_MIN, "\rztag:op.sdk=-2147483648\r"},
                {"chr.eol='\\x%02X'", 0x0A, "\rztag:chr.eol='\\x0A'\r"},
                {"chr.eol='\\x%02X'", 0x161, "\rztag:chr.eol='\\x161'\r"},
                {"chr.eol='\\x%02X'", -1, "\rztag:chr.eol='\\xFFFFFFFF'\r"},
                {"cfg.save", 7, "\rztag:cfg.save\r"}};
    for (const auto& row : rows) {
        SendAcpCommand(row.format, row.value);
        EXPECT_EQ(heard(), row.line);
    }
}

TEST_F(Assignment, NeedsAnOpenStreamAndAFormat) {
    SendAcpCommand(nullptr, 1);
    closeLine();
    SendAcpCommand("op.sdk=%d", 1);
    takeLineAway();
    SendAcpCommand("op.sdk=%d", 1);
    EXPECT_EQ(heard(), "");
    EXPECT_EQ(pauses(), "");
}

TEST_F(AsciiBeep, IsShortOrLong) {
    const struct {
        unsigned char code;
        short isLong;
        const char* line;
    } rows[] = {{0, 0, "\rztag:out.beep.short=1\r"},
                {9, 0, "\rztag:out.beep.short=5\r"},
                {1, 1, "\rztag:out.beep.long=1\r"},
                {9, 1, "\rztag:out.beep.long=2\r"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        record().lLastErr = 5;
        EXPECT_EQ(BeepNow(row.code, row.isLong), 1);
        EXPECT_EQ(heard(), row.line);
        EXPECT_EQ(GetLastLibErr(), 0);
    }
}

TEST_F(AsciiBeep, SucceedsOnAClosedStreamToo) {
    closeLine();
    EXPECT_EQ(BeepNow(1, 0), 1);
}

TEST_F(AsciiLed, IsThatOfTheConfigurationAndNotOfTheCall) {
    config().sLEDCtrl.bAppCtrlsLED = 1;
    config().sLEDCtrl.iGrnLEDState = 1;
    record().lLastErr = 5;
    sLEDCtrl leds = {};
    leds.bVolatile = leds.iRedLEDState = 1;
    EXPECT_EQ(SetLEDCtrl(&leds), 1);
    EXPECT_EQ(heard(), "\rztag:out.led=2\r");
    EXPECT_EQ(pauses(), "~ 1 ms x 8\n~ 5 ms x 100\n~ 20 ms\n");
    EXPECT_EQ(config().sLEDCtrl.iRedLEDState, 0) << "the record isn't stored";
    EXPECT_EQ(config().sLEDCtrl.bVolatile, 0);
    EXPECT_EQ(config().bDirtyIDFrmt2, 0U);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(AsciiLed, Is255WhereTheReaderControlsIt) {
    config().sLEDCtrl.iRedLEDState = config().sLEDCtrl.iGrnLEDState = 1;
    sLEDCtrl leds = {};
    leds.bVolatile = leds.bAppCtrlsLED = 1;
    SetLEDCtrl(&leds);
    EXPECT_EQ(heard(), "\rztag:out.led=255\r");
    config().sLEDCtrl.bAppCtrlsLED = 1;
    SetLEDCtrl(&leds);
    EXPECT_EQ(heard(), "\rztag:out.led=3\r");
}

TEST_F(AsciiLed, ThatIsNotVolatileIsStoredForTheNextWrite) {
    sLEDCtrl leds = {};
    leds.iRedLEDState = 1;
    EXPECT_EQ(SetLEDCtrl(&leds), 1);
    EXPECT_EQ(heard(), "");
    EXPECT_EQ(config().sLEDCtrl.iRedLEDState, 1);
    EXPECT_EQ(config().bDirtyIDFrmt2, 1U);
}

TEST_F(AsciiLed, OfANullRecordIsRefused) {
    EXPECT_EQ(SetLEDCtrl(nullptr), 0);
    EXPECT_EQ(GetLastLibErr(), 0x200001);
    EXPECT_EQ(heard(), "");
}

// A beeper and a relay have no line: they go by a frame.
TEST_F(AsciiLed, IsTheOnlyOutputWithALine) {
    sBprRlyCtrl outputs = {};
    outputs.bVolatile = outputs.iRelayState = 1;
    EXPECT_EQ(SetBprRlyCtrl(&outputs), 1);
    EXPECT_EQ(heard(), std::string("\xFA\x81\x02\x00\x08", 5));
    EXPECT_EQ(config().sBprRlyCtrl.iRelayState, 1);
}

TEST_F(AsciiReset, WaitsAndReadsNothingBack) {
    record().lLastErr = 5;
    EXPECT_EQ(ResetFactoryDflts(), 1);
    EXPECT_EQ(heard(), "\rZTAG:CFG.RESET\r");
    EXPECT_EQ(pauses(), "~ 1 ms x 8\n~ 1200 ms\n~ 20 ms\n");
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(config().bCfgValid, 0U);
}

TEST_F(AsciiReset, SucceedsOnAClosedStreamToo) {
    closeLine();
    EXPECT_EQ(ResetFactoryDflts(), 1);
    takeLineAway();
    EXPECT_EQ(ResetFactoryDflts(), 1);
    EXPECT_EQ(heard(), "");
}

TEST_F(AsciiProtocol, IsChosenForAllReadersAndForgottenByStartUp) {
    useACPMode = 0;
    EXPECT_EQ(UseAsciiCommandProtocol(-2), 1);
    EXPECT_EQ(useACPMode, -2);
    InitSerialParms();
    EXPECT_EQ(useACPMode, 0);
}

TEST_F(AsciiProtocol, IsNotForOtherProducts) {
    useACPMode = 0;
    record().iProduct = ZELTAGAPI_ZELBAND;
    UseAsciiCommandProtocol(1);
    EXPECT_EQ(useACPMode, 0);
}

TEST_F(AsciiProtocol, LeavesPresenceAndServicesToFrames) {
    EXPECT_EQ(zeltag_IsDevicePresent(), 0);
    EXPECT_EQ(heard(), "\xFA\x04\xED\xED\x04\xFA\x04\xED\xED\x04");
    EXPECT_EQ(GetBeeperVolume(), -1);
    EXPECT_EQ(heard(), std::string("\xFA\x0C\x06\x00\x00", 5));
}

TEST_F(AsciiProtocolOverUsb, ChangesNothing) {
    const auto reader = connectReader();
    reader->present(zel::sim::card26(26, 3512));
    EXPECT_EQ(UseAsciiCommandProtocol(1), 1);
    unsigned char id[32] = {};
    EXPECT_EQ(GetActiveID(id, 8), 26);
    EXPECT_EQ(BeepNow(2, 0), 1);
    EXPECT_EQ(reader->lastBeep(), 2);
    sLEDCtrl leds = {};
    leds.bVolatile = leds.iRedLEDState = 1;
    EXPECT_EQ(SetLEDCtrl(&leds), 1);
    EXPECT_TRUE(reader->isRedOn());
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(ResetFactoryDflts(), 1);
    EXPECT_FALSE(reader->isRedOn());
}
