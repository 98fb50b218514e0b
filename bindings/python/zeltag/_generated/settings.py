# SPDX-License-Identifier: MIT
"""The settings of the devices, word by word.

Made by scripts/generate_python.py of frame/records.def, frame/band_settings.def,
family/tag/validators.cpp and frame/zelTagEcho.h; change those."""

from __future__ import annotations

from typing import Any

from . import structures
from .._words import Array, Flag, Measure, Number, Words

# The calls on a record are GetNAME and SetNAME.
RECORDS: dict[str, tuple[str, Any]] = {
    "CfgFlags": ("Flags", structures.sCfgFlags),
    "CfgFlags2": ("Flags2", structures.sCfgFlags2),
    "CfgFlags3": ("Flags3", structures.sCfgFlags3),
    "IDBitCnts": ("IDBitCnts", structures.sIDBitCnts),
    "IDDispParms": ("IDDispParms", structures.sIDDispParms),
    "IDDispParms2": ("IDDispParms2", structures.sIDDispParms2),
    "IDDispParms3": ("IDDispParms3", structures.sIDDispParms3),
    "TimeParms": ("TimeParms", structures.sTimeParms),
    "LEDCtrl": ("LEDCtrl", structures.sLEDCtrl),
    "BprRlyCtrl": ("BprRlyCtrl", structures.sBprRlyCtrl),
    "SonarParms": ("SonarParms", structures.sSonarParms),
    "WalkAwayParms": ("WalkAwayParms", structures.sWalkAwayParms),
    "WalkUpParms": ("WalkUpParms", structures.sWalkUpParms),
    "IdleParms": ("IdleParms", structures.sIdleParms),
}


class CfgFlags(Words):
    """The record of GetFlags() and SetFlags()."""

    bFixLenDsp = Flag("CfgFlags", "bFixLenDsp", "Send as fixed length with leading zeros as needed")
    bFrcBitCntEx = Flag("CfgFlags", "bFrcBitCntEx", "Force Rx'd bit count to be exact to be valid")
    bStripFac = Flag("CfgFlags", "bStripFac", "Strip the FAC from the ID (not discarded)")
    bSndFac = Flag("CfgFlags", "bSndFac", "Send the FAC (if stripped from data)")
    bUseDelFac2Id = Flag("CfgFlags", "bUseDelFac2Id", "Put a delimiter between FAC and ID on send")
    bNoUseELChar = Flag("CfgFlags", "bNoUseELChar",
        "Don't use a EndLine char on send (default to ENTER)")
    bSndOnRx = Flag("CfgFlags", "bSndOnRx",
        "Send valid ID as soon as it is received (iIDLockOutTm timer not used)")
    bHaltKBSnd = Flag("CfgFlags", "bHaltKBSnd", "Don't Send keys to USB (Get ID mechanism)")


class CfgFlags2(Words):
    """The record of GetFlags2() and SetFlags2()."""

    bUseLeadChrs = Flag("CfgFlags2", "bUseLeadChrs", "Use leading chars in ID KB send")
    bDspHex = Flag("CfgFlags2", "bDspHex", "Display ID as ASCII Hex [not ASCII decimal]")
    bWiegInvData = Flag("CfgFlags2", "bWiegInvData", "Wiegand data on pins is inverted")
    bUseInvDataF = Flag("CfgFlags2", "bUseInvDataF",
        "use the bWiegInvData flag over hardware setting")
    bRevWiegBits = Flag("CfgFlags2", "bRevWiegBits", "Reverse the Wiegand Rx bits")
    bBeepID = Flag("CfgFlags2", "bBeepID", "Beep when ID received")
    bRevBytes = Flag("CfgFlags2", "bRevBytes", "Reverse byte order (CSN reader)")
    isASCIIpresent = Flag("CfgFlags2", "isASCIIpresent",
        "check if ASCII conversion type is present within the reader", fixed=True)


