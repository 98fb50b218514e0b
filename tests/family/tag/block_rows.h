// SPDX-License-Identifier: MIT
// What each bit and byte of blocks 0 to 2 means, typed by hand from the reader's wire format and
// not taken from the library's own table of words.
#pragma once

#include "frame/zelTagState.h"

#include <cstddef>

namespace zel::test {

using Word = std::int16_t& (*)(tsTagCfg&);
#define WORD(member) [](tsTagCfg& c) -> std::int16_t& { return c.member; }

struct Flag {
    int block;
    std::size_t byte;
    unsigned bit;
    Word word;
};

struct Number {
    int block;
    std::size_t byte;
    int unit;
    Word word;
};

inline const Flag kFlags[] = {
    {0, 7, 0, WORD(sCfgFlags.bFixLenDsp)},    {0, 7, 1, WORD(sCfgFlags.bFrcBitCntEx)},
    {0, 7, 2, WORD(sCfgFlags.bStripFac)},     {0, 7, 3, WORD(sCfgFlags.bSndFac)},
    {0, 7, 4, WORD(sCfgFlags.bUseDelFac2Id)}, {0, 7, 5, WORD(sCfgFlags.bNoUseELChar)},
    {0, 7, 6, WORD(sCfgFlags.bSndOnRx)},      {0, 7, 7, WORD(sCfgFlags.bHaltKBSnd)},
    {2, 0, 0, WORD(sLEDCtrl.iRedLEDState)},   {2, 0, 1, WORD(sLEDCtrl.iGrnLEDState)},
    {2, 0, 2, WORD(sBprRlyCtrl.iRelayState)}, {2, 0, 3, WORD(sBprRlyCtrl.iBeeperState)},
    {2, 0, 4, WORD(sCfgFlags3.bNotBootDev)},  {2, 1, 0, WORD(sCfgFlags2.bUseLeadChrs)},
    {2, 1, 1, WORD(sLEDCtrl.bAppCtrlsLED)},   {2, 1, 2, WORD(sCfgFlags2.bDspHex)},
    {2, 1, 3, WORD(sCfgFlags2.bWiegInvData)}, {2, 1, 4, WORD(sCfgFlags2.bBeepID)},
    {2, 1, 5, WORD(sCfgFlags2.bRevWiegBits)}, {2, 1, 6, WORD(sCfgFlags2.bRevBytes)},
    {2, 1, 7, WORD(sCfgFlags2.bUseInvDataF)},
};

// Words that a byte shows beside the word that carries it.
inline const Flag kMirrors[] = {
    {1, 6, 7, WORD(sCfgFlags3.bUseNumKP)}, {1, 6, 6, WORD(sCfgFlags3.bSndSFON)},
    {1, 6, 5, WORD(sCfgFlags3.bSndSFFC)},  {1, 6, 4, WORD(sCfgFlags3.bSndSFID)},
    {1, 6, 3, WORD(sCfgFlags3.bPrxProEm)}, {1, 6, 2, WORD(sCfgFlags3.bLowerCaseHex)},
    {1, 6, 1, WORD(sCfgFlags3.bUse64Bit)}, {1, 7, 5, WORD(sCfgFlags2.isASCIIpresent)},
};

inline const Number kNumbers[] = {
    {0, 0, 1, WORD(sIDDispParms.iFACDispLen)}, {0, 1, 1, WORD(sIDDispParms.iIDDispLen)},
    {0, 3, 1, WORD(sIDBitCnts.iIDBitCnt)},     {0, 4, 1, WORD(sIDBitCnts.iTotalBitCnt)},
    {0, 5, 1, WORD(sIDDispParms.iFACIDDelim)}, {0, 6, 1, WORD(sIDDispParms.iELDelim)},
    {1, 1, 4, WORD(sTimeParms.iBitStrmTO)},    {1, 2, 50, WORD(sTimeParms.iIDHoldTO)},
    {1, 3, 50, WORD(sTimeParms.iIDLockOutTm)}, {1, 4, 4, WORD(sTimeParms.iUSBKeyPrsTm)},
    {1, 5, 4, WORD(sTimeParms.iUSBKeyRlsTm)},  {1, 6, 1, WORD(sTimeParms.iTPCfgFlg3)},
    {1, 7, 1, WORD(sTimeParms.ExFeatures01)},  {2, 2, 1, WORD(sIDDispParms2.iCrdGnChr0)},
    {2, 3, 1, WORD(sIDDispParms2.iCrdGnChr1)},
};

#undef WORD

} // namespace zel::test
