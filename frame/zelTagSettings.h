/* SPDX-License-Identifier: MIT */
/** @file
 * The calls on the settings of a device: all of them at once, by record, and of several
 * configurations. zelTagAPI.h includes it and tells what all calls have in common. */
#ifndef ZELTAGAPI_SETTINGS_H
#define ZELTAGAPI_SETTINGS_H

#include "frame/zelTagExport.h"
#include "frame/zelTagRecords.h"

ZELTAGAPI_BEGIN

/** @name Whole configuration
 * @{ */

/** Reads the active device's whole configuration into the library: for a proximity reader its LUID,
 * four blocks, field data and texts, once for each of its configurations; for a magnetic stripe
 * reader 37 commands; for a sensor seven blocks of 250 ms each. Locks.
 * @return 1; 0 with no active device or with ZELTAGAPI_ERR_READ, of a stripe reader's user field
 * with ZELTAGAPI_ERR_FIELD; the unsupported value for another product */
ZELTAGAPI_EXPORT int ReadCfg(void);

/** Writes what was changed of the configuration to the active device and lets it commit; pauses 20
 * ms or 1.2 s for each configuration, as a proximity reader needs. To a magnetic stripe reader all
 * is written, 37 commands and 1.3 s; to a sensor the records that were set, 250 ms a block. Locks.
 * @return 1; 0 with no active device, or when it failed: ZELTAGAPI_ERR_WRITE then, unless the
 * question for the beeper's volume, on which a proximity reader's pause depends, leaves its own
 * word; the unsupported value for another product */
ZELTAGAPI_EXPORT int WriteCfg(void);

/** Returns the active device to its factory defaults, pauses as long as it needs (1.2 s, 1.3 s or,
 * a sensor, 2 s) and reads the configuration back. Not locked.
 * @return 1, or 0 with ZELTAGAPI_ERR_RESET or ZELTAGAPI_ERR_READ */
ZELTAGAPI_EXPORT int ResetFactoryDflts(void);

/** Lets a multi-configuration reader return to its user defaults; pauses 100 ms. Read the
 * configuration afterwards. A sensor does the same, pauses 2 s, and is read.
 * @return 1, or 0 for a failure or a reader of another kind */
ZELTAGAPI_EXPORT int ResetUserDflts(void);

/** Lets a multi-configuration reader, or a sensor, keep its current settings as user defaults;
 * pauses 100 ms, or 2 s and a read.
 * @return as ResetUserDflts() */
ZELTAGAPI_EXPORT int SaveUserDflts(void);

/** Lets a multi-configuration reader copy its factory defaults over its user defaults and its
 * current settings; pauses 100 ms each.
 * @return as ResetUserDflts(), of the second copy */
ZELTAGAPI_EXPORT int zelTagPlusDefaults(void);

/** @} */

/** @name Records
 *
 * These calls work on the active configuration of the active proximity reader, in memory: no
 * device traffic, no lock. They return 1; 0 with the reason in the error word; the unsupported
 * value without such a reader.
 *
 * A get copies a record out. It fails with ZELTAGAPI_ERR_GET and ZELTAGAPI_ERR_NULL for a null
 * record or ZELTAGAPI_ERR_NEVER_READ before the first ReadCfg().
 *
 * A set checks the record, copies it in and marks it for WriteCfg(). It fails with
 * ZELTAGAPI_ERR_SET and ZELTAGAPI_ERR_NULL, or the code of the first word out of range: that word's
 * range stands at the call. Words without a range take any value.
 * @{ */