class CfgFlags3(Words):
    """The record of GetFlags3() and SetFlags3()."""

    bUseNumKP = Flag("CfgFlags3", "bUseNumKP", "Euro KB flag")
    bSndSFON = Flag("CfgFlags3", "bSndSFON", "Split format ON = 1, old combined scheme = 0")
    bSndSFFC = Flag("CfgFlags3", "bSndSFFC", "0 = FAC Decimal, 1 = FAC Hex")
    bSndSFID = Flag("CfgFlags3", "bSndSFID", "0 = ID Decimal, 1 = ID Hex")
    bPrxProEm = Flag("CfgFlags3", "bPrxProEm", "Use ProxPro emulation")
    bUse64Bit = Flag("CfgFlags3", "bUse64Bit", "0 = 32-bit, 1 = 64-bit Display Math")
    bNotBootDev = Flag("CfgFlags3", "bNotBootDev", "USB Enum: 0=BootDevice, 1=NOTBootDevice")
    bLowerCaseHex = Flag("CfgFlags3", "bLowerCaseHex", "0= Upper case , 1= Lower case")


class IDBitCnts(Words):
    """The record of GetIDBitCnts() and SetIDBitCnts()."""

    iLeadParityBitCnt = Number("IDBitCnts", "iLeadParityBitCnt", 0, 142,
        "Wiegand Leading Parity bit count to be stripped")
    iTrailParityBitCnt = Number("IDBitCnts", "iTrailParityBitCnt", 0, 142,
        "Wiegand Trailing Parity bit count to be stripped")
    iIDBitCnt = Number("IDBitCnts", "iIDBitCnt", 1, 255,
        "if bStripFac, this determines bit count of ID and FAC")
    iTotalBitCnt = Number("IDBitCnts", "iTotalBitCnt", 26, 255,
        "if bFrcBitCntEx, card read (including parity) must match this")


class IDDispParms(Words):
    """The record of GetIDDispParms() and SetIDDispParms()."""

    iFACIDDelim = Number("IDDispParms", "iFACIDDelim", 0, 255,
        "if bStripFac & bSndFac & bUseDelFac2Id, this char sent between FAC & ID")
    iELDelim = Number("IDDispParms", "iELDelim", 0, 255,
        "if NOT bNoUseELChar, this char sent at end of ID")
    iIDDispLen = Number("IDDispParms", "iIDDispLen", 0, 25,
        "if bFixLenDsp, ID padded with zeros to this length")
    iFACDispLen = Number("IDDispParms", "iFACDispLen", 0, 25,
        "if bFixLenDsp, FAC padded with zeros to this length")
    iExOutputFormat = Number("IDDispParms", "iExOutputFormat", 0, 32767,
        "0 = Data Format Mode, 1 = Extended Mode")


class IDDispParms2(Words):
    """The record of GetIDDispParms2() and SetIDDispParms2()."""

    iLeadChrCnt = Number("IDDispParms2", "iLeadChrCnt", 0, 3,
        "if bUseLeadChrs, this contains the lead char count (<=3)")
    iLeadChr0 = Number("IDDispParms2", "iLeadChr0", 0, 32767,
        "these lead characters are filled in (up to 3)")
    iLeadChr1 = Number("IDDispParms2", "iLeadChr1", 0, 32767, "(the reader's own)")
    iLeadChr2 = Number("IDDispParms2", "iLeadChr2", 0, 32767, "(the reader's own)")
    iCrdGnChr0 = Number("IDDispParms2", "iCrdGnChr0", 0, 32767,
        "if non-zero, sent when ID goes Invalid")
    iCrdGnChr1 = Number("IDDispParms2", "iCrdGnChr1", 0, 32767,
        "if this and Chr0 non-zero, sent when ID goes Invalid")


class IDDispParms3(Words):
    """The record of GetIDDispParms3() and SetIDDispParms3()."""

    iTrailChrCnt = Number("IDDispParms3", "iTrailChrCnt", 0, 3,
        "this contains the trail char count (<=3)")
    iTrailChr0 = Number("IDDispParms3", "iTrailChr0", 0, 32767,
        "these trail characters are filled in (up to 3)")
    iTrailChr1 = Number("IDDispParms3", "iTrailChr1", 0, 32767,
        "NOTE: LeadChrCnt + TrailCheCnt <= 3")
    iTrailChr2 = Number("IDDispParms3", "iTrailChr2", 0, 32767, "LeadChrs have priority")


