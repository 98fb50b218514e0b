/* SPDX-License-Identifier: MIT */
/** @file
 * The ten records of a proximity reader's settings, eight signed 16-bit words each.
 * Made from frame/records.def by scripts/generate_records.py; change the rows there. */
#ifndef ZELTAGAPI_RECORDS_H
#define ZELTAGAPI_RECORDS_H

#include <stdint.h>

/* clang-format off */

/** The record of GetFlags() and SetFlags(). */
typedef struct sCfgFlags {
    int16_t bFixLenDsp; /**< Send as fixed length with leading zeros as needed */
    int16_t bFrcBitCntEx; /**< Force Rx'd bit count to be exact to be valid */
    int16_t bStripFac; /**< Strip the FAC from the ID (not discarded) */
    int16_t bSndFac; /**< Send the FAC (if stripped from data) */
    int16_t bUseDelFac2Id; /**< Put a delimiter between FAC and ID on send */
    int16_t bNoUseELChar; /**< Don't use a EndLine char on send (default to ENTER) */
    int16_t bSndOnRx; /**< Send valid ID as soon as it is received (iIDLockOutTm timer not used) */
    int16_t bHaltKBSnd; /**< Don't Send keys to USB (Get ID mechanism) */
} sCfgFlags;

/** The record of GetFlags2() and SetFlags2(). */
typedef struct sCfgFlags2 {
    int16_t bUseLeadChrs; /**< Use leading chars in ID KB send */
    int16_t bDspHex; /**< Display ID as ASCII Hex [not ASCII decimal] */
    int16_t bWiegInvData; /**< Wiegand data on pins is inverted */
    int16_t bUseInvDataF; /**< use the bWiegInvData flag over hardware setting */
    int16_t bRevWiegBits; /**< Reverse the Wiegand Rx bits */
    int16_t bBeepID; /**< Beep when ID received */
    int16_t bRevBytes; /**< Reverse byte order (CSN reader) */
    int16_t isASCIIpresent; /**< check if ASCII conversion type is present within the reader */
} sCfgFlags2;

/** The record of GetFlags3() and SetFlags3(). */
typedef struct sCfgFlags3 {
    int16_t bUseNumKP; /**< Euro KB flag */
    int16_t bSndSFON; /**< Split format ON = 1, old combined scheme = 0 */
    int16_t bSndSFFC; /**< 0 = FAC Decimal, 1 = FAC Hex */
    int16_t bSndSFID; /**< 0 = ID Decimal, 1 = ID Hex */
    int16_t bPrxProEm; /**< Use ProxPro emulation */
    int16_t bUse64Bit; /**< 0 = 32-bit, 1 = 64-bit Display Math */
    int16_t bNotBootDev; /**< USB Enum: 0=BootDevice, 1=NOTBootDevice */
    int16_t bLowerCaseHex; /**< 0= Upper case , 1= Lower case */
} sCfgFlags3;

/** The record of GetIDBitCnts() and SetIDBitCnts(). */
typedef struct sIDBitCnts {
    int16_t iLeadParityBitCnt; /**< Wiegand Leading Parity bit count to be stripped */
    int16_t iTrailParityBitCnt; /**< Wiegand Trailing Parity bit count to be stripped */
    int16_t iIDBitCnt; /**< if bStripFac, this determines bit count of ID and FAC */
    int16_t iTotalBitCnt; /**< if bFrcBitCntEx, card read (including parity) must match this */
    int16_t iPad4; /**< carried, no effect */
    int16_t iPad5; /**< carried, no effect */
    int16_t iPad6; /**< carried, no effect */
    int16_t iPad7; /**< carried, no effect */
} sIDBitCnts;

/** The record of GetIDDispParms() and SetIDDispParms(). */
typedef struct sIDDispParms {
    /** if bStripFac & bSndFac & bUseDelFac2Id, this char sent between FAC & ID */
    int16_t iFACIDDelim;
    int16_t iELDelim; /**< if NOT bNoUseELChar, this char sent at end of ID */
    int16_t iIDDispLen; /**< if bFixLenDsp, ID padded with zeros to this length */
    int16_t iFACDispLen; /**< if bFixLenDsp, FAC padded with zeros to this length */
    int16_t iExOutputFormat; /**< 0 = Data Format Mode, 1 = Extended Mode */
    int16_t iPad5; /**< carried, no effect */
    int16_t iPad6; /**< carried, no effect */
    int16_t iPad7; /**< carried, no effect */
} sIDDispParms;

