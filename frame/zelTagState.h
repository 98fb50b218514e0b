/* SPDX-License-Identifier: MIT */
/** @file
 * The library's state as exported data, for applications that read it directly.
 *
 * Optional: zelTagAPI.h alone serves most applications. This header declares short names such as
 * `path` and `space`; include it only where they are meant. No access is locked or atomic.
 */
#ifndef ZELTAGAPI_STATE_H
#define ZELTAGAPI_STATE_H

#include "frame/zelTagEcho.h"
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
    ZELTAGAPI_MAX_DEVICES = 127, /**< records in the device table */
    ZELTAGAPI_MAX_CONFIGS = 11,  /**< configurations of a record */
    ZELTAGAPI_NAME_SIZE = 512,   /**< bytes of a device name, the ending zero among them */
    ZELTAGAPI_ID_SIZE = 32       /**< bytes of an identifier */
};

/** A row of an exported table: the name of a word and what it means. */
typedef struct tsNamePair {
    const char* name;        /**< the word's name */
    const char* description; /**< empty where there is none */
} tsNamePair;

/** One configuration of a proximity reader. */
typedef struct tsTagCfg {
    uint32_t bCfgValid;                 /**< not 0 once filled from a reader or a file */
    uint32_t bDirtyIDFrmt2;             /**< block 2 is to be written */
    struct sCfgFlags sCfgFlags;         /**< first set of flags */
    struct sIDBitCnts sIDBitCnts;       /**< bit counts */
    uint32_t bDirtyIDFrmt1;             /**< block 0 is to be written */
    struct sIDDispParms sIDDispParms;   /**< display settings */
    uint32_t bDirtyTime;                /**< block 1 is to be written */
    struct sTimeParms sTimeParms;       /**< times */
    struct sCfgFlags2 sCfgFlags2;       /**< second set of flags */
    struct sCfgFlags3 sCfgFlags3;       /**< third set of flags */
    struct sIDDispParms2 sIDDispParms2; /**< lead and card-gone characters */
    struct sIDDispParms3 sIDDispParms3; /**< trail characters */
    struct sLEDCtrl sLEDCtrl;           /**< LED settings */
    struct sBprRlyCtrl sBprRlyCtrl;     /**< beeper and relay settings */
    uint32_t bDirtyExt;                 /**< block 3 is to be written */
    uint16_t ExtBlock[7];               /**< image of block 3, bytes 0 to 6 */
    uint32_t bDirtySepFld;            /**< the pages of uSFD and the key values are to be written */
    struct uSFD uSFD;                 /**< field and separator data */
    struct sHashKeyData sHashKeyData; /**< key values */
    uint32_t AZERTYShiftLock;         /**< keyboard option of block 3 */
    uint32_t ExtendedPrecisionMath;   /**< display option of block 3 */
    uint32_t b64BytesInPackets;       /**< held for the application alone */
    uint32_t bEasyReadMode;           /**< held for the application alone */
    uint32_t bPrependCSN;             /**< held for the application alone */
    uint16_t iCardType;               /**< card type; bits 4 to 7 are no part of its identity */
    uint16_t iCardPriority;           /**< 0 or 1 */
} tsTagCfg;

/** One user field of a magnetic stripe reader: 27 bytes. */
typedef struct BandUserField {
    uint8_t Enable;      /**< 1: the field is used */
    uint8_t Skip;        /**< 1: the field is skipped, for going on behind an error */
    uint8_t Track;       /**< 1 to 3 */
    uint8_t Field;       /**< number of the track's field */
    uint8_t ByteOffset;  /**< where in the track's field it begins */
    uint8_t Length;      /**< characters */
    uint8_t Termination; /**< character that ends it */
    uint8_t ShowSepSen;  /**< 1: with separators and sentinels */
    uint8_t ShowLRC;     /**< 1: with the LRC byte in hexadecimal */
    uint8_t IgnoreLRC;   /**< 1: used even with a wrong LRC */
    uint8_t nKeys;       /**< bytes of Keybyte in use */
    uint8_t Keybyte[16]; /**< keyboard: even scan codes, odd modifiers; ASCII: characters */
} BandUserField;

