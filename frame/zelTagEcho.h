/* SPDX-License-Identifier: MIT */
/** @file
 * The records and calls of the presence sensor; part of zelTagAPI.h.
 *
 * The sensor measures by ultrasound how far the nearest object is, and as a keyboard it sends keys
 * when a person walks up or away. It speaks in reports of eight bytes over USB.
 *
 * Each call works on the active device when that is a sensor (product code ZELTAGAPI_ZELECHO). With
 * no active device or another product it returns the unsupported value, see
 * SetUnsupportedProductErrorCode(). No call locks.
 *
 * The scan of this platform tells proximity readers alone: an application that opened a sensor
 * itself hands its handle to zelecho_FoundDevice().
 */
#ifndef ZELTAGAPI_ECHO_H
#define ZELTAGAPI_ECHO_H

#include "frame/zelTagExport.h"

#include <stdint.h>

/** What the sensor looks for, eight words. It keeps a distance in steps of 1/3.472222 inch. */
typedef struct sSonarParms {
    int16_t LEDFlagsS;  /**< LED usage: bit 0 red, bit 1 the application's own, bit 2 green */
    int16_t PingRateS;  /**< ms between two pings, in steps of 4 */
    int16_t Reserved1S; /**< cycle count at 40 kHz, the sensor's own */
    int16_t MinDistS;   /**< least distance that counts, inches */
    int16_t MaxDistS;   /**< greatest distance that counts, inches */
    int16_t ORDBTmS;    /**< debounce time out of range, s or min */
    int16_t IRDBTmS;    /**< debounce time in range, s or min */
    int16_t StartDlyS;  /**< s from a cold start to joining USB */
} sSonarParms;

/** Keys sent when a person walks away, 16 words. */
typedef struct sWalkAwayParms {
    int16_t KeyCountWA;      /**< number of keys defined, at most 6 */
    int16_t InterKeyDelayWA; /**< ms between two keys, in steps of 64 */
    int16_t Key1ModsWA;      /**< modifiers of key 1 */
    int16_t Key2ModsWA;      /**< modifiers of key 2 */
    int16_t Key3ModsWA;      /**< modifiers of key 3 */
    int16_t Key4ModsWA;      /**< modifiers of key 4 */
    int16_t Key5ModsWA;      /**< modifiers of key 5 */
    int16_t Key6ModsWA;      /**< modifiers of key 6 */
    int16_t Flags0WA;        /**< flags of the sensor's firmware; four bits are written */
    int16_t MinFltRepRate;   /**< passed through, 8 bits */
    int16_t Key1CodeWA;      /**< code of key 1 */
    int16_t Key2CodeWA;      /**< code of key 2 */
    int16_t Key3CodeWA;      /**< code of key 3 */
    int16_t Key4CodeWA;      /**< code of key 4 */
    int16_t Key5CodeWA;      /**< code of key 5 */
    int16_t Key6CodeWA;      /**< code of key 6 */
} sWalkAwayParms;

/** Keys sent when a person walks up, 16 words. */
typedef struct sWalkUpParms {
    int16_t KeyCountWU;      /**< number of keys defined, at most 6 */
    int16_t InterKeyDelayWU; /**< ms between two keys, in steps of 64 */
    int16_t Key1ModsWU;      /**< modifiers of key 1 */
    int16_t Key2ModsWU;      /**< modifiers of key 2 */
    int16_t Key3ModsWU;      /**< modifiers of key 3 */
    int16_t Key4ModsWU;      /**< modifiers of key 4 */
    int16_t Key5ModsWU;      /**< modifiers of key 5 */
    int16_t Key6ModsWU;      /**< modifiers of key 6 */
    int16_t Flags0WU;        /**< flags of the sensor's firmware; four bits are written */
    int16_t Reserved2WU;     /**< goes back to the sensor as last read, whatever stands here */
    int16_t Key1CodeWU;      /**< code of key 1 */
    int16_t Key2CodeWU;      /**< code of key 2 */
    int16_t Key3CodeWU;      /**< code of key 3 */
    int16_t Key4CodeWU;      /**< code of key 4 */
    int16_t Key5CodeWU;      /**< code of key 5 */
    int16_t Key6CodeWU;      /**< code of key 6 */
} sWalkUpParms;