/** The record of GetIDDispParms2() and SetIDDispParms2(). */
typedef struct sIDDispParms2 {
    int16_t iLeadChrCnt; /**< if bUseLeadChrs, this contains the lead char count (<=3) */
    int16_t iLeadChr0; /**< these lead characters are filled in (up to 3) */
    int16_t iLeadChr1; /**< the second lead character */
    int16_t iLeadChr2; /**< the third lead character */
    int16_t iCrdGnChr0; /**< if non-zero, sent when ID goes Invalid */
    int16_t iCrdGnChr1; /**< if this and Chr0 non-zero, sent when ID goes Invalid */
    int16_t iPad6; /**< carried, no effect */
    int16_t iPad7; /**< carried, no effect */
} sIDDispParms2;

/** The record of GetIDDispParms3() and SetIDDispParms3(). */
typedef struct sIDDispParms3 {
    int16_t iTrailChrCnt; /**< this contains the trail char count (<=3) */
    int16_t iTrailChr0; /**< these trail characters are filled in (up to 3) */
    int16_t iTrailChr1; /**< NOTE: LeadChrCnt + TrailCheCnt <= 3 */
    int16_t iTrailChr2; /**< LeadChrs have priority */
    int16_t iPad4; /**< carried, no effect */
    int16_t iPad5; /**< carried, no effect */
    int16_t iPad6; /**< carried, no effect */
    int16_t iPad7; /**< carried, no effect */
} sIDDispParms3;

/** The record of GetTimeParms() and SetTimeParms(). */
typedef struct sTimeParms {
    int16_t iBitStrmTO; /**< Wiegand read times out after this msec time (4msec gran.) */
    int16_t iIDHoldTO; /**< Card ID remains valid for this msec time (50msec gran.) */
    /** Squelch repetitive reader reports (usually > 1000) in msec (50msec gran.) */
    int16_t iIDLockOutTm;
    int16_t iUSBKeyPrsTm; /**< Sets USB inter-key 'Press' time in msecs (4msec gran.) */
    int16_t iUSBKeyRlsTm; /**< Sets USB inter-key 'Release' time in msecs (4msec gran.) */
    int16_t ExFeatures01; /**< features that the reader reports */
    int16_t iPad6; /**< carried, no effect */
    int16_t iTPCfgFlg3; /**< Further Flags not related to Time at all (see tsCfgFlags3) */
} sTimeParms;

/** The record of GetLEDCtrl() and SetLEDCtrl(). */
typedef struct sLEDCtrl {
    int16_t bAppCtrlsLED; /**< Display LEDs are controlled by user thru this DLL */
    int16_t iRedLEDState; /**< 0 == Off, 1 == On */
    int16_t iGrnLEDState; /**< 0 == Off, 1 == On */
    int16_t iPad3; /**< carried, no effect */
    int16_t iPad4; /**< carried, no effect */
    int16_t iPad5; /**< carried, no effect */
    int16_t iPad6; /**< carried, no effect */
    int16_t bVolatile; /**< 0 == commit to EE, 1 == Don't store to EE */
} sLEDCtrl;

/** The record of GetBprRlyCtrl() and SetBprRlyCtrl(). */
typedef struct sBprRlyCtrl {
    int16_t iPad0; /**< carried, no effect */
    int16_t iBeeperState; /**< 0 == Off, 1 == On */
    int16_t iRelayState; /**< 0 == Off, 1 == On */
    int16_t iPad3; /**< carried, no effect */
    int16_t iPad4; /**< carried, no effect */
    int16_t iPad5; /**< carried, no effect */
    int16_t iPad6; /**< carried, no effect */
    int16_t bVolatile; /**< 0 == commit to EE, 1 == Don't store to EE */
} sBprRlyCtrl;

/** Separator and field definitions of a reader that can split a card's data. */
typedef struct uSFD {
    uint8_t bytes[128]; /**< header, definitions, free data */
} uSFD;

/** Two 16-byte key values. */
typedef struct sHashKeyData {
    uint8_t key[2][16]; /**< sent with the field data */
} sHashKeyData;

#endif
