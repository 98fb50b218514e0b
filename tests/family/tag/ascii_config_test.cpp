// SPDX-License-Identifier: MIT
// Reading a configuration by the ASCII protocol.
#include "frame/zelTagAPI.h"
#include "tests/family/tag/ascii_script.h"

#include <algorithm>
#include <cstring>

using namespace zel::test;

namespace {

const std::string kPrompt = "Norvanex>";

// Each variable of the listing, with values that tell them apart.
const std::string kVariables = "ZTAG:out.led=2\rZTAG:time.hold=1001\rZTAG:time.lo=2002\r"
                               "ZTAG:out.beep=1\rZTAG:out.relay=7\rZTAG:wieg.id.bits=16\r"
                               "ZTAG:wieg.qual=True\rZTAG:wieg.qual.bits=37\r"
                               "ZTAG:wieg.strip.lead.bits=20\rZTAG:wieg.strip.trail.bits=0x3\r"
                               "ZTAG:chr.gone.1='A'\rZTAG:chr.gone.2='\\x42'\rZTAG:chr.1='a'\r"
                               "ZTAG:chr.2='b'\rZTAG:chr.3='c'\rZTAG:chr.count.lead=1\r"
                               "ZTAG:chr.count.trail=2\rZTAG:chr.eol='\\x0D'\r"
                               "ZTAG:disp.fac.digits=3\rZTAG:chr.fac='-'\rZTAG:disp.id.digits=5\r"
                               "ZTAG:op.sdk=True\rZTAG:disp.fac.send=1\rZTAG:op.cont=False\r"
                               "ZTAG:disp.fac.strip=True\rZTAG:op.beep=True\rZTAG:disp.id.hex=0\r"
                               "ZTAG:wieg.rev.bytes=1\rZTAG:wieg.rev.bits=0\rZTAG:wieg.inv.bits=1\r"
                               "ZTAG:dev.luid=4660\r";

// Some variables in front, then lines that mean nothing, `size` bytes in all.
std::string listingOf(const std::string& variables, std::size_t size = 900) {
    return variables + std::string(size - variables.size() - kPrompt.size() - 1, 'x') + '\r' +
           kPrompt;
}

class AsciiConfigurationRead : public AsciiProtocolTest {
protected:
    AsciiConfigurationRead() {
        script_->listing = listingOf(kVariables);
        script_->version = "{1.4.2}\r" + kPrompt;
    }

    // Reads one variable's line with another value.
    void readWith(const std::string& line) {
        script_->listing = listingOf("ZTAG:" + line + '\r');
        EXPECT_EQ(AcpReadCfg(), 1);
    }
};

} // namespace

TEST_F(AsciiConfigurationRead, SetsTheLinkUpAndAsksForVariablesAndVersion) {
    EXPECT_EQ(AcpReadCfg(), 1);
    EXPECT_EQ(heard(), "\rZTAG:cmd.echo=0\rZTAG:cmd.prompt=1\rZTAG:VAR\r\rZTAG:DEV.VER\r");
    EXPECT_EQ(pauses(), "~ 1 ms x 18\n~ 20 ms\n~ 1 ms x 5\n~ 5 ms x 100\n"
                        "~ 1 ms x 7\n~ 5 ms x 100\n~ 20 ms\n");
}

TEST_F(AsciiConfigurationRead, DiscardsTheEchoOfTheSetUpLine) {
    script_->answer = "echo\r";
    EXPECT_EQ(AcpReadCfg(), 1);
    EXPECT_NE(told().find("~ 20 ms\nx \"echo\\recho\\r\"\n"), std::string::npos);
}

