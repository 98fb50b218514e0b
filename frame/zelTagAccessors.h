/* SPDX-License-Identifier: MIT */
/** @file
 * The calls on single words of the ten records, for callers that can pass numbers only.
 * Made from frame/records.def by scripts/generate_records.py; change the rows there.
 *
 * A get reads the record with its whole-record call and returns the word; a set reads it, changes
 * the word and sets it again: the whole record is checked and marked for WriteCfg(), in memory,
 * with no device traffic but that of a record whose bVolatile is set. No lock.
 *
 * A get returns the word, sign-extended, or the record call's result when that isn't 1; a word that
 * holds 0 or 1 can't be told from it: GetLastLibErr() can. A set returns 1; 0 with the reason in
 * the error word. Without an active device both return the unsupported value; they test for no
 * product, and where another product's record carries fewer words the others read as the library
 * holds them.
 */
#ifndef ZELTAGAPI_ACCESSORS_H
#define ZELTAGAPI_ACCESSORS_H

#include "frame/zelTagExport.h"

/* clang-format off */

ZELTAGAPI_BEGIN

/* sCfgFlags */

/** @return the word bFixLenDsp of sCfgFlags: Send as fixed length with leading zeros as needed */
ZELTAGAPI_EXPORT int getCfgFlags_bFixLenDsp(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bFixLenDsp(short value);
/** @return the word bFrcBitCntEx of sCfgFlags: Force Rx'd bit count to be exact to be valid */
ZELTAGAPI_EXPORT int getCfgFlags_bFrcBitCntEx(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bFrcBitCntEx(short value);
/** @return the word bStripFac of sCfgFlags: Strip the FAC from the ID (not discarded) */
ZELTAGAPI_EXPORT int getCfgFlags_bStripFac(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bStripFac(short value);
/** @return the word bSndFac of sCfgFlags: Send the FAC (if stripped from data) */
ZELTAGAPI_EXPORT int getCfgFlags_bSndFac(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bSndFac(short value);
/** @return the word bUseDelFac2Id of sCfgFlags: Put a delimiter between FAC and ID on send */
ZELTAGAPI_EXPORT int getCfgFlags_bUseDelFac2Id(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bUseDelFac2Id(short value);
/** @return the word bNoUseELChar of sCfgFlags:
 * Don't use a EndLine char on send (default to ENTER) */
ZELTAGAPI_EXPORT int getCfgFlags_bNoUseELChar(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bNoUseELChar(short value);
/** @return the word bSndOnRx of sCfgFlags:
 * Send valid ID as soon as it is received (iIDLockOutTm timer not used) */
ZELTAGAPI_EXPORT int getCfgFlags_bSndOnRx(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bSndOnRx(short value);
/** @return the word bHaltKBSnd of sCfgFlags: Don't Send keys to USB (Get ID mechanism) */
ZELTAGAPI_EXPORT int getCfgFlags_bHaltKBSnd(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags_bHaltKBSnd(short value);

/* sCfgFlags2 */

/** @return the word bUseLeadChrs of sCfgFlags2: Use leading chars in ID KB send */
ZELTAGAPI_EXPORT int getCfgFlags2_bUseLeadChrs(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_bUseLeadChrs(short value);
/** @return the word bDspHex of sCfgFlags2: Display ID as ASCII Hex [not ASCII decimal] */
ZELTAGAPI_EXPORT int getCfgFlags2_bDspHex(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_bDspHex(short value);
/** @return the word bWiegInvData of sCfgFlags2: Wiegand data on pins is inverted */
ZELTAGAPI_EXPORT int getCfgFlags2_bWiegInvData(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_bWiegInvData(short value);
/** @return the word bUseInvDataF of sCfgFlags2: use the bWiegInvData flag over hardware setting */
ZELTAGAPI_EXPORT int getCfgFlags2_bUseInvDataF(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_bUseInvDataF(short value);
/** @return the word bRevWiegBits of sCfgFlags2: Reverse the Wiegand Rx bits */
ZELTAGAPI_EXPORT int getCfgFlags2_bRevWiegBits(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_bRevWiegBits(short value);
/** @return the word bBeepID of sCfgFlags2: Beep when ID received */
ZELTAGAPI_EXPORT int getCfgFlags2_bBeepID(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_bBeepID(short value);
/** @return the word bRevBytes of sCfgFlags2: Reverse byte order (CSN reader) */
ZELTAGAPI_EXPORT int getCfgFlags2_bRevBytes(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_bRevBytes(short value);
/** @return the word isASCIIpresent of sCfgFlags2:
 * check if ASCII conversion type is present within the reader */
ZELTAGAPI_EXPORT int getCfgFlags2_isASCIIpresent(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags2_isASCIIpresent(short value);

/* sCfgFlags3 */

/** @return the word bUseNumKP of sCfgFlags3: Euro KB flag */
ZELTAGAPI_EXPORT int getCfgFlags3_bUseNumKP(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bUseNumKP(short value);
/** @return the word bSndSFON of sCfgFlags3: Split format ON = 1, old combined scheme = 0 */
ZELTAGAPI_EXPORT int getCfgFlags3_bSndSFON(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bSndSFON(short value);
/** @return the word bSndSFFC of sCfgFlags3: 0 = FAC Decimal, 1 = FAC Hex */
ZELTAGAPI_EXPORT int getCfgFlags3_bSndSFFC(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bSndSFFC(short value);
/** @return the word bSndSFID of sCfgFlags3: 0 = ID Decimal, 1 = ID Hex */
ZELTAGAPI_EXPORT int getCfgFlags3_bSndSFID(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bSndSFID(short value);
/** @return the word bPrxProEm of sCfgFlags3: Use ProxPro emulation */
ZELTAGAPI_EXPORT int getCfgFlags3_bPrxProEm(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bPrxProEm(short value);
/** @return the word bUse64Bit of sCfgFlags3: 0 = 32-bit, 1 = 64-bit Display Math */
ZELTAGAPI_EXPORT int getCfgFlags3_bUse64Bit(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bUse64Bit(short value);
/** @return the word bNotBootDev of sCfgFlags3: USB Enum: 0=BootDevice, 1=NOTBootDevice */
ZELTAGAPI_EXPORT int getCfgFlags3_bNotBootDev(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bNotBootDev(short value);
/** @return the word bLowerCaseHex of sCfgFlags3: 0= Upper case , 1= Lower case */
ZELTAGAPI_EXPORT int getCfgFlags3_bLowerCaseHex(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setCfgFlags3_bLowerCaseHex(short value);

/* sIDBitCnts */

/** @return the word iLeadParityBitCnt of sIDBitCnts:
 * Wiegand Leading Parity bit count to be stripped */
ZELTAGAPI_EXPORT int getIDBitCnts_iLeadParityBitCnt(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iLeadParityBitCnt(short value);
/** @return the word iTrailParityBitCnt of sIDBitCnts:
 * Wiegand Trailing Parity bit count to be stripped */
ZELTAGAPI_EXPORT int getIDBitCnts_iTrailParityBitCnt(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iTrailParityBitCnt(short value);
/** @return the word iIDBitCnt of sIDBitCnts:
 * if bStripFac, this determines bit count of ID and FAC */
ZELTAGAPI_EXPORT int getIDBitCnts_iIDBitCnt(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iIDBitCnt(short value);
/** @return the word iTotalBitCnt of sIDBitCnts:
 * if bFrcBitCntEx, card read (including parity) must match this */
ZELTAGAPI_EXPORT int getIDBitCnts_iTotalBitCnt(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iTotalBitCnt(short value);
/** @return the word iPad4 of sIDBitCnts */
ZELTAGAPI_EXPORT int getIDBitCnts_iPad4(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iPad4(short value);
/** @return the word iPad5 of sIDBitCnts */
ZELTAGAPI_EXPORT int getIDBitCnts_iPad5(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iPad5(short value);
/** @return the word iPad6 of sIDBitCnts */
ZELTAGAPI_EXPORT int getIDBitCnts_iPad6(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iPad6(short value);
/** @return the word iPad7 of sIDBitCnts */
ZELTAGAPI_EXPORT int getIDBitCnts_iPad7(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDBitCnts_iPad7(short value);

/* sIDDispParms */

/** @return the word iFACIDDelim of sIDDispParms:
 * if bStripFac & bSndFac & bUseDelFac2Id, this char sent between FAC & ID */
ZELTAGAPI_EXPORT int getIDDispParms_iFACIDDelim(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iFACIDDelim(short value);
/** @return the word iELDelim of sIDDispParms: if NOT bNoUseELChar, this char sent at end of ID */
ZELTAGAPI_EXPORT int getIDDispParms_iELDelim(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iELDelim(short value);
/** @return the word iIDDispLen of sIDDispParms:
 * if bFixLenDsp, ID padded with zeros to this length */
ZELTAGAPI_EXPORT int getIDDispParms_iIDDispLen(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iIDDispLen(short value);
/** @return the word iFACDispLen of sIDDispParms:
 * if bFixLenDsp, FAC padded with zeros to this length */
ZELTAGAPI_EXPORT int getIDDispParms_iFACDispLen(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iFACDispLen(short value);
/** @return the word iExOutputFormat of sIDDispParms: 0 = Data Format Mode, 1 = Extended Mode */
ZELTAGAPI_EXPORT int getIDDispParms_iExOutputFormat(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iExOutputFormat(short value);
/** @return the word iPad5 of sIDDispParms */
ZELTAGAPI_EXPORT int getIDDispParms_iPad5(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iPad5(short value);
/** @return the word iPad6 of sIDDispParms */
ZELTAGAPI_EXPORT int getIDDispParms_iPad6(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iPad6(short value);
/** @return the word iPad7 of sIDDispParms */
ZELTAGAPI_EXPORT int getIDDispParms_iPad7(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms_iPad7(short value);

/* sIDDispParms2 */

/** @return the word iLeadChrCnt of sIDDispParms2:
 * if bUseLeadChrs, this contains the lead char count (<=3) */
ZELTAGAPI_EXPORT int getIDDispParms2_iLeadChrCnt(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iLeadChrCnt(short value);
/** @return the word iLeadChr0 of sIDDispParms2: these lead characters are filled in (up to 3) */
ZELTAGAPI_EXPORT int getIDDispParms2_iLeadChr0(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iLeadChr0(short value);
/** @return the word iLeadChr1 of sIDDispParms2 */
ZELTAGAPI_EXPORT int getIDDispParms2_iLeadChr1(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iLeadChr1(short value);
/** @return the word iLeadChr2 of sIDDispParms2 */
ZELTAGAPI_EXPORT int getIDDispParms2_iLeadChr2(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iLeadChr2(short value);
/** @return the word iCrdGnChr0 of sIDDispParms2: if non-zero, sent when ID goes Invalid */
ZELTAGAPI_EXPORT int getIDDispParms2_iCrdGnChr0(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iCrdGnChr0(short value);
/** @return the word iCrdGnChr1 of sIDDispParms2:
 * if this and Chr0 non-zero, sent when ID goes Invalid */
ZELTAGAPI_EXPORT int getIDDispParms2_iCrdGnChr1(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iCrdGnChr1(short value);
/** @return the word iPad6 of sIDDispParms2 */
ZELTAGAPI_EXPORT int getIDDispParms2_iPad6(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iPad6(short value);
/** @return the word iPad7 of sIDDispParms2 */
ZELTAGAPI_EXPORT int getIDDispParms2_iPad7(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms2_iPad7(short value);

/* sIDDispParms3 */

/** @return the word iTrailChrCnt of sIDDispParms3: this contains the trail char count (<=3) */
ZELTAGAPI_EXPORT int getIDDispParms3_iTrailChrCnt(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iTrailChrCnt(short value);
/** @return the word iTrailChr0 of sIDDispParms3: these trail characters are filled in (up to 3) */
ZELTAGAPI_EXPORT int getIDDispParms3_iTrailChr0(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iTrailChr0(short value);
/** @return the word iTrailChr1 of sIDDispParms3: NOTE: LeadChrCnt + TrailCheCnt <= 3 */
ZELTAGAPI_EXPORT int getIDDispParms3_iTrailChr1(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iTrailChr1(short value);
/** @return the word iTrailChr2 of sIDDispParms3: LeadChrs have priority */
ZELTAGAPI_EXPORT int getIDDispParms3_iTrailChr2(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iTrailChr2(short value);
/** @return the word iPad4 of sIDDispParms3 */
ZELTAGAPI_EXPORT int getIDDispParms3_iPad4(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iPad4(short value);
/** @return the word iPad5 of sIDDispParms3 */
ZELTAGAPI_EXPORT int getIDDispParms3_iPad5(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iPad5(short value);
/** @return the word iPad6 of sIDDispParms3 */
ZELTAGAPI_EXPORT int getIDDispParms3_iPad6(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iPad6(short value);
/** @return the word iPad7 of sIDDispParms3 */
ZELTAGAPI_EXPORT int getIDDispParms3_iPad7(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setIDDispParms3_iPad7(short value);

/* sTimeParms */

/** @return the word iBitStrmTO of sTimeParms:
 * Wiegand read times out after this msec time (4msec gran.) */
ZELTAGAPI_EXPORT int getTimeParms_iBitStrmTO(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_iBitStrmTO(short value);
/** @return the word iIDHoldTO of sTimeParms:
 * Card ID remains valid for this msec time (50msec gran.) */
ZELTAGAPI_EXPORT int getTimeParms_iIDHoldTO(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_iIDHoldTO(short value);
/** @return the word iIDLockOutTm of sTimeParms:
 * Squelch repetitive reader reports (usually > 1000) in msec (50msec gran.) */
ZELTAGAPI_EXPORT int getTimeParms_iIDLockOutTm(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_iIDLockOutTm(short value);
/** @return the word iUSBKeyPrsTm of sTimeParms:
 * Sets USB inter-key 'Press' time in msecs (4msec gran.) */
ZELTAGAPI_EXPORT int getTimeParms_iUSBKeyPrsTm(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_iUSBKeyPrsTm(short value);
/** @return the word iUSBKeyRlsTm of sTimeParms:
 * Sets USB inter-key 'Release' time in msecs (4msec gran.) */
ZELTAGAPI_EXPORT int getTimeParms_iUSBKeyRlsTm(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_iUSBKeyRlsTm(short value);
/** @return the word ExFeatures01 of sTimeParms */
ZELTAGAPI_EXPORT int getTimeParms_ExFeatures01(void);
/** The low seven bits come out set whatever the value.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_ExFeatures01(short value);
/** @return the word iPad6 of sTimeParms */
ZELTAGAPI_EXPORT int getTimeParms_iPad6(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_iPad6(short value);
/** @return the word iTPCfgFlg3 of sTimeParms:
 * Further Flags not related to Time at all (see tsCfgFlags3) */
ZELTAGAPI_EXPORT int getTimeParms_iTPCfgFlg3(void);
/** Has no effect: the third set of flags decides this word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setTimeParms_iTPCfgFlg3(short value);

/* sLEDCtrl */

/** @return the word bAppCtrlsLED of sLEDCtrl: Display LEDs are controlled by user thru this DLL */
ZELTAGAPI_EXPORT int getLEDCtrl_bAppCtrlsLED(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_bAppCtrlsLED(short value);
/** @return the word iRedLEDState of sLEDCtrl: 0 == Off, 1 == On */
ZELTAGAPI_EXPORT int getLEDCtrl_iRedLEDState(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_iRedLEDState(short value);
/** @return the word iGrnLEDState of sLEDCtrl: 0 == Off, 1 == On */
ZELTAGAPI_EXPORT int getLEDCtrl_iGrnLEDState(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_iGrnLEDState(short value);
/** @return the word iPad3 of sLEDCtrl */
ZELTAGAPI_EXPORT int getLEDCtrl_iPad3(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_iPad3(short value);
/** @return the word iPad4 of sLEDCtrl */
ZELTAGAPI_EXPORT int getLEDCtrl_iPad4(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_iPad4(short value);
/** @return the word iPad5 of sLEDCtrl */
ZELTAGAPI_EXPORT int getLEDCtrl_iPad5(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_iPad5(short value);
/** @return the word iPad6 of sLEDCtrl */
ZELTAGAPI_EXPORT int getLEDCtrl_iPad6(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_iPad6(short value);
/** @return the word bVolatile of sLEDCtrl: 0 == commit to EE, 1 == Don't store to EE */
ZELTAGAPI_EXPORT int getLEDCtrl_bVolatile(void);
/** A value other than 0 sends the record to the reader at once.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setLEDCtrl_bVolatile(short value);

/* sBprRlyCtrl */

/** @return the word iPad0 of sBprRlyCtrl */
ZELTAGAPI_EXPORT int getBprRlyCtrl_iPad0(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_iPad0(short value);
/** @return the word iBeeperState of sBprRlyCtrl: 0 == Off, 1 == On */
ZELTAGAPI_EXPORT int getBprRlyCtrl_iBeeperState(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_iBeeperState(short value);
/** @return the word iRelayState of sBprRlyCtrl: 0 == Off, 1 == On */
ZELTAGAPI_EXPORT int getBprRlyCtrl_iRelayState(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_iRelayState(short value);
/** @return the word iPad3 of sBprRlyCtrl */
ZELTAGAPI_EXPORT int getBprRlyCtrl_iPad3(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_iPad3(short value);
/** @return the word iPad4 of sBprRlyCtrl */
ZELTAGAPI_EXPORT int getBprRlyCtrl_iPad4(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_iPad4(short value);
/** @return the word iPad5 of sBprRlyCtrl */
ZELTAGAPI_EXPORT int getBprRlyCtrl_iPad5(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_iPad5(short value);
/** @return the word iPad6 of sBprRlyCtrl */
ZELTAGAPI_EXPORT int getBprRlyCtrl_iPad6(void);
/** Sets that word.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_iPad6(short value);
/** @return the word bVolatile of sBprRlyCtrl: 0 == commit to EE, 1 == Don't store to EE */
ZELTAGAPI_EXPORT int getBprRlyCtrl_bVolatile(void);
/** A value other than 0 sends the record to the reader at once.
 * @param value the word
 * @return 1 for success */
ZELTAGAPI_EXPORT int setBprRlyCtrl_bVolatile(short value);

ZELTAGAPI_END

#endif
