// SPDX-License-Identifier: MIT
// Answers that are cut, late or wrong while a configuration is read by the ASCII protocol.
#include "frame/zelTagAPI.h"
#include "tests/family/tag/ascii_script.h"

using namespace zel::test;

namespace {

const std::string kPrompt = "Norvanex>";
const std::string kHold = "ZTAG:time.hold=777\r";

std::string listingOf(std::size_t size) {
    return kHold + std::string(size - kHold.size() - kPrompt.size(), 'x') + kPrompt;
}

class AsciiListing : public AsciiProtocolTest {
protected:
    AsciiListing() {
        script_->listing = listingOf(701);
        script_->version = "{1.4.2}\r" + kPrompt;
    }
};

class AsciiVersion : public AsciiListing {
protected:
    AsciiVersion() {
        record().lLastErr = 0x55;
        record().iDID = 7;
        config().bDirtyIDFrmt1 = record().bLUIDDirty = 1;
    }

    bool isTaken() {
        AcpReadCfg();
        return config().bCfgValid == 1;
    }
};

} // namespace

TEST_F(AsciiListing, Of700BytesOrFewerFailsEvenWithItsPrompt) {
    EXPECT_EQ(AcpReadCfg(), 1) << "701 bytes";
    for (const std::size_t size : {700U, 100U}) {
        script_->listing = listingOf(size);
        config().sTimeParms.iIDHoldTO = 0;
        EXPECT_EQ(AcpReadCfg(), 0) << size;
        EXPECT_EQ(config().sTimeParms.iIDHoldTO, 777) << "taken all the same";
        EXPECT_EQ(config().bCfgValid, 1U) << "the version came";
    }
}

TEST_F(AsciiListing, WithoutAPromptFailsAndIsTakenAllTheSame) {
    script_->listing = kHold + std::string(900, 'x');
    EXPECT_EQ(AcpReadCfg(), 0);
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 777);
}

TEST_F(AsciiListing, LongerThan2047BytesIsCut) {
    script_->listing = kHold + std::string(2047 - kHold.size() - kPrompt.size(), 'x') + kPrompt;
    EXPECT_EQ(AcpReadCfg(), 1);
    script_->listing = kHold + std::string(2048 - kHold.size() - kPrompt.size(), 'x') + kPrompt;
    EXPECT_EQ(AcpReadCfg(), 0) << "the prompt's last character is left";
}

TEST_F(AsciiListing, ThatDoesNotComeLeavesZerosAndTheLeastCounts) {
    script_->listing.clear();
    script_->version.clear();
    config().sTimeParms.iIDHoldTO = 500;
    config().sIDDispParms.iELDelim = 13;
    config().sIDBitCnts = {1, 1, 16, 37, 0, 0, 0, 0};
    record().iLUID = 7;
    EXPECT_EQ(AcpReadCfg(), 0);
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 0);
    EXPECT_EQ(config().sIDDispParms.iELDelim, 0);
    EXPECT_EQ(config().sCfgFlags.bNoUseELChar, 1);
    EXPECT_EQ(config().sIDBitCnts.iIDBitCnt, 1);
    EXPECT_EQ(config().sIDBitCnts.iTotalBitCnt, 26);
    EXPECT_EQ(record().iLUID, 0);
    EXPECT_EQ(config().bCfgValid, 0U);
}

TEST_F(AsciiListing, GoesIntoTheActiveConfiguration) {
    record().iActConfig = 2;
    EXPECT_EQ(AcpReadCfg(), 1);
    EXPECT_EQ(config(2).sTimeParms.iIDHoldTO, 777);
    EXPECT_EQ(config(0).sTimeParms.iIDHoldTO, 0);
}

TEST_F(AsciiListing, NeedsAPortObject) {
    takeLineAway();
    EXPECT_EQ(AcpReadCfg(), 0);
}

TEST_F(AsciiListing, OfAClosedLineIsEmpty) {
    closeLine();
    EXPECT_EQ(AcpReadCfg(), 0);
    EXPECT_EQ(config().sIDBitCnts.iTotalBitCnt, 26);
}

TEST_F(AsciiVersion, MakesTheRecordValid) {
    EXPECT_TRUE(isTaken());
    EXPECT_EQ(record().iDID, 0x142) << "256 times the first number, 16 times the second";
    EXPECT_EQ(record().lLastErr, 0);
    EXPECT_EQ(config().bDirtyIDFrmt1 + record().bLUIDDirty, 0U);
}

TEST_F(AsciiVersion, HasAFirstNumberInHexadecimalAndTheOthersDecimal) {
    script_->version = "version {1F.10.11" + kPrompt;
    EXPECT_TRUE(isTaken());
    EXPECT_EQ(record().iDID, 0x1F * 256 + 10 * 16 + 11);
}

TEST_F(AsciiVersion, WithoutItsPromptOrThreeNumbersIsNone) {
    for (const std::string& version :
         {std::string("{1.4.2}\rNorvane"), std::string("{"), std::string("N{1.4.2}"),
          std::string("1.4.2}\r" + kPrompt), std::string("{1.4}\r" + kPrompt),
          std::string("{1,4,2}\r" + kPrompt), std::string("{.4.2}\r" + kPrompt)}) {
        script_->version = version;
        EXPECT_FALSE(isTaken()) << version;
        EXPECT_EQ(record().iDID, 7);
        EXPECT_EQ(record().lLastErr, 0x55);
        EXPECT_EQ(config().bDirtyIDFrmt1 + record().bLUIDDirty, 2U);
    }
}

TEST_F(AsciiVersion, MayStandBehindItsPrompt) {
    script_->version = kPrompt + "{1.4.2";
    EXPECT_TRUE(isTaken());
}

TEST_F(AsciiVersion, DoesNotChangeTheResultOfTheListing) {
    script_->version.clear();
    EXPECT_EQ(AcpReadCfg(), 1);
    EXPECT_EQ(config().bCfgValid, 0U);
}
