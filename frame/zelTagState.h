/* SPDX-License-Identifier: MIT */
/* The library's state as exported data, for applications that read it directly.
 *
 * Optional: zelTagAPI.h alone serves most applications. This header declares short names such as
 * `path` and `space`; include it only where they are meant. No access is locked or atomic.
 */
#ifndef ZELTAGAPI_STATE_H
#define ZELTAGAPI_STATE_H

#include "frame/zelTagExport.h"
#include "frame/zelTagRecords.h"

#include <pthread.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
#include <string>
#endif

/** Sizes of the library's fixed tables. */
enum {
    ZELTAGAPI_MAX_DEVICES = 127,
    ZELTAGAPI_MAX_CONFIGS = 11,
    ZELTAGAPI_NAME_SIZE = 512,
    ZELTAGAPI_ID_SIZE = 32
};

/** A row of an exported table: the name of a word and what it means. */
typedef struct tsNamePair {
    const char* name;
    const char* description; /**< empty where there is none */
} tsNamePair;

/** One configuration of a proximity reader. */
typedef struct tsTagCfg {
    uint32_t bCfgValid;     /**< not 0 once filled from a reader or a file */
    uint32_t bDirtyIDFrmt2; /**< block 2 is to be written */
    struct sCfgFlags sCfgFlags;
    struct sIDBitCnts sIDBitCnts;
    uint32_t bDirtyIDFrmt1; /**< block 0 is to be written */
    struct sIDDispParms sIDDispParms;
    uint32_t bDirtyTime; /**< block 1 is to be written */
    struct sTimeParms sTimeParms;
    struct sCfgFlags2 sCfgFlags2;
    struct sCfgFlags3 sCfgFlags3;
    struct sIDDispParms2 sIDDispParms2;
    struct sIDDispParms3 sIDDispParms3;
    struct sLEDCtrl sLEDCtrl;
    struct sBprRlyCtrl sBprRlyCtrl;
    uint32_t bDirtyExt;    /**< block 3 is to be written */
    uint16_t ExtBlock[7];  /**< image of block 3, bytes 0 to 6 */
    uint32_t bDirtySepFld; /**< the pages of uSFD and the key values are to be written */
    struct uSFD uSFD;
    struct sHashKeyData sHashKeyData;
    uint32_t AZERTYShiftLock;
    uint32_t ExtendedPrecisionMath;
    uint32_t b64BytesInPackets;
    uint32_t bEasyReadMode;
    uint32_t bPrependCSN;
    uint16_t iCardType;
    uint16_t iCardPriority; /**< 0 or 1 */
} tsTagCfg;

/** One user field of a magnetic stripe reader: 27 bytes. */
typedef struct BandUserField {
    uint8_t Enable;
    uint8_t Skip;
    uint8_t Track; /**< 1 to 3 */
    uint8_t Field;
    uint8_t ByteOffset;
    uint8_t Length;
    uint8_t Termination;
    uint8_t ShowSepSen;
    uint8_t ShowLRC;
    uint8_t IgnoreLRC;
    uint8_t nKeys;
    uint8_t Keybyte[16];
} BandUserField;

/** A magnetic stripe reader's part of its device record. */
typedef struct tsBand {
    uint32_t bBandOpen; /**< 1 once a magnetic stripe reader took this record */
    uint32_t bBandCfgDirty;
    uint16_t iActTrack;
    uint16_t iActField;
    uint16_t iActOffset;
    uint16_t iActLength;
    uint16_t iActTerm;
    uint16_t iBandLUID;
    uint8_t HaltKBSend; /**< 1: quiet, no keystrokes */
    uint8_t UseNumKP;
    uint8_t TrackEnables; /**< bits 0 to 2: tracks 1 to 3 */
    uint8_t Beeper;       /**< high nibble good read, low nibble bad read */
    uint8_t LedColor[5];  /**< 0 off, 1 red, 2 green, 3 amber */
    BandUserField UserField[11];
    uint16_t KeyPressTime;   /**< ms */
    uint16_t KeyReleaseTime; /**< ms */
} tsBand;