TEST_F(AsciiConfigurationRead, FillsTheCountsAndTimes) {
    EXPECT_EQ(AcpReadCfg(), 1);
    const tsTagCfg& read = config();
    EXPECT_EQ(read.sTimeParms.iIDHoldTO, 1001) << "milliseconds as they are";
    EXPECT_EQ(read.sTimeParms.iIDLockOutTm, 2002);
    EXPECT_EQ(read.sIDBitCnts.iIDBitCnt, 16);
    EXPECT_EQ(read.sIDBitCnts.iTotalBitCnt, 37);
    EXPECT_EQ(read.sIDBitCnts.iLeadParityBitCnt, 20);
    EXPECT_EQ(read.sIDBitCnts.iTrailParityBitCnt, 3);
    EXPECT_EQ(read.ExtBlock[0], 20);
    EXPECT_EQ(read.ExtBlock[1], 3);
    EXPECT_EQ(read.sIDDispParms.iFACDispLen, 3);
    EXPECT_EQ(read.sIDDispParms.iIDDispLen, 5);
    EXPECT_EQ(record().iLUID, 4660);
}

TEST_F(AsciiConfigurationRead, FillsTheFlags) {
    EXPECT_EQ(AcpReadCfg(), 1);
    const sCfgFlags& flags = config().sCfgFlags;
    EXPECT_EQ(flags.bFixLenDsp, 1) << "there are facility digits";
    EXPECT_EQ(flags.bFrcBitCntEx, 1);
    EXPECT_EQ(flags.bStripFac, 1);
    EXPECT_EQ(flags.bSndFac, 1);
    EXPECT_EQ(flags.bUseDelFac2Id, '-') << "the delimiter itself";
    EXPECT_EQ(flags.bNoUseELChar, 0);
    EXPECT_EQ(flags.bSndOnRx, 0);
    EXPECT_EQ(flags.bHaltKBSnd, 1);
    const sCfgFlags2& more = config().sCfgFlags2;
    EXPECT_EQ(more.bBeepID, 1);
    EXPECT_EQ(more.bDspHex, 0);
    EXPECT_EQ(more.bRevBytes, 1);
    EXPECT_EQ(more.bRevWiegBits, 0);
    EXPECT_EQ(more.bWiegInvData, 1);
}

TEST_F(AsciiConfigurationRead, FillsCharactersAndOutputs) {
    EXPECT_EQ(AcpReadCfg(), 1);
    const tsTagCfg& read = config();
    EXPECT_EQ(read.sIDDispParms.iFACIDDelim, '-');
    EXPECT_EQ(read.sIDDispParms.iELDelim, 13);
    EXPECT_EQ(read.sIDDispParms2.iCrdGnChr0, 'A');
    EXPECT_EQ(read.sIDDispParms2.iCrdGnChr1, 'B');
    EXPECT_EQ(read.sIDDispParms2.iLeadChrCnt, 1);
    EXPECT_EQ(read.sIDDispParms3.iTrailChrCnt, 2);
    EXPECT_EQ(read.sLEDCtrl.bAppCtrlsLED, 1);
    EXPECT_EQ(read.sLEDCtrl.iRedLEDState, 0);
    EXPECT_EQ(read.sLEDCtrl.iGrnLEDState, 1);
    EXPECT_EQ(read.sBprRlyCtrl.iBeeperState, 1);
    EXPECT_EQ(read.sBprRlyCtrl.iRelayState, 7);
}

TEST_F(AsciiConfigurationRead, SetsWhatHasNoVariable) {
    config().sLEDCtrl.bVolatile = config().sCfgFlags2.bUseInvDataF = 1;
    EXPECT_EQ(AcpReadCfg(), 1);
    EXPECT_EQ(config().sCfgFlags3.bUse64Bit, 1);
    EXPECT_EQ(config().sBprRlyCtrl.bVolatile, 1);
    EXPECT_EQ(config().sLEDCtrl.bVolatile, 0);
    EXPECT_EQ(config().sTimeParms.iUSBKeyPrsTm, 20);
    EXPECT_EQ(config().sTimeParms.iUSBKeyRlsTm, 20);
    EXPECT_EQ(config().sCfgFlags2.bUseInvDataF, 0);
    EXPECT_EQ(config().sCfgFlags2.bUseLeadChrs, 1);
}