class TimeParms(Words):
    """The record of GetTimeParms() and SetTimeParms()."""

    iBitStrmTO = Measure("TimeParms", "iBitStrmTO", 0, 1020, "ms", 4,
        "Wiegand read times out after this msec time (4msec gran.)")
    iIDHoldTO = Measure("TimeParms", "iIDHoldTO", 0, 12750, "ms", 50,
        "Card ID remains valid for this msec time (50msec gran.)")
    iIDLockOutTm = Measure("TimeParms", "iIDLockOutTm", 0, 12750, "ms", 50,
        "Squelch repetitive reader reports (usually > 1000) in msec (50msec gran.)")
    iUSBKeyPrsTm = Measure("TimeParms", "iUSBKeyPrsTm", 0, 1020, "ms", 4,
        "Sets USB inter-key 'Press' time in msecs (4msec gran.)")
    iUSBKeyRlsTm = Measure("TimeParms", "iUSBKeyRlsTm", 0, 1020, "ms", 4,
        "Sets USB inter-key 'Release' time in msecs (4msec gran.)")
    ExFeatures01 = Number("TimeParms", "ExFeatures01", 0, 32767, "(the reader's own)", fixed=True)
    iTPCfgFlg3 = Number("TimeParms", "iTPCfgFlg3", 0, 32767,
        "Further Flags not related to Time at all (see tsCfgFlags3)", fixed=True)


class LEDCtrl(Words):
    """The record of GetLEDCtrl() and SetLEDCtrl()."""

    bAppCtrlsLED = Flag("LEDCtrl", "bAppCtrlsLED",
        "Display LEDs are controlled by user thru this DLL")
    iRedLEDState = Flag("LEDCtrl", "iRedLEDState", "0 == Off, 1 == On")
    iGrnLEDState = Flag("LEDCtrl", "iGrnLEDState", "0 == Off, 1 == On")


class BprRlyCtrl(Words):
    """The record of GetBprRlyCtrl() and SetBprRlyCtrl()."""

    iBeeperState = Flag("BprRlyCtrl", "iBeeperState", "0 == Off, 1 == On")
    iRelayState = Flag("BprRlyCtrl", "iRelayState", "0 == Off, 1 == On")


class SonarParms(Words):
    """The record of GetSonarParms() and SetSonarParms()."""

    LEDFlagsS = Number("SonarParms", "LEDFlagsS", 0, 32767,
        "LED usage: bit 0 red, bit 1 the application's own, bit 2 green")
    PingRateS = Measure("SonarParms", "PingRateS", 200, 1020, "ms", 4,
        "ms between two pings, in steps of 4")
    Reserved1S = Number("SonarParms", "Reserved1S", 0, 32767,
        "cycle count at 40 kHz, the sensor's own")
    MinDistS = Measure("SonarParms", "MinDistS", 1, 59, "inches", 1,
        "least distance that counts, inches")
    MaxDistS = Measure("SonarParms", "MaxDistS", 15, 72, "inches", 1,
        "greatest distance that counts, inches")
    ORDBTmS = Number("SonarParms", "ORDBTmS", 0, 32767, "debounce time out of range, s or min")
    IRDBTmS = Number("SonarParms", "IRDBTmS", 0, 32767, "debounce time in range, s or min")
    StartDlyS = Measure("SonarParms", "StartDlyS", 0, 32767, "s", 1,
        "s from a cold start to joining USB")


