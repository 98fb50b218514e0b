// SPDX-License-Identifier: MIT
// The whole configuration, byte for byte: read, written, reset.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"

#include <cstring>

using namespace zel::test;

namespace {

constexpr std::string_view kLetters = "abcdefghijk";

// A reader of factory settings but for its third field, its system bytes and its LEDs.
class BandConfig : public BandLineTest {
protected:
    BandConfig() {
        auto& changed = reader->settings();
        changed.field[2] = {{0xC5, 'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H'},
                            {0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18},
                            {0xE1, 4, 5, 6, 7}};
        changed.system = {0xC5, 5, 255, 0x34, 0x12, 0xA9};
        changed.leds = {0x1B, 0x02};
    }

    // The area that such a reader's answers make.
    static tsBand wanted() {
        tsBand area = {};
        area.iActTrack = 2;
        area.iActLength = 32;
        area.iActTerm = 255;
        for (BandUserField& field : area.UserField) {
            field.Track = 2;
            field.Length = 32;
            field.Termination = 255;
        }
        area.UserField[0].Enable = 1;
        area.UserField[2] = {1, 1, 1, 4, 5, 6, 7, 1, 1, 1, 5, {}};
        std::memcpy(area.UserField[2].Keybyte, "ABCDEFGH\x11\x12\x13\x14\x15\x16\x17\x18", 16);
        area.HaltKBSend = 1;
        area.UseNumKP = 1;
        area.TrackEnables = 5;
        area.KeyPressTime = 20;
        area.KeyReleaseTime = 1020;
        area.iBandLUID = 0x1234;
        area.Beeper = 0xA9;
        const std::uint8_t colours[] = {2, 0, 1, 2, 3};
        std::copy(std::begin(colours), std::end(colours), area.LedColor);
        return area;
    }

    static void expectArea(const tsBand& area) {
        for (int i = 0; i < 11; ++i)
            EXPECT_EQ(std::memcmp(&settings().UserField[i], &area.UserField[i], 27), 0) << i + 1;
        EXPECT_EQ(std::memcmp(settings().LedColor, area.LedColor, 5), 0);
        EXPECT_EQ(settings().HaltKBSend, area.HaltKBSend);
        EXPECT_EQ(settings().UseNumKP, area.UseNumKP);
        EXPECT_EQ(settings().TrackEnables, area.TrackEnables);
        EXPECT_EQ(settings().KeyPressTime, area.KeyPressTime);
        EXPECT_EQ(settings().KeyReleaseTime, area.KeyReleaseTime);
        EXPECT_EQ(settings().iBandLUID, area.iBandLUID);
        EXPECT_EQ(settings().Beeper, area.Beeper);
    }

    // A field's three commands, and the bytes that go one way or the other.
    static std::string fieldTrace(char letter, bool isWrite) {
        const std::string first = letter == 'a'   ? "800000000000000000"
                                  : letter == 'c' ? "C54142434445464748"
                                                  : "000000000000000000";
        const std::string second = letter == 'c' ? "1112131415161718" : "0000000000000000";
        const std::string control = letter == 'c' ? "E104050607" : "02000020FF";
        std::string text;
        for (const std::string& bytes : {'0' + first, '1' + second, 'C' + control}) {
            const std::string name = std::string(1, letter) + bytes[0];
            text += isWrite ? traced('S' + std::string(1, letter) + bytes, 'R' + name)
                            : traced('G' + name, 'R' + (letter + bytes));
        }
        return text;
    }

    static std::string readTrace() {
        std::string text = traced("QRZ", "RRZSIMULATED-STRIPE-001");
        text += traced("QSV", "RSV0B010123");
        for (const char letter : kLetters)
            text += fieldTrace(letter, false);
        return text + traced("GS0", "RS0C505FF3412A9") + traced("GL0", "RL01B02");
    }

    static std::string writeTrace() {
        std::string text = traced("FR", "RR");
        for (const char letter : kLetters)
            text += fieldTrace(letter, true);
        return text + traced("SS0C505FF3412A9", "RS0") + traced("SL01B02", "RL0") + "> " +
               quotedFrame("FW") + "~ 200 ms\n< " + quotedFrame("RW") + "~ 1100 ms\n";
    }

    // The time that comes back from the reader for one that was written.
    static int keyTimeReadBack(int time) {
        settings().KeyPressTime = settings().KeyReleaseTime = static_cast<std::uint16_t>(time);
        EXPECT_EQ(zelband_WriteCfg(), 1);
        settings().KeyPressTime = settings().KeyReleaseTime = 0xAAAA;
        EXPECT_EQ(zelband_ReadCfg(), 1);
        EXPECT_EQ(settings().KeyPressTime, settings().KeyReleaseTime);
        return settings().KeyPressTime;
    }

    std::string partNumberFrom(const std::string& reply) {
        std::memset(DevDat[0].szPartNum, 'x', sizeof DevDat[0].szPartNum);
        reader->replyWith("QRZ", reply);
        EXPECT_EQ(zelband_ReadCfg(), 1);
        EXPECT_EQ(DevDat[0].szPartNum[24], '\0');
        return DevDat[0].szPartNum;
    }
};

class BandConfigOnUsb : public BandUsbTest {};

} // namespace

TEST_F(BandConfig, IsReadIn37Exchanges) {
    DevDat[0].lLastErr = 7;
    settings().bBandCfgDirty = 1;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(told(), readTrace());
    EXPECT_EQ(reader->commands(), 37);
    EXPECT_EQ(error(), 0);
    EXPECT_EQ(settings().bBandCfgDirty, 0U);
    expectArea(wanted());
}