/** Copies the first set of flags out. Of a magnetic stripe reader and of a sensor bHaltKBSnd alone:
 * the other words stay as they are, and the result is 1.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetFlags(struct sCfgFlags* record);

/** Sets the first set of flags; of the other products bHaltKBSnd alone.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetFlags(struct sCfgFlags* record);

/** Copies the times out, in milliseconds. Those of a magnetic stripe reader are the library's own,
 * not KeyPressTime and KeyReleaseTime; a sensor has none: 0.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetTimeParms(struct sTimeParms* record);

/** Sets the times: iBitStrmTO and the key times at most 1020 ms in steps of 4 (codes 0x1030,
 * 0x1033, 0x1034), iIDHoldTO and iIDLockOutTm at most 12750 ms in steps of 50 (0x1031, 0x1032). The
 * record's iTPCfgFlg3 is thrown away.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetTimeParms(struct sTimeParms* record);

/** Checks times as SetTimeParms() does. No device traffic, no lock.
 * @param record the times; not null
 * @param fix 0: the first time out of range ORs its code into the active device's error word;
 * else such times are brought into their ranges
 * @return 1; 0 for a time out of range with `fix` 0 */
ZELTAGAPI_EXPORT int CheckUserTimeParms(struct sTimeParms* record, int fix);

/** Copies the LED settings out. A sensor has bAppCtrlsLED, iRedLEDState and iGrnLEDState: they are
 * cleared first, and set when its LED flags lie from 0 to 7; other flags are themselves the result.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetLEDCtrl(struct sLEDCtrl* record);

/** Sets the LEDs. With bVolatile they change at once (two reports out) and nothing is marked;
 * whether that went well isn't told. A magnetic stripe reader's change at once in any case, by one
 * command, whose result is told.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetLEDCtrl(struct sLEDCtrl* record);

/** Copies the second set of flags out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetFlags2(struct sCfgFlags2* record);

/** Sets the second set of flags; isASCIIpresent comes from the reader alone.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetFlags2(struct sCfgFlags2* record);

/** Copies the third set of flags out; of a magnetic stripe reader bUseNumKP alone, as GetFlags().
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetFlags3(struct sCfgFlags3* record);

/** Sets the third set of flags. bNotBootDev reaches the reader only when another record marks its
 * block. Of a magnetic stripe reader bUseNumKP alone.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetFlags3(struct sCfgFlags3* record);

/** Copies the bit counts out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDBitCnts(struct sIDBitCnts* record);

/** Sets the bit counts: parity at most 15, or 142 where ExFeatures01 has bit 7 (codes 0x1010,
 * 0x1011); iIDBitCnt 1 to 255 (0x1012), cut to seven bits on its way to the reader; iTotalBitCnt 26
 * to 255 (0x1013).
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDBitCnts(struct sIDBitCnts* record);

/** Copies the display settings out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDDispParms(struct sIDDispParms* record);

/** Sets the display settings: delimiters at most 255 (codes 0x1020, 0x1021), lengths at most 25
 * (0x1022, 0x1023).
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDDispParms(struct sIDDispParms* record);

/** Copies the lead and card-gone characters out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDDispParms2(struct sIDDispParms2* record);

/** Sets the lead and card-gone characters: iLeadChrCnt at most 3 (code 0x1050).
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDDispParms2(struct sIDDispParms2* record);

/** Copies the trail characters out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDDispParms3(struct sIDDispParms3* record);

/** Sets the trail characters: iTrailChrCnt at most 3 (code 0x1050); leads and trails beyond three
 * together are cut, leads first served.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDDispParms3(struct sIDDispParms3* record);

/** Copies the beeper and relay settings out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetBprRlyCtrl(struct sBprRlyCtrl* record);

/** Sets beeper and relay, with bVolatile as for SetLEDCtrl().
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetBprRlyCtrl(struct sBprRlyCtrl* record);

/** Copies the field and separator data out.
 * @param buffer 128 bytes
 * @param size at least 128
 * @return see above; 0 with no error word when `size` is less */
ZELTAGAPI_EXPORT int GetSepFldData(struct uSFD* buffer, short size);

/** Sets the field and separator data of a configuration that was read.
 * @param buffer 128 bytes
 * @param size at least 128
 * @return see above; 0 with no error word when `size` is less */
ZELTAGAPI_EXPORT int SetSepFldData(struct uSFD* buffer, short size);

/** Sets the two key values of 16 bytes; they go to the reader with the field data.
 * @param record 32 bytes
 * @return 1, or the unsupported value */
ZELTAGAPI_EXPORT int SetHashKeyData(struct sHashKeyData* record);

/** @} */

