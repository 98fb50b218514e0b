// SPDX-License-Identifier: MIT
// The words of the sensor's records, in their order: member and description.
#pragma once

// What it looks for.
#define ZEL_SONAR_WORDS(WORD)                                                                      \
    WORD(LEDFlagsS, "LED usage flags")                                                             \
    WORD(PingRateS, "Ping rate (msec) (min 200, max 1020)")                                        \
    WORD(Reserved1S, "40KHz cycle cnt (READ ONLY)")                                                \
    WORD(MinDistS, "Minimum Distance acceptable (inches) (min 14, max 59)")                        \
    WORD(MaxDistS, "Maximum Distance acceptable (inches) (min 15, max 60)")                        \
    WORD(ORDBTmS, "debounce out of range time (sec/min)")                                          \
    WORD(IRDBTmS, "debounce in range time (sec/min)")                                              \
    WORD(StartDlyS, "cold start delay in seconds before joining USB")

// Keys for somebody who walks away.
#define ZEL_WALK_AWAY_WORDS(WORD)                                                                  \
    WORD(KeyCountWA, "Defined keys to follow (max 6 modifiers/keys)")                              \
    WORD(InterKeyDelayWA, "dead time between key presses (msec) (min 64, max 16320)")              \
    WORD(Key1ModsWA, "Key Modifiers...")                                                           \
    WORD(Key2ModsWA, "")                                                                           \
    WORD(Key3ModsWA, "")                                                                           \
    WORD(Key4ModsWA, "")                                                                           \
    WORD(Key5ModsWA, "")                                                                           \
    WORD(Key6ModsWA, "")                                                                           \
    WORD(Flags0WA, "see API header File")                                                          \
    WORD(MinFltRepRate, "")                                                                        \
    WORD(Key1CodeWA, "Key Codes...")                                                               \
    WORD(Key2CodeWA, "")                                                                           \
    WORD(Key3CodeWA, "")                                                                           \
    WORD(Key4CodeWA, "")                                                                           \
    WORD(Key5CodeWA, "")                                                                           \
    WORD(Key6CodeWA, "")

// Keys for somebody who walks up.
#define ZEL_WALK_UP_WORDS(WORD)                                                                    \
    WORD(KeyCountWU, "Defined keys to follow (max 6 modifiers/keys)")                              \
    WORD(InterKeyDelayWU, "dead time between key presses (msec) (min 64, max 16320)")              \
    WORD(Key1ModsWU, "Key Modifiers...")                                                           \
    WORD(Key2ModsWU, "")                                                                           \
    WORD(Key3ModsWU, "")                                                                           \
    WORD(Key4ModsWU, "")                                                                           \
    WORD(Key5ModsWU, "")                                                                           \
    WORD(Key6ModsWU, "")                                                                           \
    WORD(Flags0WU, "see API header File")                                                          \
    WORD(Reserved2WU, "")                                                                          \
    WORD(Key1CodeWU, "Key Codes...")                                                               \
    WORD(Key2CodeWU, "")                                                                           \
    WORD(Key3CodeWU, "")                                                                           \
    WORD(Key4CodeWU, "")                                                                           \
    WORD(Key5CodeWU, "")                                                                           \
    WORD(Key6CodeWU, "")

// What it does while nothing happens.
#define ZEL_IDLE_WORDS(WORD)                                                                       \
    WORD(Reserved1I, "")                                                                           \
    WORD(PressRateI, "Periodic Press Rate (1 second units) - Zero disables (default)")             \
    WORD(Key1ModsI, "Key 1 modifier bit flags")                                                    \
    WORD(Key1CodeI, "Key 1 code")                                                                  \
    WORD(FlagsI, "see API header File")                                                            \
    WORD(DMTODeltaI, "DeadMan T0Delta, 3.472 * Distance (in) = DMTODelta")                         \
    WORD(DMTOTmI, "DeadMan Time (seconds) - Time till Declared Dead while Deltas never exceeded")  \
    WORD(SNBlankTmI, "Sonar drive blanking time (43usec units)")
