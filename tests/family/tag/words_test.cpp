// SPDX-License-Identifier: MIT
// The names and descriptions of the words, as applications and files see them.
#include "frame/zelTagState.h"

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Rows = std::vector<std::vector<std::string>>;

template <std::size_t Count> Rows rowsOf(const tsNamePair (&table)[Count]) {
    Rows rows;
    for (const tsNamePair& pair : table)
        rows.push_back({pair.name, pair.description});
    return rows;
}

} // namespace

TEST(NameTables, SayWhatTheFirstFlagsMean) {
    EXPECT_EQ(
        rowsOf(CfgFlagsStr),
        (Rows{
            {"bFixLenDsp", "Send as fixed length with leading zeros as needed"},
            {"bFrcBitCntEx", "Force Rx'd bit count to be exact to be valid"},
            {"bStripFac", "Strip the FAC from the ID (not discarded)"},
            {"bSndFac", "Send the FAC (if stripped from data)"},
            {"bUseDelFac2Id", "Put a delimiter between FAC and ID on send"},
            {"bNoUseELChar", "Don't use a EndLine char on send (default to ENTER)"},
            {"bSndOnRx", "Send valid ID as soon as it is received (iIDLockOutTm timer not used)"},
            {"bHaltKBSnd", "Don't Send keys to USB (Get ID mechanism)"},
        }));
}

TEST(NameTables, SayWhatTheSecondFlagsMean) {
    EXPECT_EQ(rowsOf(CfgFlags2Str),
              (Rows{
                  {"bUseLeadChrs", "Use leading chars in ID KB send"},
                  {"bDspHex", "Display ID as ASCII Hex [not ASCII decimal]"},
                  {"bWiegInvData", "Wiegand data on pins is inverted"},
                  {"bUseInvDataF", "use the bWiegInvData flag over hardware setting"},
                  {"bRevWiegBits", "Reverse the Wiegand Rx bits"},
                  {"bBeepID", "Beep when ID received"},
                  {"bRevBytes", "Reverse byte order (CSN reader)"},
                  {"isASCIIpresent", "check if ASCII conversion type is present within the reader"},
              }));
}

TEST(NameTables, SayWhatTheThirdFlagsMean) {
    EXPECT_EQ(rowsOf(CfgFlags3Str),
              (Rows{
                  {"bUseNumKP", "Euro KB flag"},
                  {"bSndSFON", "Split format ON = 1, old combined scheme = 0"},
                  {"bSndSFFC", "0 = FAC Decimal, 1 = FAC Hex"},
                  {"bSndSFID", "0 = ID Decimal, 1 = ID Hex"},
                  {"bPrxProEm", "Use ProxPro emulation"},
                  {"bUse64Bit", "0 = 32-bit, 1 = 64-bit Display Math"},
                  {"bNotBootDev", "USB Enum: 0=BootDevice, 1=NOTBootDevice"},
                  {"bLowerCaseHex", "0= Upper case , 1= Lower case"},
              }));
}

TEST(NameTables, SayWhatTheBitCountsMean) {
    EXPECT_EQ(rowsOf(IDBitCntsStr),
              (Rows{
                  {"iLeadParityBitCnt", "Wiegand Leading Parity bit count to be stripped"},
                  {"iTrailParityBitCnt", "Wiegand Trailing Parity bit count to be stripped"},
                  {"iIDBitCnt", "if bStripFac, this determines bit count of ID and FAC"},
                  {"iTotalBitCnt", "if bFrcBitCntEx, card read (including parity) must match this"},
                  {"iPad4", ""},
                  {"iPad5", ""},
                  {"iPad6", ""},
                  {"iPad7", ""},
              }));
}

TEST(NameTables, SayWhatTheDisplaySettingsMean) {
    EXPECT_EQ(rowsOf(IDDispParmsStr),
              (Rows{
                  {"iFACIDDelim",
                   "if bStripFac & bSndFac & bUseDelFac2Id, this char sent between FAC & ID"},
                  {"iELDelim", "if NOT bNoUseELChar, this char sent at end of ID"},
                  {"iIDDispLen", "if bFixLenDsp, ID padded with zeros to this length"},
                  {"iFACDispLen", "if bFixLenDsp, FAC padded with zeros to this length"},
                  {"iExOutputFormat", "0 = Data Format Mode, 1 = Extended Mode"},
                  {"iPad5", ""},
                  {"iPad6", ""},
                  {"iPad7", ""},
              }));
}