/** What the sensor does while nothing happens, eight words. */
typedef struct sIdleParms {
    int16_t Reserved1I; /**< goes back to the sensor as last read, whatever stands here */
    int16_t PressRateI; /**< s between two presses of the idle key; 0: none */
    int16_t Key1ModsI;  /**< modifiers of the idle key */
    int16_t Key1CodeI;  /**< code of the idle key */
    int16_t FlagsI;     /**< flags of the sensor's firmware */
    int16_t DMTODeltaI; /**< change of distance that shows somebody is there, inches * 3.472 */
    int16_t DMTOTmI;    /**< s without such a change until nobody counts as there */
    int16_t SNBlankTmI; /**< blanking time of the sonar drive, in units of 43 us */
} sIdleParms;

/** What the sensor sees, five words. */
typedef struct sRangeInfo {
    int16_t iObjDist;    /**< distance of the nearest object, inches */
    int16_t bRangeStat0; /**< bit 0 of the status: 0 or 1 */
    int16_t bRangeStat1; /**< bit 1 of the status: 0 or 1 */
    int16_t bRangeStat2; /**< bit 2 of the status: 0 or 1 */
    int16_t iRangeStat;  /**< the sensor's whole status byte */
} sRangeInfo;

ZELTAGAPI_BEGIN

/** @name Settings of the sensor
 *
 * These work on the library's copy of the settings, without device traffic. ReadCfg() fills the
 * copy; WriteCfg() sends the records that were set.
 *
 * A get fails with ZELTAGAPI_ERR_GET and ZELTAGAPI_ERR_NULL for a null record, or
 * ZELTAGAPI_ERR_NEVER_READ before the first ReadCfg(). A set fails with ZELTAGAPI_ERR_SET and
 * ZELTAGAPI_ERR_NULL, or the code of the first word out of range; then the copy stays as it was.
 * Words without a range take any value.
 * @{ */

/** Copies out what the sensor looks for.
 * @param record receives the settings
 * @return 1; 0 with the reason in the error word; the unsupported value without a sensor */
ZELTAGAPI_EXPORT int GetSonarParms(struct sSonarParms* record);

/** Sets what the sensor looks for: PingRateS 200 to 1020 ms (code 0x1000), MinDistS 1 to 59 inches
 * (0x1001), MaxDistS 15 to 72 inches (0x1002).
 * @param record the settings
 * @return 1; 0 with the reason in the error word; the unsupported value without a sensor */
ZELTAGAPI_EXPORT int SetSonarParms(struct sSonarParms* record);

/** Copies out the keys sent when a person walks away.
 * @param record receives the keys
 * @return as GetSonarParms() */
ZELTAGAPI_EXPORT int GetWalkAwayParms(struct sWalkAwayParms* record);

/** Sets the keys sent when a person walks away: KeyCountWA at most 6 (code 0x1010), InterKeyDelayWA
 * 64 to 16320 ms (0x1011).
 * @param record the keys
 * @return as SetSonarParms() */
ZELTAGAPI_EXPORT int SetWalkAwayParms(struct sWalkAwayParms* record);

/** Copies out the keys sent when a person walks up.
 * @param record receives the keys
 * @return as GetSonarParms() */
ZELTAGAPI_EXPORT int GetWalkUpParms(struct sWalkUpParms* record);

/** Sets the keys sent when a person walks up: KeyCountWU at most 6 (code 0x1020), InterKeyDelayWU
 * 64 to 16320 ms (0x1021).
 * @param record the keys
 * @return as SetSonarParms() */
ZELTAGAPI_EXPORT int SetWalkUpParms(struct sWalkUpParms* record);

/** Copies out what the sensor does while nothing happens.
 * @param record receives the settings
 * @return as GetSonarParms() */
ZELTAGAPI_EXPORT int GetIdleParms(struct sIdleParms* record);

/** Sets what the sensor does while nothing happens; each word takes any value.
 * @param record the settings
 * @return as SetSonarParms() */
ZELTAGAPI_EXPORT int SetIdleParms(struct sIdleParms* record);

/** @} */

/** @name What the sensor sees and sends
 * @{ */

/** Asks what the sensor sees now: one report out (command 0x8F), a pause of 250 ms, one report in.
 * @param record receives the answer; zeros where none came
 * @return 1; 0 with ZELTAGAPI_ERR_SERVICE; the unsupported value without a sensor */
ZELTAGAPI_EXPORT int GetObjRangeInfo(struct sRangeInfo* record);

/** Halts the sensor's keystrokes, or lets them go on: one report out (command 177 or 176).
 * @param halt not 0: no keystrokes; 0: keystrokes
 * @return 1; 0 when the report can't be sent, with bit 0x2000000 in `lLastCnctErr`; the unsupported
 * value without a sensor */
ZELTAGAPI_EXPORT int HaltKBSends(int halt);

/** @} */

ZELTAGAPI_END

#endif