/** Sensor settings, eight words. */
typedef struct sSonarParms {
    int16_t LEDFlagsS;
    int16_t PingRateS; /**< ms */
    int16_t Reserved1S;
    int16_t MinDistS; /**< inches */
    int16_t MaxDistS; /**< inches */
    int16_t ORDBTmS;
    int16_t IRDBTmS;
    int16_t StartDlyS; /**< s */
} sSonarParms;

/** Keys sent when a person walks away, 16 words. */
typedef struct sWalkAwayParms {
    int16_t KeyCountWA;
    int16_t InterKeyDelayWA; /**< ms */
    int16_t Key1ModsWA, Key2ModsWA, Key3ModsWA, Key4ModsWA, Key5ModsWA, Key6ModsWA;
    int16_t Flags0WA;
    int16_t MinFltRepRate;
    int16_t Key1CodeWA, Key2CodeWA, Key3CodeWA, Key4CodeWA, Key5CodeWA, Key6CodeWA;
} sWalkAwayParms;

/** Keys sent when a person walks up, 16 words. */
typedef struct sWalkUpParms {
    int16_t KeyCountWU;
    int16_t InterKeyDelayWU; /**< ms */
    int16_t Key1ModsWU, Key2ModsWU, Key3ModsWU, Key4ModsWU, Key5ModsWU, Key6ModsWU;
    int16_t Flags0WU;
    int16_t Reserved2WU;
    int16_t Key1CodeWU, Key2CodeWU, Key3CodeWU, Key4CodeWU, Key5CodeWU, Key6CodeWU;
} sWalkUpParms;

/** Key pressed while idle, eight words. */
typedef struct sIdleParms {
    int16_t Reserved1I;
    int16_t PressRateI; /**< s, 0 disables */
    int16_t Key1ModsI;
    int16_t Key1CodeI;
    int16_t FlagsI;
    int16_t DMTODeltaI;
    int16_t DMTOTmI;    /**< s */
    int16_t SNBlankTmI; /**< 43 us */
} sIdleParms;

/** What the sensor sees, five words. */
typedef struct sRangeInfo {
    int16_t iObjDist; /**< inches */
    int16_t bRangeStat0;
    int16_t bRangeStat1;
    int16_t bRangeStat2;
    int16_t iRangeStat;
} sRangeInfo;

/** A presence sensor's part of its device record. */
typedef struct tsEcho {
    uint32_t bEchoHalt;
    uint32_t bEchoOpen; /**< 1 once a sensor took this record */
    uint32_t bEchoCfgValid;
    uint32_t bDirtySonar;
    uint32_t bDirtyWalkAway;
    uint32_t bDirtyWalkUp;
    uint32_t bDirtyIdle;
    struct sSonarParms sSonarParms;
    struct sWalkAwayParms sWalkAwayParms;
    struct sWalkUpParms sWalkUpParms;
    struct sIdleParms sIdleParms;
    uint8_t reserved[16]; /**< stays zero */
} tsEcho;

/** A device on a byte stream; defined inside the library. */
struct CPort;

/** The record of one device. Plain data; it is copied whole. */
typedef struct tsDevDat {
    uint32_t bTagOpen; /**< 1 once a proximity reader took this record */
    int64_t lLastErr;  /**< error word, see GetLastLibErr() */
    uint16_t iDevType; /**< 0 USB feature reports, 1 byte stream */
    uint32_t iProduct; /**< 1 zelTag, 2 zelBand, 4 zelEcho, 0 empty record */
    void* hDev;        /**< USB handle; all ones: none. Compared as an unsigned number: 0 is held */
    char szDevName[ZELTAGAPI_NAME_SIZE];
    char szPartNum[25];
    char szFWFile[65];
    char szFullFWVer[65];
    uint16_t iLUID;
    uint16_t iDID;
    uint32_t bLUIDDirty; /**< iLUID is to be written */
    uint16_t iFWVer;
    int64_t lSN;
    uint32_t bSepFldOK;  /**< the reader can deliver separator and field data */
    uint32_t bPartNumOK; /**< the reader can deliver a part number */
    tsTagCfg Cfg[ZELTAGAPI_MAX_CONFIGS];
    tsBand Band;
    tsEcho Echo;
    struct CPort* pPort;
    uint32_t iTagPlusState; /**< 0 not known, 1 the probe failed, 2 multi-configuration reader */
    uint16_t iMaxConfig;    /**< highest configuration index, 0 to 10 */
    uint8_t iActConfig;     /**< active configuration */
    uint32_t FWVerTbl[3][6];
    uint16_t CardTypeList[1025]; /**< ended by a 0 */
    uint8_t IPAddr[4];
    uint8_t MACAddr[6];
    uint64_t lLastIDTick; /**< ms; see GetActiveID() in frame/active_id.cpp */
    int32_t iVidPidIdx;   /**< matching row of zelTagVidPid, -1 for the built-in identity */
    uint32_t bTagAdv;     /**< 1: the keyboard-less kind */
    uint64_t lSourceEvent;
} tsDevDat;