/** A magnetic stripe reader's part of its device record. */
typedef struct tsBand {
    uint32_t bBandOpen;          /**< 1 once a magnetic stripe reader took this record */
    uint32_t bBandCfgDirty;      /**< cleared by a read; nothing sets it */
    uint16_t iActTrack;          /**< track of the active identifier */
    uint16_t iActField;          /**< its field */
    uint16_t iActOffset;         /**< its offset in the field */
    uint16_t iActLength;         /**< its length */
    uint16_t iActTerm;           /**< character that ends it, 255 for none */
    uint16_t iBandLUID;          /**< logical unit ID as the reader has it */
    uint8_t HaltKBSend;          /**< 1: quiet, no keystrokes */
    uint8_t UseNumKP;            /**< 1: digits by the numeric keypad */
    uint8_t TrackEnables;        /**< bits 0 to 2: tracks 1 to 3 */
    uint8_t Beeper;              /**< high nibble good read, low nibble bad read */
    uint8_t LedColor[5];         /**< 0 off, 1 red, 2 green, 3 amber */
    BandUserField UserField[11]; /**< user fields 1 to 11 */
    uint16_t KeyPressTime;       /**< ms */
    uint16_t KeyReleaseTime;     /**< ms */
} tsBand;

/** A presence sensor's part of its device record. */
typedef struct tsEcho {
    uint32_t bEchoHalt;                   /**< last halt command, 176 or 177; 1 after a reset */
    uint32_t bEchoOpen;                   /**< 1 once a sensor took this record */
    uint32_t bEchoCfgValid;               /**< not 0 once the settings were read */
    uint32_t bDirtySonar;                 /**< sSonarParms is to be written */
    uint32_t bDirtyWalkAway;              /**< sWalkAwayParms is to be written */
    uint32_t bDirtyWalkUp;                /**< sWalkUpParms is to be written */
    uint32_t bDirtyIdle;                  /**< sIdleParms is to be written */
    struct sSonarParms sSonarParms;       /**< what the sensor looks for */
    struct sWalkAwayParms sWalkAwayParms; /**< keys sent when a person walks away */
    struct sWalkUpParms sWalkUpParms;     /**< keys sent when a person walks up */
    struct sIdleParms sIdleParms;         /**< what it does while nothing happens */
    uint8_t reserved[16];                 /**< stays zero */
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
    char szDevName[ZELTAGAPI_NAME_SIZE]; /**< for USB the device path */
    char szPartNum[25];                  /**< part number */
    char szFWFile[65];                   /**< firmware file name */
    char szFullFWVer[65];                /**< firmware version */
    uint16_t iLUID;                      /**< logical unit ID */
    uint16_t iDID;                       /**< device ID */
    uint32_t bLUIDDirty;                 /**< iLUID is to be written */
    uint16_t iFWVer;     /**< firmware version in packed nibbles, of a sensor or a stripe reader */
    int64_t lSN;         /**< serial number slot, see GetSN() */
    uint32_t bSepFldOK;  /**< the reader can deliver separator and field data */
    uint32_t bPartNumOK; /**< the reader can deliver a part number */
    tsTagCfg Cfg[ZELTAGAPI_MAX_CONFIGS]; /**< configurations of a proximity reader */
    tsBand Band;                         /**< part of a magnetic stripe reader */
    tsEcho Echo;                         /**< part of a sensor */
    struct CPort* pPort;                 /**< the byte stream; null: none */
    uint32_t iTagPlusState;  /**< 0 not known, 1 the probe failed, 2 multi-configuration reader */
    uint16_t iMaxConfig;     /**< highest configuration index, 0 to 10 */
    uint8_t iActConfig;      /**< active configuration */
    uint32_t FWVerTbl[3][6]; /**< version words by unit and slot; the sixth of a unit is unused */
    uint16_t CardTypeList[1025]; /**< ended by a 0 */
    uint8_t IPAddr[4];           /**< IPv4 address of a device on TCP */
    uint8_t MACAddr[6];          /**< MAC address of a device on TCP */
    uint64_t lLastIDTick;        /**< ms; see GetActiveID() in frame/calls/active_id.cpp */
    int32_t iVidPidIdx;          /**< matching row of zelTagVidPid, -1 for the built-in identity */
    uint32_t bTagAdv;            /**< 1: the keyboard-less kind */
    uint64_t lSourceEvent;       /**< value of setSourceEvent() */
} tsDevDat;

/** Two numbers that the library hands on to the application. */
typedef struct tsFilterPair {
    uint64_t mask;    /**< see GetVidPidFilterMask() */
    uint64_t compare; /**< see GetVidPidFilterCompare() */
} tsFilterPair;

/** A USB identity that counts as a proximity reader. */
typedef struct tsVidPidRow {
    tsFilterPair filter[2]; /**< 1 as its row tells it; 0 stays zero */
    uint16_t vendor;        /**< USB vendor ID; 0 ends the list */
    uint16_t product;       /**< USB product ID */
    char vendorName[52];    /**< as GetVidPidVendorName() tells it */
} tsVidPidRow;

/** The device filter list. */
typedef struct tsVidPidList {
    tsFilterPair defaults[2]; /**< the same for devices that no row matches */
    tsVidPidRow rows[51];     /**< ended by a row with vendor 0 */
} tsVidPidList;

