// SPDX-License-Identifier: MIT
// Writing a configuration by the ASCII protocol, and both ways with a simulated reader.
#include "frame/zelTagAPI.h"
#include "tests/family/tag/ascii_script.h"

using namespace zel::test;

namespace {

class AsciiConfigurationWrite : public AsciiProtocolTest {
protected:
    AsciiConfigurationWrite() {
        tsTagCfg& filled = config();
        filled.sLEDCtrl.bAppCtrlsLED = filled.sLEDCtrl.iRedLEDState = 1;
        filled.sCfgFlags = {0, 1, 1, 0, 1, 0, 1, 0};
        filled.sCfgFlags2.bBeepID = filled.sCfgFlags2.bRevBytes = 1;
        filled.sCfgFlags2.bWiegInvData = 1;
        filled.sIDBitCnts = {20, 2, 200, 37, 0, 0, 0, 0};
        filled.sIDDispParms = {0x2D, 0x0D, 5, 3, 0, 0, 0, 0};
        filled.sIDDispParms2 = {1, 'a', 'b', 'c', 'A', 'B', 0, 0};
        filled.sIDDispParms3 = {2, 'x', 'y', 'z', 0, 0, 0, 0};
    }

    // The values of the three shared characters.
    std::string characters() {
        const std::string text = heard();
        const std::size_t first = text.find("chr.1='\\x");
        const std::size_t end = text.find("chr.count.lead");
        return first == text.npos ? "none" : text.substr(first, end - first);
    }
};

} // namespace

TEST_F(AsciiConfigurationWrite, AssignsInAFixedOrder) {
    EXPECT_EQ(AcpWriteCfg(), 1);
    EXPECT_EQ(heard(), "\rZTAG:cmd.echo=0\rZTAG:cmd.prompt=1\r"
                       "\rztag:out.led=1\r"
                       "\rztag:wieg.qual=1\r"
                       "\rztag:op.sdk=0\r"
                       "\rztag:disp.fac.send=0\r"
                       "\rztag:op.cont=1\r"
                       "\rztag:disp.fac.strip=1\r"
                       "\rztag:chr.fac='\\x01'\r"
                       "\rztag:op.beep=1\r"
                       "\rztag:disp.id.hex=0\r"
                       "\rztag:wieg.rev.bytes=1\r"
                       "\rztag:wieg.rev.bits=0\r"
                       "\rztag:wieg.inv.bits=1\r"
                       "\rztag:wieg.id.bits=200\r"
                       "\rztag:wieg.qual.bits=37\r"
                       "\rztag:wieg.strip.lead.bits=20\r"
                       "\rztag:wieg.strip.trail.bits=2\r"
                       "\rztag:chr.eol='\\x0D'\r"
                       "\rztag:disp.fac.digits=3\r"
                       "\rztag:chr.fac='\\x2D'\r"
                       "\rztag:disp.id.digits=5\r"
                       "\rztag:chr.gone.1='\\x41'\r"
                       "\rztag:chr.gone.2='\\x42'\r"
                       "\rztag:chr.1='\\x61'\r"
                       "\rztag:chr.2='\\x78'\r"
                       "\rztag:chr.3='\\x79'\r"
                       "\rztag:chr.count.lead=1\r"
                       "\rztag:chr.count.trail=2\r");
}

TEST_F(AsciiConfigurationWrite, SetsTheFlagOfAFixedLengthInTheRecord) {
    EXPECT_EQ(AcpWriteCfg(), 1);
    EXPECT_EQ(config().sCfgFlags.bFixLenDsp, 1);
    config().sIDDispParms.iFACDispLen = 0;
    EXPECT_EQ(AcpWriteCfg(), 1);
    EXPECT_EQ(config().sCfgFlags.bFixLenDsp, 0);
}