/** Two numbers that the library hands on to the application. */
typedef struct tsFilterPair {
    uint64_t mask;
    uint64_t compare;
} tsFilterPair;

/** A USB identity that counts as a proximity reader. */
typedef struct tsVidPidRow {
    tsFilterPair filter[2];
    uint16_t vendor; /**< 0 ends the list */
    uint16_t product;
    char vendorName[52];
} tsVidPidRow;

/** The device filter list. */
typedef struct tsVidPidList {
    tsFilterPair defaults[2];
    tsVidPidRow rows[51];
} tsVidPidList;

/** An identifier that the reader kept for the host to fetch: 48 bytes. */
typedef struct tsQueuedID {
    uint8_t id[ZELTAGAPI_ID_SIZE];
    uint64_t age;
    int16_t word40;
    uint8_t byte42;
    uint8_t byte43;
} tsQueuedID;

/** The numbered messages of the firmware rules; defined inside the library. */
struct ErrorCodes;

ZELTAGAPI_BEGIN

/* Device table */
ZELTAGAPI_DATA(tsDevDat DevDat[ZELTAGAPI_MAX_DEVICES], DevDat);
ZELTAGAPI_DATA(int16_t iActDev, iActDev);   /**< index of the active device */
ZELTAGAPI_DATA(int16_t iDevsFnd, iDevsFnd); /**< records in use */
ZELTAGAPI_DATA(int32_t cbIndex, cbIndex);   /**< record that the next found device fills */
ZELTAGAPI_DATA(tsDevDat* pDevDat, pDevDat); /**< record 0 */

/* Connect */
ZELTAGAPI_DATA(uint16_t iCnctDevType, iCnctDevType); /**< 0 USB, 1 serial, 2 TCP, 65535 all */
ZELTAGAPI_DATA(uint64_t lLastCnctErr, lLastCnctErr); /**< error word of the connects */
ZELTAGAPI_DATA(uint64_t lLastICSWErr, lLastICSWErr); /**< status word of the last stream exchange */
ZELTAGAPI_DATA(bool tcpipUSBmode, tcpipUSBmode);
ZELTAGAPI_DATA(int32_t useACPMode, useACPMode); /**< not 0: the ASCII command protocol */
ZELTAGAPI_DATA(tsVidPidList zelTagVidPid, zelTagVidPid);
ZELTAGAPI_DATA(int32_t listIndex, listIndex); /**< next row of zelTagVidPid to fill */
ZELTAGAPI_DATA(char VidPidVersion[33], VidPidVersion);
ZELTAGAPI_DATA(char path[1024], path);

/* Lines and network */
ZELTAGAPI_DATA(uint16_t iComPortMin, iComPortMin);
ZELTAGAPI_DATA(uint16_t iComPortMax, iComPortMax);
ZELTAGAPI_DATA(uint16_t iVirtualComPortMin, iVirtualComPortMin);
ZELTAGAPI_DATA(uint16_t iVirtualComPortMax, iVirtualComPortMax);
ZELTAGAPI_DATA(char LinuxDevPath[17][129], LinuxDevPath); /**< row n: path of port n, 1 to 16 */
ZELTAGAPI_DATA(uint32_t baudrate, baudrate);
ZELTAGAPI_DATA(uint32_t defaultbaudrate, defaultbaudrate);
ZELTAGAPI_DATA(uint8_t ipAdr0, ipAdr0);
ZELTAGAPI_DATA(uint8_t ipAdr1, ipAdr1);
ZELTAGAPI_DATA(uint8_t ipAdr2, ipAdr2);
ZELTAGAPI_DATA(uint8_t ipAdr3, ipAdr3);
ZELTAGAPI_DATA(uint16_t ipPortNum, ipPortNum);

