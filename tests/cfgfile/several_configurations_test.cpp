// SPDX-License-Identifier: MIT
// A template file read into a reader of several configurations, one after the other.
#include "tests/cfgfile/template_test.h"
#include "tests/family/tag/tag_record.h"

using namespace zel::test;

namespace {

// One configuration of a file.
std::string part(const std::string& settings, const std::string& cardLines) {
    return settings + "\nBEGIN sFldSepData\nEND sFldSepData\n" + cardLines + "##NEXTCONFIG##\n";
}

const std::string kCardLines = "CardType: 5 / x\nCardPriority: 1 / y\n";

class SeveralConfigurations : public TemplateTest {
protected:
    static int read(const std::string& text) {
        writeText("in", kTitleLine + text);
        bus().takeTrace();
        return ReadDevCfgFmFile("in");
    }

    static std::shared_ptr<zel::sim::TagReader> connectThree() {
        auto reader = connectPlus({.tagPlusConfigurations = 3});
        EXPECT_EQ(ReadCfg(), 1);
        return reader;
    }

    static std::string validSlots() {
        std::string slots;
        for (const tsTagCfg& slot : DevDat[0].Cfg)
            slots += slot.bCfgValid != 0 ? '1' : '0';
        return slots;
    }
};

class ManyConfigurations : public TagRecordTest {};

struct CardCase {
    std::string lines;
    int type;
    int priority;
};

// Over a record with card type 7 and priority 1. Each case has three lines, but where it says so.
const CardCase kCardCases[] = {
    {"CardType: 5 / Card type code\nCardPriority: 0 / 0=Low, 1=High Priority\n#\n", 5, 0},
    {"CardType: 5\nCardPriority: 1\n#\n", 5, 1},
    {"CardType:5\nCardPriority:-3x\n#\n", 5, 65533},
    {"CardType: 5\n#\n#\n", 5, 0},
    {"#\nCardPriority: 0\n#\n", 7, 0},
    {"\n\n\n", 7, 1},
    {"cardtype: 5\ncardpriority: 0\n#\n", 7, 1},
    {" CardType: 5\n CardPriority: 0\n#\n", 7, 1},
    {"CardType: x\nCardPriority: x\n#\n", 7, 1},
    {"CardType: 65541\nCardPriority: 65538\n#\n", 5, 2},
    {"CardType: -1\nCardPriority: 99999\n#\n", 65535, 34463},
    {"CardType:\n\n5\nCardPriority:\n0\n#\n", 5, 0}, // a blank stands for any white space
    {"CardPriority: 0\nCardType: 5\n#\n", 7, 1},
};

} // namespace

TEST_F(SeveralConfigurations, TakeEachTheirOwnPart) {
    connectThree();
    EXPECT_EQ(read(part("bSndFac = 1", kCardLines) + part("bStripFac = 1", kCardLines) +
                   part("iIDBitCnt = 9", kCardLines)),
              1);
    EXPECT_EQ(config(0).sCfgFlags.bSndFac, 1);
    EXPECT_EQ(config(1).sCfgFlags.bSndFac, 0);
    EXPECT_EQ(config(1).sCfgFlags.bStripFac, 1);
    EXPECT_EQ(config(2).sIDBitCnts.iIDBitCnt, 9);
}

TEST_F(SeveralConfigurations, AreAllWrittenAfterEachPart) {
    connectThree();
    SetActConfig(1);
    EXPECT_EQ(read(part("bSndFac = 1", "\n\n") + part("bSndFac = 1", "\n\n") +
                   part("bSndFac = 1", "\n\n")),
              1);
    EXPECT_EQ(writes(bus().takeTrace()), "2C1C0BC0"
                                         "2C1BC0C1"
                                         "2BC1C0C2");
    EXPECT_EQ(GetActConfig(), 1);
}

TEST_F(SeveralConfigurations, TakeTheirCardLines) {
    const auto reader = connectThree();
    for (const CardCase& card : kCardCases) {
        config().iCardType = 7;
        config().iCardPriority = 1;
        const std::string block = "BEGIN sFldSepData\nEND sFldSepData\n";
        EXPECT_EQ(read(block + card.lines + "bSndFac = 1\n"), 1);
        EXPECT_EQ(config().iCardType, card.type) << card.lines;
        EXPECT_EQ(config().iCardPriority, card.priority) << card.lines;
        EXPECT_EQ(config(1).sCfgFlags.bSndFac, 1) << "the next part begins behind " << card.lines;
        config(1).sCfgFlags.bSndFac = 0;
        forgiveHaste();
    }
}