TEST(NameTables, DescribeOnlyTheFirstLeadCharacter) {
    EXPECT_EQ(rowsOf(IDDispParms2Str),
              (Rows{
                  {"iLeadChrCnt", "if bUseLeadChrs, this contains the lead char count (<=3)"},
                  {"iLeadChr0", "these lead characters are filled in (up to 3)"},
                  {"iLeadChr1", ""},
                  {"iLeadChr2", ""},
                  {"iCrdGnChr0", "if non-zero, sent when ID goes Invalid"},
                  {"iCrdGnChr1", "if this and Chr0 non-zero, sent when ID goes Invalid"},
                  {"iPad6", ""},
                  {"iPad7", ""},
              }));
}

TEST(NameTables, IndentTheLastTrailCharacterBySixBlanks) {
    EXPECT_EQ(rowsOf(IDDispParms3Str),
              (Rows{
                  {"iTrailChrCnt", "this contains the trail char count (<=3)"},
                  {"iTrailChr0", "these trail characters are filled in (up to 3)"},
                  {"iTrailChr1", "NOTE: LeadChrCnt + TrailCheCnt <= 3"},
                  {"iTrailChr2", "      LeadChrs have priority"},
                  {"iPad4", ""},
                  {"iPad5", ""},
                  {"iPad6", ""},
                  {"iPad7", ""},
              }));
}

TEST(NameTables, CallTheFeatureBytePad5) {
    EXPECT_EQ(rowsOf(TimeParmsStr),
              (Rows{
                  {"iBitStrmTO", "Wiegand read times out after this msec time (4msec gran.)"},
                  {"iIDHoldTO", "Card ID remains valid for this msec time (50msec gran.)"},
                  {"iIDLockOutTm",
                   "Squelch repetitive reader reports (usually > 1000) in msec (50msec gran.)"},
                  {"iUSBKeyPrsTm", "Sets USB inter-key 'Press' time in msecs (4msec gran.)"},
                  {"iUSBKeyRlsTm", "Sets USB inter-key 'Release' time in msecs (4msec gran.)"},
                  {"iPad5", ""},
                  {"iPad6", ""},
                  {"iTPCfgFlg3", "Further Flags not related to Time at all (see tsCfgFlags3)"},
              }));
}

TEST(NameTables, TellTheLedsVolatileFlagApart) {
    EXPECT_EQ(rowsOf(LEDCtrlStr),
              (Rows{
                  {"bAppCtrlsLED", "Display LEDs are controlled by user thru this DLL"},
                  {"iRedLEDState", "0 == Off, 1 == On"},
                  {"iGrnLEDState", "0 == Off, 1 == On"},
                  {"iPad3", ""},
                  {"iPad4", ""},
                  {"iPad5", ""},
                  {"iPad6", ""},
                  {"bVolatile_LC", "0 == commit to EE, 1 == Don't store to EE"},
              }));
}

TEST(NameTables, TellTheBeepersVolatileFlagApart) {
    EXPECT_EQ(rowsOf(BprRlyCtrlStr),
              (Rows{
                  {"iPad0", ""},
                  {"iBeeperState", "0 == Off, 1 == On"},
                  {"iRelayState", "0 == Off, 1 == On"},
                  {"iPad3", ""},
                  {"iPad4", ""},
                  {"iPad5", ""},
                  {"iPad6", ""},
                  {"bVolatile_BRC", "0 == commit to EE, 1 == Don't store to EE"},
              }));
}

TEST(NameTables, OfADefinitionHaveNoDescriptions) {
    EXPECT_EQ(rowsOf(FldDefStr), (Rows{{"ucUsageByte0", ""},
                                       {"ucUsageByte1", ""},
                                       {"ucStartBitPos", ""},
                                       {"ucBitLength", ""}}));
    EXPECT_EQ(rowsOf(SepDefStr), (Rows{{"ucUsageByte0", ""}, {"ucDataOfst", ""}}));
}

TEST(NameTables, OfAnOptionHaveOneRow) {
    EXPECT_EQ(rowsOf(AZERTYShiftLock), (Rows{{"AZERTYShiftlock", "0= off, 1 = on"}}));
    EXPECT_EQ(rowsOf(ExtendedPrecisionMath), (Rows{{"ExtendedPrecisionMath", "0= off, 1 = on"}}));
}