class WalkAwayParms(Words):
    """The record of GetWalkAwayParms() and SetWalkAwayParms()."""

    KeyCountWA = Number("WalkAwayParms", "KeyCountWA", 0, 6, "number of keys defined, at most 6")
    InterKeyDelayWA = Measure("WalkAwayParms", "InterKeyDelayWA", 64, 16320, "ms", 64,
        "ms between two keys, in steps of 64")
    Key1ModsWA = Number("WalkAwayParms", "Key1ModsWA", 0, 32767, "modifiers of key 1")
    Key2ModsWA = Number("WalkAwayParms", "Key2ModsWA", 0, 32767, "modifiers of key 2")
    Key3ModsWA = Number("WalkAwayParms", "Key3ModsWA", 0, 32767, "modifiers of key 3")
    Key4ModsWA = Number("WalkAwayParms", "Key4ModsWA", 0, 32767, "modifiers of key 4")
    Key5ModsWA = Number("WalkAwayParms", "Key5ModsWA", 0, 32767, "modifiers of key 5")
    Key6ModsWA = Number("WalkAwayParms", "Key6ModsWA", 0, 32767, "modifiers of key 6")
    Flags0WA = Number("WalkAwayParms", "Flags0WA", 0, 32767,
        "flags of the sensor's firmware; four bits are written")
    MinFltRepRate = Number("WalkAwayParms", "MinFltRepRate", 0, 32767, "passed through, 8 bits")
    Key1CodeWA = Number("WalkAwayParms", "Key1CodeWA", 0, 32767, "code of key 1")
    Key2CodeWA = Number("WalkAwayParms", "Key2CodeWA", 0, 32767, "code of key 2")
    Key3CodeWA = Number("WalkAwayParms", "Key3CodeWA", 0, 32767, "code of key 3")
    Key4CodeWA = Number("WalkAwayParms", "Key4CodeWA", 0, 32767, "code of key 4")
    Key5CodeWA = Number("WalkAwayParms", "Key5CodeWA", 0, 32767, "code of key 5")
    Key6CodeWA = Number("WalkAwayParms", "Key6CodeWA", 0, 32767, "code of key 6")


class WalkUpParms(Words):
    """The record of GetWalkUpParms() and SetWalkUpParms()."""

    KeyCountWU = Number("WalkUpParms", "KeyCountWU", 0, 6, "number of keys defined, at most 6")
    InterKeyDelayWU = Measure("WalkUpParms", "InterKeyDelayWU", 64, 16320, "ms", 64,
        "ms between two keys, in steps of 64")
    Key1ModsWU = Number("WalkUpParms", "Key1ModsWU", 0, 32767, "modifiers of key 1")
    Key2ModsWU = Number("WalkUpParms", "Key2ModsWU", 0, 32767, "modifiers of key 2")
    Key3ModsWU = Number("WalkUpParms", "Key3ModsWU", 0, 32767, "modifiers of key 3")
    Key4ModsWU = Number("WalkUpParms", "Key4ModsWU", 0, 32767, "modifiers of key 4")
    Key5ModsWU = Number("WalkUpParms", "Key5ModsWU", 0, 32767, "modifiers of key 5")
    Key6ModsWU = Number("WalkUpParms", "Key6ModsWU", 0, 32767, "modifiers of key 6")
    Flags0WU = Number("WalkUpParms", "Flags0WU", 0, 32767,
        "flags of the sensor's firmware; four bits are written")
    Reserved2WU = Number("WalkUpParms", "Reserved2WU", 0, 32767,
        "goes back to the sensor as last read, whatever stands here")
    Key1CodeWU = Number("WalkUpParms", "Key1CodeWU", 0, 32767, "code of key 1")
    Key2CodeWU = Number("WalkUpParms", "Key2CodeWU", 0, 32767, "code of key 2")
    Key3CodeWU = Number("WalkUpParms", "Key3CodeWU", 0, 32767, "code of key 3")
    Key4CodeWU = Number("WalkUpParms", "Key4CodeWU", 0, 32767, "code of key 4")
    Key5CodeWU = Number("WalkUpParms", "Key5CodeWU", 0, 32767, "code of key 5")
    Key6CodeWU = Number("WalkUpParms", "Key6CodeWU", 0, 32767, "code of key 6")