/** An identifier that the reader kept for the host to fetch: 48 bytes. */
typedef struct tsQueuedID {
    uint8_t id[ZELTAGAPI_ID_SIZE]; /**< lowest byte first */
    uint64_t age;                  /**< as the reader tells it */
    int16_t word40;                /**< element 32 of GetQueuedID_index() */
    uint8_t byte42;                /**< element 34 */
    uint8_t byte43;                /**< element 35 */
} tsQueuedID;

/** The numbered messages of the firmware rules; defined inside the library. */
struct ErrorCodes;

ZELTAGAPI_BEGIN

/** @name Device table
 * @{ */
ZELTAGAPI_DATA(tsDevDat DevDat[ZELTAGAPI_MAX_DEVICES], DevDat); /**< the device table */
ZELTAGAPI_DATA(int16_t iActDev, iActDev);                       /**< index of the active device */
ZELTAGAPI_DATA(int16_t iDevsFnd, iDevsFnd);                     /**< records in use */
ZELTAGAPI_DATA(int32_t cbIndex, cbIndex);   /**< record that the next found device fills */
ZELTAGAPI_DATA(tsDevDat* pDevDat, pDevDat); /**< record 0 */

/** @} */

/** @name Connect
 * @{ */
ZELTAGAPI_DATA(uint16_t iCnctDevType, iCnctDevType); /**< 0 USB, 1 serial, 2 TCP, 65535 all */
ZELTAGAPI_DATA(uint64_t lLastCnctErr, lLastCnctErr); /**< error word of the connects */
ZELTAGAPI_DATA(uint64_t lLastICSWErr, lLastICSWErr); /**< status word of the last stream exchange */
ZELTAGAPI_DATA(bool tcpipUSBmode, tcpipUSBmode);     /**< a TCP connect holds the socket */
ZELTAGAPI_DATA(int32_t useACPMode, useACPMode);      /**< not 0: the ASCII command protocol */
ZELTAGAPI_DATA(tsVidPidList zelTagVidPid, zelTagVidPid); /**< the device filter list */
ZELTAGAPI_DATA(int32_t listIndex, listIndex);            /**< next row of zelTagVidPid to fill */
ZELTAGAPI_DATA(char VidPidVersion[33], VidPidVersion);   /**< stays empty */
ZELTAGAPI_DATA(char path[1024], path); /**< name of the file that holds the device filter list */

/** @} */

/** @name Lines and network
 * @{ */
ZELTAGAPI_DATA(uint16_t iComPortMin, iComPortMin); /**< first serial port that a connect tries */
ZELTAGAPI_DATA(uint16_t iComPortMax, iComPortMax); /**< last one */
ZELTAGAPI_DATA(uint16_t iVirtualComPortMin, iVirtualComPortMin); /**< first virtual port */
ZELTAGAPI_DATA(uint16_t iVirtualComPortMax, iVirtualComPortMax); /**< last one */
ZELTAGAPI_DATA(char LinuxDevPath[17][129], LinuxDevPath);  /**< row n: path of port n, 1 to 16 */
ZELTAGAPI_DATA(uint32_t baudrate, baudrate);               /**< speed of a serial port, baud */
ZELTAGAPI_DATA(uint32_t defaultbaudrate, defaultbaudrate); /**< see SetBaudRate() */
ZELTAGAPI_DATA(uint8_t ipAdr0, ipAdr0); /**< first byte of the IPv4 address that a connect tries */
ZELTAGAPI_DATA(uint8_t ipAdr1, ipAdr1); /**< second byte */
ZELTAGAPI_DATA(uint8_t ipAdr2, ipAdr2); /**< third byte */
ZELTAGAPI_DATA(uint8_t ipAdr3, ipAdr3); /**< fourth byte */
ZELTAGAPI_DATA(uint16_t ipPortNum, ipPortNum); /**< its TCP port */

/** @} */

/** @name Card data, shared by all devices
 * @{ */
ZELTAGAPI_DATA(uint8_t activeIDBuf[ZELTAGAPI_ID_SIZE], activeIDBuf); /**< the last identifier */
ZELTAGAPI_DATA(int16_t activeIDBufSz, activeIDBufSz);                /**< its size as asked for */
ZELTAGAPI_DATA(uint8_t activeCardDataBuf[256], activeCardDataBuf);   /**< the last card data */
ZELTAGAPI_DATA(tsQueuedID QueuedID, QueuedID); /**< the last queued identifier */
/** The enhanced security flag as last seen. */
ZELTAGAPI_DATA(bool enhanceSecurityFlagCurrFWState, enhanceSecurityFlagCurrFWState);