/** @name Reader modes
 *
 * Of the active proximity reader, in memory: no device traffic, no lock.
 * @{ */

/** Sets a keyboard option of block 3.
 * @param value 0 off, 1 on
 * @return 1, or the unsupported value */
ZELTAGAPI_EXPORT int SetAZERTYShiftLock(short value);

/** @return the option, 16 bits */
ZELTAGAPI_EXPORT int GetAZERTYShiftLock(void);

/** Sets a display option of block 3.
 * @param value 0 off, 1 on
 * @return 1, or the unsupported value */
ZELTAGAPI_EXPORT int SetExtendedPrecisionMath(short value);

/** @return the option, 16 bits */
ZELTAGAPI_EXPORT int GetExtendedPrecisionMath(void);

/** @return 128 when the reader's enhanced security flag is set, 0 when not; of configuration 0,
 * whichever is active */
ZELTAGAPI_EXPORT int GetEnhanceSecurityFlag(void);

/** Sets that flag; it goes to the reader with the field data of configuration 0.
 * @param value not 0: set */
ZELTAGAPI_EXPORT void SetEnhanceSecurityFlag(short value);

/** Holds a value that no report and no file carries.
 * @param value 16 bits
 * @return 1, or 0 without a proximity reader */
ZELTAGAPI_EXPORT int Set64BytesInPackets(short value);

/** @return the value held, or 0 */
ZELTAGAPI_EXPORT int Get64BytesInPackets(void);

/** As Set64BytesInPackets().
 * @param value 16 bits
 * @return as there */
ZELTAGAPI_EXPORT int SetEasyReadMode(short value);

/** @return the value held, or 0 */
ZELTAGAPI_EXPORT int GetEasyReadMode(void);

/** As Set64BytesInPackets().
 * @param value 16 bits
 * @return as there */
ZELTAGAPI_EXPORT int SetPrependCSN(short value);

/** @return the value held, or 0 */
ZELTAGAPI_EXPORT int GetPrependCSN(void);

/** Chooses, for all proximity readers on a byte stream, the ASCII protocol: identifier,
 * configuration read and written, factory reset, beep and LED then go that way. Readers on USB know
 * none. While it is chosen SetIDBitCnts() takes any counts, a volatile SetLEDCtrl() sends the
 * states held already, and WriteCfg() sends all, whatever is marked.
 * @param flag not 0: the ASCII protocol
 * @return 1, or the unsupported value without a proximity reader */
ZELTAGAPI_EXPORT int UseAsciiCommandProtocol(short flag);

/** @} */

/** @name Several configurations
 *
 * Of the active multi-configuration reader. No device traffic, no lock. On a reader of another
 * kind, or none: 0 unless told otherwise.
 * @{ */

/** @return the highest configuration index, 0 to 10 */
ZELTAGAPI_EXPORT int GetMaxConfig(void);

/** @return the active configuration's index */
ZELTAGAPI_EXPORT int GetActConfig(void);

/** Makes a configuration the active one in the library; the reader isn't told.
 * @param config its low eight bits count, 0 to GetMaxConfig()
 * @return 1, or 0 for an index outside */
ZELTAGAPI_EXPORT int SetActConfig(short config);

/** @return the active configuration's card type, 16 bits; -1 on a reader of another kind */
ZELTAGAPI_EXPORT int GetCardType(void);

/** @return the active configuration's priority, 0 or 1; -1 on a reader of another kind */
ZELTAGAPI_EXPORT int GetCardPriority(void);

/** Sets the active configuration's card type and priority; each WriteCfg() sends them.
 * @param type 16 bits
 * @param priority not 0 counts as 1
 * @return 1 */
ZELTAGAPI_EXPORT int SetCardTypePriority(unsigned short type, short priority);

/** Whether the reader knows a card type; bits 4 to 7 don't count.
 * @param type 16 bits
 * @return 1 when it does, for a type of 0, and when the reader told no list; 0 when not, and
 * without a proximity reader */
ZELTAGAPI_EXPORT int IsCardTypeInList(unsigned short type);

/** @} */

ZELTAGAPI_END

#endif