class IdleParms(Words):
    """The record of GetIdleParms() and SetIdleParms()."""

    Reserved1I = Number("IdleParms", "Reserved1I", 0, 32767,
        "goes back to the sensor as last read, whatever stands here")
    PressRateI = Measure("IdleParms", "PressRateI", 0, 32767, "s", 1,
        "s between two presses of the idle key; 0: none")
    Key1ModsI = Number("IdleParms", "Key1ModsI", 0, 32767, "modifiers of the idle key")
    Key1CodeI = Number("IdleParms", "Key1CodeI", 0, 32767, "code of the idle key")
    FlagsI = Number("IdleParms", "FlagsI", 0, 32767, "flags of the sensor's firmware")
    DMTODeltaI = Number("IdleParms", "DMTODeltaI", 0, 32767,
        "change of distance that shows somebody is there, inches * 3.472")
    DMTOTmI = Measure("IdleParms", "DMTOTmI", 0, 32767, "s", 1,
        "s without such a change until nobody counts as there")
    SNBlankTmI = Number("IdleParms", "SNBlankTmI", 0, 32767,
        "blanking time of the sonar drive, in units of 43 us")


class TagWords(CfgFlags, CfgFlags2, CfgFlags3, IDBitCnts, IDDispParms, IDDispParms2,
               IDDispParms3, TimeParms, LEDCtrl, BprRlyCtrl):
    """The words of all ten records of a proximity reader."""


class SensorWords(SonarParms, WalkAwayParms, WalkUpParms, IdleParms):
    """The words of all four records of a presence sensor."""


class UserField(Words):
    """What a magnetic stripe reader cuts of a track, and the keys it sends."""

    Enable = Flag("", "Enable", "1 = User Field Enabled")
    Skip = Flag("", "Skip", "1 = Skip field, Used for OnErrorGoto (bad LRC)")
    Track = Number("", "Track", 0, 3, "Track 1,2,3")
    Field = Number("", "Field", 0, 255, "Mag Field Number")
    ByteOffset = Number("", "ByteOffset", 0, 255, "Offset within Mag Field")
    Length = Number("", "Length", 0, 255, "Length in Characters")
    Termination = Number("", "Termination", 0, 255, "Stop on Termination Byte")
    ShowSepSen = Flag("", "ShowSepSen", "1 = Show Separator and Sentinel Chars")
    ShowLRC = Flag("", "ShowLRC", "1 = Show Hex LRC Byte")
    IgnoreLRC = Flag("", "IgnoreLRC", "1 = Ignore Incorrect LRC")
    nKeys = Number("", "nKeys", 0, 16, "0..N Keys Used In Array")
    Keybyte = Array("", "Keybyte", 0, 255,
        "USB [Even]=Scancode [Odd]=ShiftModifier; ASCII [n]=ASCII Char")


class StripeWords(Words):
    """The settings of a magnetic stripe reader that stand alone."""

    LUID = Number("iLUID", "LUID", 0, 65535, "Logical Unit ID")
    HaltKBSend = Flag("Band.HaltKBSend", "HaltKBSend",
        "1 = Quiet API Mode No keystrokes, 0=Send Keystrokes")
    UseNumKP = Flag("Band.UseNumKP", "UseNumKP", "1 = Use Numeric Keypad for digits 0-9")
    TrackEnables = Number("Band.TrackEnables", "TrackEnables", 0, 7,
        "Bits 0..3 = Enable Tracks 1..3")
    Beeper = Number("Band.Beeper", "Beeper", 0, 255,
        "1 = Beeper Nybble Upper=Good Lower=Bad; Long:1.Count:3.Long:1.Count:3")
    LedColor = Array("Band.LedColor", "LedColor", 0, 3, "0=Off 1=Red 2=Green 3=Amber")
    KeyPressTime = Measure("Band.KeyPressTime", "KeyPressTime", 0, 1020, "ms", 4,
        "4MS units 4=16ms")
    KeyReleaseTime = Measure("Band.KeyReleaseTime", "KeyReleaseTime", 0, 1020, "ms", 4,
        "4MS units 4=16ms")