TEST_F(AsciiConfigurationWrite, SharesThreeCharactersAmongLeadsAndTrails) {
    const struct {
        std::int16_t leads;
        const char* lines;
    } rows[] = {{0, "chr.1='\\x78'\r\rztag:chr.2='\\x79'\r\rztag:chr.3='\\x7A'\r\rztag:"},
                {1, "chr.1='\\x61'\r\rztag:chr.2='\\x78'\r\rztag:chr.3='\\x79'\r\rztag:"},
                {2, "chr.1='\\x61'\r\rztag:chr.2='\\x62'\r\rztag:chr.3='\\x78'\r\rztag:"},
                {3, "chr.1='\\x61'\r\rztag:chr.2='\\x62'\r\rztag:chr.3='\\x63'\r\rztag:"},
                {32767, "chr.1='\\x61'\r\rztag:chr.2='\\x62'\r\rztag:chr.3='\\x63'\r\rztag:"},
                {-1, "chr.1='\\x78'\r\rztag:chr.2='\\x79'\r\rztag:chr.3='\\x7A'\r\rztag:"},
                {-32768, "chr.1='\\x78'\r\rztag:chr.2='\\x79'\r\rztag:chr.3='\\x7A'\r\rztag:"}};
    for (const auto& row : rows) {
        config().sIDDispParms2.iLeadChrCnt = row.leads;
        EXPECT_EQ(AcpWriteCfg(), 1);
        EXPECT_EQ(characters(), row.lines) << row.leads;
    }
}

TEST_F(AsciiConfigurationWrite, NeitherAsksForMarksNorClearsThem) {
    config().bDirtyIDFrmt1 = record().bLUIDDirty = 1;
    record().lLastErr = 0x55;
    EXPECT_EQ(AcpWriteCfg(), 1);
    EXPECT_EQ(config().bDirtyIDFrmt1 + record().bLUIDDirty, 2U);
    EXPECT_EQ(record().lLastErr, 0);
}

TEST_F(AsciiConfigurationWrite, CleansTheLinkBehindTheSetUpAndAtTheEnd) {
    EXPECT_EQ(AcpWriteCfg(), 1);
    const std::string all = pauses();
    EXPECT_EQ(all.substr(0, 22), "~ 1 ms x 18\n~ 20 ms\n~ ");
    EXPECT_EQ(all.substr(all.size() - 21), "~ 5 ms x 100\n~ 20 ms\n");
    EXPECT_EQ(all.find("~ 20 ms", 20), all.size() - 8) << "and nowhere between";
}

TEST_F(AsciiConfigurationWrite, SucceedsWithoutAStream) {
    closeLine();
    EXPECT_EQ(AcpWriteCfg(), 1);
    takeLineAway();
    EXPECT_EQ(AcpWriteCfg(), 1);
    EXPECT_EQ(heard(), "");
}

TEST_F(AsciiConfigurationWrite, AsksForTheVolumeByAFrameAndPauses) {
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_NE(heard().find(std::string("\xFA\x0C\x06\x00\x00", 5)), std::string::npos);
    const std::string all = pauses();
    EXPECT_EQ(all.substr(all.size() - 10), "~ 1200 ms\n");
}

TEST_F(StreamTest, ReadsAndWritesASimulatedReaderByTheAsciiProtocol) {
    const auto stream = connectSimulated();
    stream->reader().settings().luid = 0x1234;
    UseAsciiCommandProtocol(1);
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(record().iLUID, 0x1234);
    EXPECT_EQ(record().iDID, 0x0142);
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 1000);
    EXPECT_EQ(config().sIDBitCnts.iIDBitCnt, 16);
    EXPECT_EQ(config().sCfgFlags.bFixLenDsp, 1);
    config().sIDBitCnts.iLeadParityBitCnt = 20;
    config().sIDDispParms2 = {1, 'a', 0, 0, 0, 0, 0, 0};
    config().sIDDispParms3 = {1, 'b', 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(WriteCfg(), 1);
    config().sIDBitCnts.iLeadParityBitCnt = config().sIDDispParms3.iTrailChr0 = 0;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(config().sIDBitCnts.iLeadParityBitCnt, 20);
    EXPECT_EQ(config().sIDDispParms3.iTrailChr0, 'b');
    stream->reader().present(zel::sim::card26(26, 3512));
    unsigned char id[32] = {};
    EXPECT_EQ(GetActiveID(id, 8), 26);
    EXPECT_EQ(ResetFactoryDflts(), 1);
    EXPECT_EQ(stream->reader().configuration(0).block[3][0], 0);
}