/* Card data, shared by all devices */
ZELTAGAPI_DATA(uint8_t activeIDBuf[ZELTAGAPI_ID_SIZE], activeIDBuf);
ZELTAGAPI_DATA(int16_t activeIDBufSz, activeIDBufSz);
ZELTAGAPI_DATA(uint8_t activeCardDataBuf[256], activeCardDataBuf);
ZELTAGAPI_DATA(tsQueuedID QueuedID, QueuedID);
ZELTAGAPI_DATA(bool enhanceSecurityFlagCurrFWState, enhanceSecurityFlagCurrFWState);

/* Names and descriptions of the words of the records, in the words' order */
ZELTAGAPI_DATA(tsNamePair CfgFlagsStr[8], CfgFlagsStr);
ZELTAGAPI_DATA(tsNamePair CfgFlags2Str[8], CfgFlags2Str);
ZELTAGAPI_DATA(tsNamePair CfgFlags3Str[8], CfgFlags3Str);
ZELTAGAPI_DATA(tsNamePair IDBitCntsStr[8], IDBitCntsStr);
ZELTAGAPI_DATA(tsNamePair IDDispParmsStr[8], IDDispParmsStr);
ZELTAGAPI_DATA(tsNamePair IDDispParms2Str[8], IDDispParms2Str);
ZELTAGAPI_DATA(tsNamePair IDDispParms3Str[8], IDDispParms3Str);
ZELTAGAPI_DATA(tsNamePair TimeParmsStr[8], TimeParmsStr);
ZELTAGAPI_DATA(tsNamePair LEDCtrlStr[8], LEDCtrlStr);
ZELTAGAPI_DATA(tsNamePair BprRlyCtrlStr[8], BprRlyCtrlStr);
ZELTAGAPI_DATA(tsNamePair FldDefStr[4], FldDefStr); /**< bytes of a field definition of uSFD */
ZELTAGAPI_DATA(tsNamePair SepDefStr[2], SepDefStr); /**< bytes of a separator definition */
ZELTAGAPI_DATA(tsNamePair AZERTYShiftLock[1], AZERTYShiftLock);
ZELTAGAPI_DATA(tsNamePair ExtendedPrecisionMath[1], ExtendedPrecisionMath);

/* Sensor: the words last read, before any repair */
ZELTAGAPI_DATA(sSonarParms gsSonarParms2, gsSonarParms2);
ZELTAGAPI_DATA(sWalkAwayParms gsWalkAwayParms2, gsWalkAwayParms2);
ZELTAGAPI_DATA(sWalkUpParms gsWalkUpParms2, gsWalkUpParms2);
ZELTAGAPI_DATA(sIdleParms gsIdleParms2, gsIdleParms2);
ZELTAGAPI_DATA(sRangeInfo gsRangeInfo2, gsRangeInfo2);

/* Firmware loading */
ZELTAGAPI_DATA(int32_t ReaderIsLark, ReaderIsLark);
ZELTAGAPI_DATA(int32_t giTargetMicro, giTargetMicro);
ZELTAGAPI_DATA(int32_t fastBootloader, fastBootloader);
ZELTAGAPI_DATA(int32_t delayNextLine, delayNextLine);
ZELTAGAPI_DATA(struct ErrorCodes* errorCodes, errorCodes);
#ifdef __cplusplus
ZELTAGAPI_DATA(std::string errorString, errorString); /**< the last message of the rules */
ZELTAGAPI_DATA(std::string space, space);             /**< one blank */
#endif

/* The one lock, recursive */
ZELTAGAPI_DATA(pthread_mutex_t zelLock, zelLock);
ZELTAGAPI_DATA(pthread_mutexattr_t Attr, Attr);

ZELTAGAPI_END

#endif