/** @} */

/** @name Names and descriptions of the words of the records, in the words' order
 * @{ */
ZELTAGAPI_DATA(tsNamePair CfgFlagsStr[8], CfgFlagsStr);         /**< of sCfgFlags */
ZELTAGAPI_DATA(tsNamePair CfgFlags2Str[8], CfgFlags2Str);       /**< of sCfgFlags2 */
ZELTAGAPI_DATA(tsNamePair CfgFlags3Str[8], CfgFlags3Str);       /**< of sCfgFlags3 */
ZELTAGAPI_DATA(tsNamePair IDBitCntsStr[8], IDBitCntsStr);       /**< of sIDBitCnts */
ZELTAGAPI_DATA(tsNamePair IDDispParmsStr[8], IDDispParmsStr);   /**< of sIDDispParms */
ZELTAGAPI_DATA(tsNamePair IDDispParms2Str[8], IDDispParms2Str); /**< of sIDDispParms2 */
ZELTAGAPI_DATA(tsNamePair IDDispParms3Str[8], IDDispParms3Str); /**< of sIDDispParms3 */
ZELTAGAPI_DATA(tsNamePair TimeParmsStr[8], TimeParmsStr);       /**< of sTimeParms */
ZELTAGAPI_DATA(tsNamePair LEDCtrlStr[8], LEDCtrlStr);           /**< of sLEDCtrl */
ZELTAGAPI_DATA(tsNamePair BprRlyCtrlStr[8], BprRlyCtrlStr);     /**< of sBprRlyCtrl */
ZELTAGAPI_DATA(tsNamePair FldDefStr[4], FldDefStr); /**< bytes of a field definition of uSFD */
ZELTAGAPI_DATA(tsNamePair SepDefStr[2], SepDefStr); /**< bytes of a separator definition */
ZELTAGAPI_DATA(tsNamePair AZERTYShiftLock[1], AZERTYShiftLock);             /**< of this option */
ZELTAGAPI_DATA(tsNamePair ExtendedPrecisionMath[1], ExtendedPrecisionMath); /**< of this option */

ZELTAGAPI_DATA(tsNamePair SonarParmsStr[8], SonarParmsStr);        /**< of sSonarParms */
ZELTAGAPI_DATA(tsNamePair WalkAwayParmsStr[16], WalkAwayParmsStr); /**< of sWalkAwayParms */
ZELTAGAPI_DATA(tsNamePair WalkUpParmsStr[16], WalkUpParmsStr);     /**< of sWalkUpParms */
ZELTAGAPI_DATA(tsNamePair IdleParmsStr[8], IdleParmsStr);          /**< of sIdleParms */

/** @} */

/** @name Sensor: the words last read, before any repair
 * @{ */
ZELTAGAPI_DATA(sSonarParms gsSonarParms2, gsSonarParms2);          /**< of sSonarParms */
ZELTAGAPI_DATA(sWalkAwayParms gsWalkAwayParms2, gsWalkAwayParms2); /**< of sWalkAwayParms */
ZELTAGAPI_DATA(sWalkUpParms gsWalkUpParms2, gsWalkUpParms2);       /**< of sWalkUpParms */
ZELTAGAPI_DATA(sIdleParms gsIdleParms2, gsIdleParms2);             /**< of sIdleParms */
ZELTAGAPI_DATA(sRangeInfo gsRangeInfo2, gsRangeInfo2);             /**< of sRangeInfo */

/** @} */

/** @name Firmware loading
 * @{ */
/** 1 once a boot loader of the Lark line answered. */
ZELTAGAPI_DATA(int32_t ReaderIsLark, ReaderIsLark);
ZELTAGAPI_DATA(int32_t giTargetMicro, giTargetMicro);   /**< microcontroller that is being loaded */
ZELTAGAPI_DATA(int32_t fastBootloader, fastBootloader); /**< 1 once a boot loader needs no pause */
ZELTAGAPI_DATA(int32_t delayNextLine, delayNextLine);   /**< the next poll waits the long delay */
ZELTAGAPI_DATA(struct ErrorCodes* errorCodes, errorCodes); /**< the messages of the rules */
#ifdef __cplusplus
ZELTAGAPI_DATA(std::string errorString, errorString); /**< the last message of the rules */
ZELTAGAPI_DATA(std::string space, space);             /**< one blank */
#endif

/** @} */

/** @name The one lock, recursive
 * @{ */
ZELTAGAPI_DATA(pthread_mutex_t zelLock, zelLock); /**< held by the calls marked "locks" */
ZELTAGAPI_DATA(pthread_mutexattr_t Attr, Attr);   /**< its attributes */

/** @} */

ZELTAGAPI_END

#endif