TEST_F(BandConfig, TellsWhatTheReaderIs) {
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_STREQ(getPartNumberString(), "SIMULATED-STRIPE-001 ");
    EXPECT_EQ(DevDat[0].iDID, 0x0B01);
    EXPECT_EQ(DevDat[0].iFWVer, 0x0123);
    EXPECT_EQ(DevDat[0].iLUID, 0x1234);
    EXPECT_EQ(GetFirmwareVersion(0, 0), 0x0B01U);
    EXPECT_EQ(GetFirmwareVersion(0, 1), 0x0123U);
}

TEST_F(BandConfig, LeavesTheActiveFieldAlone) {
    zelband_SetActiveID(1, 3, 4, 5);
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(settings().iActTrack, 1);
    EXPECT_EQ(settings().iActField, 3);
    EXPECT_EQ(settings().iActOffset, 4);
    EXPECT_EQ(settings().iActTerm, 5);
}

TEST_F(BandConfig, IsWrittenIn37Exchanges) {
    settings() = wanted();
    settings().iBandLUID = 0;
    DevDat[0].iLUID = 0x1234;
    DevDat[0].lLastErr = 7;
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(told(), writeTrace());
    EXPECT_EQ(reader->commands(), 37);
    EXPECT_EQ(error(), 0);
    EXPECT_EQ(settings().iBandLUID, 0x1234);
}

TEST_F(BandConfig, SendsBitsOfWhatDoesNotFit) {
    BandUserField& field = settings().UserField[0];
    field = {4, 8, 0x87, 1, 2, 3, 4, 16, 32, 64, 0xFF, {}};
    settings().UserField[1].nKeys = 0xC5;
    settings().TrackEnables = 0xF9;
    settings().HaltKBSend = settings().UseNumKP = 2;
    zelband_WriteCfg();
    const std::string trace = told();
    for (const std::string frame : {"Sa0FF", "SaCE301020304", "Sb005", "SS0C1"})
        EXPECT_NE(trace.find("> " + quotedFrame(frame)), trace.npos) << frame;
}

TEST_F(BandConfig, ComesBackAsItWasWritten) {
    settings() = wanted();
    DevDat[0].iLUID = 0x1234;
    reader->settings() = zel::sim::bandFactorySettings();
    EXPECT_EQ(WriteCfg(), 1);
    settings() = {};
    EXPECT_EQ(ReadCfg(), 1);
    expectArea(wanted());
}

TEST_F(BandConfig, KeepsKeyTimesInUnitsOfFourBelow1024) {
    const std::pair<int, int> cases[] = {{0, 0},    {3, 0},       {4, 4},
                                         {7, 4},    {1020, 1020}, {1023, 1020},
                                         {1024, 0}, {1031, 4},    {65535, 1020}};
    for (const auto& [written, readBack] : cases)
        EXPECT_EQ(keyTimeReadBack(written), readBack) << written;
}

TEST_F(BandConfig, EndsThePartNumberInABlank) {
    EXPECT_EQ(partNumberFrom("RRZAB\rCD"), "AB CD" + std::string(15, '0') + '\r');
    EXPECT_EQ(partNumberFrom("RRZ"), std::string(20, '0') + ' ');
}

TEST_F(BandConfig, KeepsAPartNumberOf21Characters) {
    EXPECT_EQ(partNumberFrom("RRZABCDEFGHIJKLMNOPQRSTU"), "ABCDEFGHIJKLMNOPQRSTU");
}

TEST_F(BandConfig, IsResetThenRead) {
    EXPECT_EQ(ResetFactoryDflts(), 1);
    const std::string trace = told();
    const std::string start =
        "> " + quotedFrame("FD") + "~ 200 ms\n< " + quotedFrame("RD") + "~ 1100 ms\n";
    EXPECT_EQ(trace.substr(0, start.size()), start);
    EXPECT_TRUE(trace.substr(start.size()).starts_with("> " + quotedFrame("QRZ")));
    EXPECT_EQ(reader->commands(), 38);
    EXPECT_EQ(settings().Beeper, 0x19);
    EXPECT_EQ(DevDat[0].iLUID, 0);
}

TEST_F(BandConfigOnUsb, CostsTwoMillisecondsAnExchangeToRead) {
    takePausedMicroseconds();
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(takePausedMicroseconds(), 37 * 2'000U);
    EXPECT_EQ(reader->commands(), 37);
    EXPECT_TRUE(toldBriefly().starts_with("QRZ ~2 QSV ~2 Ga0 ~2 Ga1 ~2 GaC ~2 Gb0 ~2"));
}

TEST_F(BandConfigOnUsb, CostsMoreThanASecondToWrite) {
    EXPECT_EQ(ReadCfg(), 1);
    takePausedMicroseconds();
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(takePausedMicroseconds(), 37 * 2'000U + 200'000 + 1'100'000);
    EXPECT_EQ(reader->commands(), 74);
    EXPECT_TRUE(toldBriefly().ends_with(" SL02701 ~2 FW ~2 ~200 ~1100"));
}

TEST_F(BandConfigOnUsb, CostsTheSameToReset) {
    takePausedMicroseconds();
    EXPECT_EQ(ResetFactoryDflts(), 1);
    EXPECT_EQ(takePausedMicroseconds(), 38 * 2'000U + 200'000 + 1'100'000);
    EXPECT_TRUE(toldBriefly().starts_with("FD ~2 ~200 ~1100 QRZ ~2 QSV"));
}