TEST_F(SeveralConfigurations, PassOver256CharactersBehindACardType) {
    connectThree();
    const std::string most = "CardType: 5" + std::string(255, 'x') + "\n";
    EXPECT_EQ(read(part("", most + "CardPriority: 1\n")), 1);
    EXPECT_EQ(config().iCardPriority, 1);
    EXPECT_EQ(read(part("", "CardType: 5x" + most.substr(11) + "CardPriority: 1\n")), 1);
    EXPECT_EQ(config().iCardPriority, 0) << "the rest of the line stands for the priority's";
}

TEST_F(SeveralConfigurations, MarkTheNextSlotBeforeItsPartIsRead) {
    connectThree();
    for (tsTagCfg& slot : DevDat[0].Cfg)
        slot.bCfgValid = 0;
    EXPECT_EQ(read(""), 1);
    EXPECT_EQ(validSlots(), "01110000000") << "also behind the last one";
}

TEST_F(SeveralConfigurations, AreElevenAtMost) {
    connectPlus({.tagPlusConfigurations = 11});
    for (tsTagCfg& slot : DevDat[0].Cfg)
        slot.bCfgValid = 0;
    EXPECT_EQ(read(""), 1);
    EXPECT_EQ(validSlots(), "01111111111");
    EXPECT_EQ(record().Band.bBandOpen, 0U);
}

// A record that an application filled: the table of configurations is the bound.
TEST_F(ManyConfigurations, EndWithTheRecord) {
    const TemporaryFolder folder;
    device().iTagPlusState = 2;
    device().iMaxConfig = 12;
    writeText("in", kTitleLine);
    const tsBand behind = device().Band;
    EXPECT_EQ(ReadDevCfgFmFile("in"), 0);
    EXPECT_TRUE(isSame(device().Band, behind));
    device().iTagPlusState = 2;
    device().iMaxConfig = 12;
    EXPECT_EQ(WriteDevCfgToFile("out"), -1);
    EXPECT_EQ(textOf("out").size(),
              goldenFile("plain_unread").size() +
                  11 * std::string("CardType: 0 / Card type code\n"
                                   "CardPriority: 0 / 0=Low, 1=High Priority\n"
                                   "##NEXTCONFIG##\n")
                           .size());
}

TEST_F(SeveralConfigurations, StayAsTheyAreBehindTheEndOfTheFile) {
    connectThree();
    const tsTagCfg second = config(1);
    const tsTagCfg third = config(2);
    EXPECT_EQ(read("bSndFac = 1\nBEGIN sFldSepData\nEND sFldSepData\n"), 1);
    EXPECT_EQ(writes(bus().takeTrace()), "2C1C0BC0"
                                         "2C1C0C1"
                                         "2C1C0C2")
        << "and are written all the same";
    EXPECT_EQ(config(0).sCfgFlags.bSndFac, 1);
    EXPECT_TRUE(isSame(config(1), second));
    EXPECT_TRUE(isSame(config(2), third));
}

TEST_F(SeveralConfigurations, BehindAFailedWriteAreReadAndNotWritten) {
    connectThree();
    bus().takeTrace();
    EXPECT_EQ(read(""), 1);
    const int writeSize = bus().exchanges(0);
    EXPECT_EQ(read(""), 1);
    const int writesSize = bus().exchanges(0) - writeSize;
    ASSERT_EQ(writesSize % 3, 0);
    failFor(writesSize / 3 + 1); // the first exchange of the second write
    EXPECT_EQ(read(part("", kCardLines) + part("bSndFac = 1", kCardLines) +
                   part("bSndFac = 1", kCardLines)),
              0);
    EXPECT_EQ(config(1).sCfgFlags.bSndFac, 1);
    EXPECT_EQ(config(2).sCfgFlags.bSndFac, 1);
    EXPECT_EQ(config(2).iCardType, 5);
    EXPECT_EQ(record().iActConfig, 2) << "the last one stays active";
    const std::string trace = writes(bus().takeTrace());
    EXPECT_TRUE(trace.starts_with("2C1C0C0" + std::string(kSendTries, '2'))) << trace;
    EXPECT_EQ(trace.find('B'), std::string::npos) << trace;
}