TEST_F(AsciiConfigurationRead, TellsTheStatesOfTheLedsOnlyWhereTheApplicationControlsThem) {
    config().sLEDCtrl.iRedLEDState = 1;
    readWith("out.led=255");
    EXPECT_EQ(config().sLEDCtrl.bAppCtrlsLED, 0);
    EXPECT_EQ(config().sLEDCtrl.iRedLEDState, 1) << "left alone";
    readWith("out.led=2");
    EXPECT_EQ(config().sLEDCtrl.bAppCtrlsLED, 1);
    EXPECT_EQ(config().sLEDCtrl.iRedLEDState, 0);
    EXPECT_EQ(config().sLEDCtrl.iGrnLEDState, 1);
    readWith("out.led=5");
    EXPECT_EQ(config().sLEDCtrl.iRedLEDState, 1);
    EXPECT_EQ(config().sLEDCtrl.iGrnLEDState, 0) << "further bits are none of its";
}

TEST_F(AsciiConfigurationRead, PutsCountsOutOfRangeToTheirLeast) {
    const struct {
        const char* line;
        int bits;
        int total;
    } rows[] = {{"wieg.qual.bits=12", 1, 26}, {"wieg.qual.bits=26", 1, 26},
                {"wieg.qual.bits=27", 1, 27}, {"wieg.id.bits=65", 1, 26},
                {"wieg.id.bits=64", 64, 26},  {"wieg.id.bits=0", 1, 26},
                {"wieg.id.bits=-9", 1, 26},   {"x=1", 1, 26}};
    for (const auto& row : rows) {
        readWith(row.line);
        EXPECT_EQ(config().sIDBitCnts.iIDBitCnt, row.bits) << row.line;
        EXPECT_EQ(config().sIDBitCnts.iTotalBitCnt, row.total) << row.line;
    }
}

TEST_F(AsciiConfigurationRead, TakesAnEndOfLineCharacterOf0ForNone) {
    readWith("chr.eol='\\x0D'");
    EXPECT_EQ(config().sIDDispParms.iELDelim, 13);
    EXPECT_EQ(config().sCfgFlags.bNoUseELChar, 0);
    readWith("chr.eol='\\x00'");
    EXPECT_EQ(config().sIDDispParms.iELDelim, 0);
    EXPECT_EQ(config().sCfgFlags.bNoUseELChar, 1);
}

TEST_F(AsciiConfigurationRead, FixesTheLengthOnlyWithFacilityDigits) {
    for (const auto& [line, isFixed] :
         {std::pair{"disp.fac.digits=1", 1}, {"disp.fac.digits=0", 0}, {"disp.fac.digits=-1", 0}}) {
        readWith(line);
        EXPECT_EQ(config().sCfgFlags.bFixLenDsp, isFixed) << line;
    }
}

TEST_F(AsciiConfigurationRead, SharesThreeCharactersAmongLeadsAndTrails) {
    const struct {
        int count;
        const char* trails;
    } rows[] = {{0, "abc"}, {1, "bc"}, {2, "c"},    {3, ""},
                {4, ""},    {-4, ""},  {32767, ""}, {-32768, ""}};
    for (const auto& row : rows) {
        config().sIDDispParms3 = {0, 9, 9, 9, 0, 0, 0, 0};
        readWith("chr.1='a'\rZTAG:chr.2='b'\rZTAG:chr.3='c'\rZTAG:chr.count.lead=" +
                 std::to_string(row.count));
        const sIDDispParms2& leads = config().sIDDispParms2;
        EXPECT_EQ(leads.iLeadChr0, 'a');
        EXPECT_EQ(leads.iLeadChr1, 'b');
        EXPECT_EQ(leads.iLeadChr2, 'c') << "whatever the count says";
        const sIDDispParms3& trails = config().sIDDispParms3;
        char expected[4] = {};
        std::strcpy(expected, row.trails);
        EXPECT_EQ(trails.iTrailChr0, expected[0]) << row.count;
        EXPECT_EQ(trails.iTrailChr1, expected[1]) << row.count;
        EXPECT_EQ(trails.iTrailChr2, expected[2]) << row.count;
    }
}
