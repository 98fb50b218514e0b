// SPDX-License-Identifier: MIT
// The ten records with their eight words, as the names of the calls on single words have them.
#pragma once

#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string>

namespace zel::test {

using Words = std::array<std::int16_t, 8>;

struct RecordRow {
    const char* name;
    std::array<const char*, 8> words;
    int (*get)(Words&);
    Words (*load)(const tsTagCfg&); // the record in a configuration, read and written directly
    void (*store)(tsTagCfg&, const Words&);
    const char* marks; // the blocks that a set marks

    bool is(const std::string& record) const { return record == name; }
    bool hasVolatile() const { return std::string(words[7]) == "bVolatile"; }

    // A volatile record goes to the reader at once and marks nothing.
    std::string marksOf(std::size_t word) const { return word == 7 && hasVolatile() ? "" : marks; }

    // The record as the call on the whole of it tells it; zeros when that fails.
    Words whole() const {
        Words content = {};
        return get(content) == 1 ? content : Words{};
    }
};

template <class Record, int (*Call)(Record*)> int getWhole(Words& words) {
    static_assert(sizeof(Record) == sizeof(Words));
    Record record = {};
    const int result = Call(&record);
    std::memcpy(words.data(), &record, sizeof record);
    return result;
}

template <class Record, Record tsTagCfg::*Member> Words loadWhole(const tsTagCfg& config) {
    Words words = {};
    std::memcpy(words.data(), &(config.*Member), sizeof words);
    return words;
}

template <class Record, Record tsTagCfg::*Member>
void storeWhole(tsTagCfg& config, const Words& words) {
    std::memcpy(&(config.*Member), words.data(), sizeof(Record));
}

template <class Record, int (*Call)(Record*), Record tsTagCfg::*Member>
RecordRow rowOf(const char* name, const char* marks, const std::array<const char*, 8>& words) {
    return {
        name, words, getWhole<Record, Call>, loadWhole<Record, Member>, storeWhole<Record, Member>,
        marks};
}

inline const RecordRow kAccessorRows[] = {
    rowOf<sCfgFlags, GetFlags, &tsTagCfg::sCfgFlags>("CfgFlags", " 0",
                                                     {"bFixLenDsp", "bFrcBitCntEx", "bStripFac",
                                                      "bSndFac", "bUseDelFac2Id", "bNoUseELChar",
                                                      "bSndOnRx", "bHaltKBSnd"}),
    rowOf<sCfgFlags2, GetFlags2, &tsTagCfg::sCfgFlags2>("CfgFlags2", " 2",
                                                        {"bUseLeadChrs", "bDspHex", "bWiegInvData",
                                                         "bUseInvDataF", "bRevWiegBits", "bBeepID",
                                                         "bRevBytes", "isASCIIpresent"}),
    rowOf<sCfgFlags3, GetFlags3, &tsTagCfg::sCfgFlags3>("CfgFlags3", " 1",
                                                        {"bUseNumKP", "bSndSFON", "bSndSFFC",
                                                         "bSndSFID", "bPrxProEm", "bUse64Bit",
                                                         "bNotBootDev", "bLowerCaseHex"}),
    rowOf<sIDBitCnts, GetIDBitCnts, &tsTagCfg::sIDBitCnts>(
        "IDBitCnts", " 0",
        {"iLeadParityBitCnt", "iTrailParityBitCnt", "iIDBitCnt", "iTotalBitCnt", "iPad4", "iPad5",
         "iPad6", "iPad7"}),
    rowOf<sIDDispParms, GetIDDispParms, &tsTagCfg::sIDDispParms>(
        "IDDispParms", " 0 3",
        {"iFACIDDelim", "iELDelim", "iIDDispLen", "iFACDispLen", "iExOutputFormat", "iPad5",
         "iPad6", "iPad7"}),
    rowOf<sIDDispParms2, GetIDDispParms2, &tsTagCfg::sIDDispParms2>(
        "IDDispParms2", " 2",
        {"iLeadChrCnt", "iLeadChr0", "iLeadChr1", "iLeadChr2", "iCrdGnChr0", "iCrdGnChr1", "iPad6",
         "iPad7"}),
    rowOf<sIDDispParms3, GetIDDispParms3, &tsTagCfg::sIDDispParms3>(
        "IDDispParms3", " 2",
        {"iTrailChrCnt", "iTrailChr0", "iTrailChr1", "iTrailChr2", "iPad4", "iPad5", "iPad6",
         "iPad7"}),
    rowOf<sTimeParms, GetTimeParms, &tsTagCfg::sTimeParms>(
        "TimeParms", " 1",
        {"iBitStrmTO", "iIDHoldTO", "iIDLockOutTm", "iUSBKeyPrsTm", "iUSBKeyRlsTm", "ExFeatures01",
         "iPad6", "iTPCfgFlg3"}),
    rowOf<sLEDCtrl, GetLEDCtrl, &tsTagCfg::sLEDCtrl>("LEDCtrl", " 2",
                                                     {"bAppCtrlsLED", "iRedLEDState",
                                                      "iGrnLEDState", "iPad3", "iPad4", "iPad5",
                                                      "iPad6", "bVolatile"}),
    rowOf<sBprRlyCtrl, GetBprRlyCtrl, &tsTagCfg::sBprRlyCtrl>(
        "BprRlyCtrl", " 2",
        {"iPad0", "iBeeperState", "iRelayState", "iPad3", "iPad4", "iPad5", "iPad6", "bVolatile"}),
};

} // namespace zel::test
