// SPDX-License-Identifier: MIT
// Settings of the reader, and those of the record.
#include "tests/steps/tag_config.h"

#include "frame/zelTagAPI.h"

#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::uint8_t kExtendedFeatures = 0x40;

sim::TagConfiguration& inReader() { return apparatus().tag->configuration(0); }

} // namespace

const std::vector<Sight> kReadSights = {
    {"IDs",
     [] {
         return shownWords({record().iLUID, record().iDID});
     }},
    {"block 0",
     [] {
         return shownWords({config().sIDDispParms.iFACDispLen, config().sIDDispParms.iIDDispLen,
                            config().sIDBitCnts.iIDBitCnt, config().sIDBitCnts.iTotalBitCnt});
     }},
    {"block 1",
     [] {
         return shownWords({config().sTimeParms.iBitStrmTO, config().sTimeParms.iIDHoldTO,
                            config().sTimeParms.iIDLockOutTm, config().sTimeParms.iUSBKeyPrsTm});
     }},
    {"block 2",
     [] {
         return shownWords({config().sIDDispParms2.iCrdGnChr0, config().sIDDispParms2.iCrdGnChr1});
     }},
    {"block 3", [] { return shownObject(config().ExtBlock); }},
    {"field data", [] { return shownObject(config().uSFD); }},
    {"file name", [] { return std::string(record().szFWFile); }},
    {"version", [] { return std::string(record().szFullFWVer); }},
    {"part number", [] { return std::string(record().szPartNum); }},
    {"marks",
     [] {
         return shownWords({config().bCfgValid, marksOf(0)});
     }},
    {"state", [] { return shownWords({record().iTagPlusState}); }},
    {"lacks",
     [] {
         return shownWords({record().bSepFldOK, record().bPartNumOK});
     }},
};

const std::vector<Sight> kWriteSights = {
    {"LUID", [] { return shownWords({apparatus().tag->settings().luid}); }},
    {"block 0", [] { return shown(inReader().block[0]); }},
    {"block 1", [] { return shown(inReader().block[1]); }},
    {"block 2", [] { return shown(inReader().block[2]); }},
    {"block 3", [] { return shown(inReader().block[3]); }},
    {"field data", [] { return shownObject(inReader().page); }},
    {"keys", [] { return shownObject(inReader().key); }},
    {"committed", [] { return shown(apparatus().tag->committed().configuration[0].block[0]); }},
    {"marks", [] { return shownWords({marksOf(0)}); }},
    {"lacks",
     [] {
         return shownWords({record().bSepFldOK, record().bPartNumOK});
     }},
};

const std::vector<Sight> kProbeSights = {
    {"state", [] { return shownWords({record().iTagPlusState}); }},
    {"highest", [] { return shownWords({record().iMaxConfig}); }},
    {"active", [] { return shownWords({record().iActConfig}); }},
    {"card type", [] {
         return shownWords({config().iCardType, config().iCardPriority});
     }}};

void prepareProbe() {
    record().iActConfig = 1;
    config().iCardType = 0x7707;
    inReader().cardType = 0x1204;
    inReader().cardPriority = true;
}

void fillReader(std::size_t n) {
    sim::TagSettings& settings = apparatus().tag->settings();
    settings.luid = 0x1234;
    sim::TagConfiguration& made = settings.configuration.at(n);
    made.block[0] = {4, 6, 0x11, 20, 30, 0x2D, 0x0A, 0x08};
    made.block[1] = {0, 17, 21, 41, 3, 4, 0, 0};
    made.block[2] = {3, 0x08, 0x41, 0x42, 0x21, 0x61, 0x62, 0x63};
    made.block[3] = {0, 0, 5, 6, 7, 0, 0, 0};
    for (std::uint8_t page = 0; page < 12; ++page)
        made.page[page] = {1, 2, 3, 4, 5, 6, 7, static_cast<std::uint8_t>(page + 1)};
    made.page[0][0] = 12;
    apparatus().tag->keepSettings();
}

void ageRecord(int n) {
    tsDevDat& device = record();
    device.iLUID = device.iDID = 0x7777;
    std::strcpy(device.szFWFile, "an old file");
    std::strcpy(device.szFullFWVer, "an old one");
    std::strcpy(device.szPartNum, "an old part");
    tsTagCfg& old = config(n);
    old.sIDDispParms.iFACDispLen = old.sIDDispParms.iIDDispLen = 77;
    old.sIDBitCnts.iIDBitCnt = old.sIDBitCnts.iTotalBitCnt = 77;
    old.sTimeParms.iBitStrmTO = old.sTimeParms.iIDHoldTO = 77;
    old.sIDDispParms2.iCrdGnChr0 = old.sIDDispParms2.iCrdGnChr1 = 77;
    std::memset(old.ExtBlock, 0x77, sizeof old.ExtBlock);
    std::memset(&old.uSFD, 0x77, sizeof old.uSFD);
    markAll(n);
}

unsigned marksOf(int n) {
    const tsTagCfg& one = config(n);
    return one.bDirtyIDFrmt1 | one.bDirtyTime << 1U | one.bDirtyIDFrmt2 << 2U |
           one.bDirtyExt << 3U | one.bDirtySepFld << 4U | record().bLUIDDirty << 5U;
}

void markAll(int n) {
    tsTagCfg& one = config(n);
    one.bDirtyIDFrmt1 = one.bDirtyTime = one.bDirtyIDFrmt2 = one.bDirtyExt = one.bDirtySepFld = 1;
    record().bLUIDDirty = 1;
}

void prepareRead() {
    fillReader(0);
    ageRecord();
}

void prepareWrite() {
    fillReader(0);
    EXPECT_EQ(ReadCfg(), 1);
    record().iLUID = 0x4321;
    tsTagCfg& own = config();
    own.sIDDispParms.iIDDispLen = 7;
    own.sTimeParms.iIDHoldTO = 2000;
    own.sTimeParms.ExFeatures01 = kExtendedFeatures;
    own.sIDDispParms2.iCrdGnChr0 = 0x43;
    own.ExtBlock[2] = 9;
    std::memset(own.uSFD.bytes + 1, 0x44, 95);
    std::memset(&own.sHashKeyData, 0x55, sizeof own.sHashKeyData);
    markAll(0);
}

std::string asked(const std::vector<std::string>& commands) {
    std::string text;
    for (const std::string& command : commands)
        text += command + "? ";
    return text;
}

} // namespace zel::test::steps
