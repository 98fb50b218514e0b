# SPDX-License-Identifier: MIT
"""The structs of the public headers, for ctypes.

Made by scripts/generate_python.py of frame/zelTag*.h; change those."""

from ctypes import (Structure, c_char, c_char_p, c_int, c_int16, c_int32, c_int64, c_uint16,
                    c_uint32, c_uint64, c_uint8, c_void_p)


class sCfgFlags(Structure):
    _fields_ = [
        ("bFixLenDsp", c_int16),
        ("bFrcBitCntEx", c_int16),
        ("bStripFac", c_int16),
        ("bSndFac", c_int16),
        ("bUseDelFac2Id", c_int16),
        ("bNoUseELChar", c_int16),
        ("bSndOnRx", c_int16),
        ("bHaltKBSnd", c_int16),
    ]


class sCfgFlags2(Structure):
    _fields_ = [
        ("bUseLeadChrs", c_int16),
        ("bDspHex", c_int16),
        ("bWiegInvData", c_int16),
        ("bUseInvDataF", c_int16),
        ("bRevWiegBits", c_int16),
        ("bBeepID", c_int16),
        ("bRevBytes", c_int16),
        ("isASCIIpresent", c_int16),
    ]


class sCfgFlags3(Structure):
    _fields_ = [
        ("bUseNumKP", c_int16),
        ("bSndSFON", c_int16),
        ("bSndSFFC", c_int16),
        ("bSndSFID", c_int16),
        ("bPrxProEm", c_int16),
        ("bUse64Bit", c_int16),
        ("bNotBootDev", c_int16),
        ("bLowerCaseHex", c_int16),
    ]


class sIDBitCnts(Structure):
    _fields_ = [
        ("iLeadParityBitCnt", c_int16),
        ("iTrailParityBitCnt", c_int16),
        ("iIDBitCnt", c_int16),
        ("iTotalBitCnt", c_int16),
        ("iPad4", c_int16),
        ("iPad5", c_int16),
        ("iPad6", c_int16),
        ("iPad7", c_int16),
    ]


class sIDDispParms(Structure):
    _fields_ = [
        ("iFACIDDelim", c_int16),
        ("iELDelim", c_int16),
        ("iIDDispLen", c_int16),
        ("iFACDispLen", c_int16),
        ("iExOutputFormat", c_int16),
        ("iPad5", c_int16),
        ("iPad6", c_int16),
        ("iPad7", c_int16),
    ]


class sIDDispParms2(Structure):
    _fields_ = [
        ("iLeadChrCnt", c_int16),
        ("iLeadChr0", c_int16),
        ("iLeadChr1", c_int16),
        ("iLeadChr2", c_int16),
        ("iCrdGnChr0", c_int16),
        ("iCrdGnChr1", c_int16),
        ("iPad6", c_int16),
        ("iPad7", c_int16),
    ]


class sIDDispParms3(Structure):
    _fields_ = [
        ("iTrailChrCnt", c_int16),
        ("iTrailChr0", c_int16),
        ("iTrailChr1", c_int16),
        ("iTrailChr2", c_int16),
        ("iPad4", c_int16),
        ("iPad5", c_int16),
        ("iPad6", c_int16),
        ("iPad7", c_int16),
    ]


class sTimeParms(Structure):
    _fields_ = [
        ("iBitStrmTO", c_int16),
        ("iIDHoldTO", c_int16),
        ("iIDLockOutTm", c_int16),
        ("iUSBKeyPrsTm", c_int16),
        ("iUSBKeyRlsTm", c_int16),
        ("ExFeatures01", c_int16),
        ("iPad6", c_int16),
        ("iTPCfgFlg3", c_int16),
    ]


class sLEDCtrl(Structure):
    _fields_ = [
        ("bAppCtrlsLED", c_int16),
        ("iRedLEDState", c_int16),
        ("iGrnLEDState", c_int16),
        ("iPad3", c_int16),
        ("iPad4", c_int16),
        ("iPad5", c_int16),
        ("iPad6", c_int16),
        ("bVolatile", c_int16),
    ]


class sBprRlyCtrl(Structure):
    _fields_ = [
        ("iPad0", c_int16),
        ("iBeeperState", c_int16),
        ("iRelayState", c_int16),
        ("iPad3", c_int16),
        ("iPad4", c_int16),
        ("iPad5", c_int16),
        ("iPad6", c_int16),
        ("bVolatile", c_int16),
    ]


class uSFD(Structure):
    _fields_ = [
        ("bytes", c_uint8 * 128),
    ]


class sHashKeyData(Structure):
    _fields_ = [
        ("key", (c_uint8 * 16) * 2),
    ]


class sSonarParms(Structure):
    _fields_ = [
        ("LEDFlagsS", c_int16),
        ("PingRateS", c_int16),
        ("Reserved1S", c_int16),
        ("MinDistS", c_int16),
        ("MaxDistS", c_int16),
        ("ORDBTmS", c_int16),
        ("IRDBTmS", c_int16),
        ("StartDlyS", c_int16),
    ]


class sWalkAwayParms(Structure):
    _fields_ = [
        ("KeyCountWA", c_int16),
        ("InterKeyDelayWA", c_int16),
        ("Key1ModsWA", c_int16),
        ("Key2ModsWA", c_int16),
        ("Key3ModsWA", c_int16),
        ("Key4ModsWA", c_int16),
        ("Key5ModsWA", c_int16),
        ("Key6ModsWA", c_int16),
        ("Flags0WA", c_int16),
        ("MinFltRepRate", c_int16),
        ("Key1CodeWA", c_int16),
        ("Key2CodeWA", c_int16),
        ("Key3CodeWA", c_int16),
        ("Key4CodeWA", c_int16),
        ("Key5CodeWA", c_int16),
        ("Key6CodeWA", c_int16),
    ]


class sWalkUpParms(Structure):
    _fields_ = [
        ("KeyCountWU", c_int16),
        ("InterKeyDelayWU", c_int16),
        ("Key1ModsWU", c_int16),
        ("Key2ModsWU", c_int16),
        ("Key3ModsWU", c_int16),
        ("Key4ModsWU", c_int16),
        ("Key5ModsWU", c_int16),
        ("Key6ModsWU", c_int16),
        ("Flags0WU", c_int16),
        ("Reserved2WU", c_int16),
        ("Key1CodeWU", c_int16),
        ("Key2CodeWU", c_int16),
        ("Key3CodeWU", c_int16),
        ("Key4CodeWU", c_int16),
        ("Key5CodeWU", c_int16),
        ("Key6CodeWU", c_int16),
    ]


class sIdleParms(Structure):
    _fields_ = [
        ("Reserved1I", c_int16),
        ("PressRateI", c_int16),
        ("Key1ModsI", c_int16),
        ("Key1CodeI", c_int16),
        ("FlagsI", c_int16),
        ("DMTODeltaI", c_int16),
        ("DMTOTmI", c_int16),
        ("SNBlankTmI", c_int16),
    ]


class sRangeInfo(Structure):
    _fields_ = [
        ("iObjDist", c_int16),
        ("bRangeStat0", c_int16),
        ("bRangeStat1", c_int16),
        ("bRangeStat2", c_int16),
        ("iRangeStat", c_int16),
    ]


class tsNamePair(Structure):
    _fields_ = [
        ("name", c_char_p),
        ("description", c_char_p),
    ]


class tsTagCfg(Structure):
    _fields_ = [
        ("bCfgValid", c_uint32),
        ("bDirtyIDFrmt2", c_uint32),
        ("sCfgFlags", sCfgFlags),
        ("sIDBitCnts", sIDBitCnts),
        ("bDirtyIDFrmt1", c_uint32),
        ("sIDDispParms", sIDDispParms),
        ("bDirtyTime", c_uint32),
        ("sTimeParms", sTimeParms),
        ("sCfgFlags2", sCfgFlags2),
        ("sCfgFlags3", sCfgFlags3),
        ("sIDDispParms2", sIDDispParms2),
        ("sIDDispParms3", sIDDispParms3),
        ("sLEDCtrl", sLEDCtrl),
        ("sBprRlyCtrl", sBprRlyCtrl),
        ("bDirtyExt", c_uint32),
        ("ExtBlock", c_uint16 * 7),
        ("bDirtySepFld", c_uint32),
        ("uSFD", uSFD),
        ("sHashKeyData", sHashKeyData),
        ("AZERTYShiftLock", c_uint32),
        ("ExtendedPrecisionMath", c_uint32),
        ("b64BytesInPackets", c_uint32),
        ("bEasyReadMode", c_uint32),
        ("bPrependCSN", c_uint32),
        ("iCardType", c_uint16),
        ("iCardPriority", c_uint16),
    ]


class BandUserField(Structure):
    _fields_ = [
        ("Enable", c_uint8),
        ("Skip", c_uint8),
        ("Track", c_uint8),
        ("Field", c_uint8),
        ("ByteOffset", c_uint8),
        ("Length", c_uint8),
        ("Termination", c_uint8),
        ("ShowSepSen", c_uint8),
        ("ShowLRC", c_uint8),
        ("IgnoreLRC", c_uint8),
        ("nKeys", c_uint8),
        ("Keybyte", c_uint8 * 16),
    ]


class tsBand(Structure):
    _fields_ = [
        ("bBandOpen", c_uint32),
        ("bBandCfgDirty", c_uint32),
        ("iActTrack", c_uint16),
        ("iActField", c_uint16),
        ("iActOffset", c_uint16),
        ("iActLength", c_uint16),
        ("iActTerm", c_uint16),
        ("iBandLUID", c_uint16),
        ("HaltKBSend", c_uint8),
        ("UseNumKP", c_uint8),
        ("TrackEnables", c_uint8),
        ("Beeper", c_uint8),
        ("LedColor", c_uint8 * 5),
        ("UserField", BandUserField * 11),
        ("KeyPressTime", c_uint16),
        ("KeyReleaseTime", c_uint16),
    ]


class tsEcho(Structure):
    _fields_ = [
        ("bEchoHalt", c_uint32),
        ("bEchoOpen", c_uint32),
        ("bEchoCfgValid", c_uint32),
        ("bDirtySonar", c_uint32),
        ("bDirtyWalkAway", c_uint32),
        ("bDirtyWalkUp", c_uint32),
        ("bDirtyIdle", c_uint32),
        ("sSonarParms", sSonarParms),
        ("sWalkAwayParms", sWalkAwayParms),
        ("sWalkUpParms", sWalkUpParms),
        ("sIdleParms", sIdleParms),
        ("reserved", c_uint8 * 16),
    ]


class tsDevDat(Structure):
    _fields_ = [
        ("bTagOpen", c_uint32),
        ("lLastErr", c_int64),
        ("iDevType", c_uint16),
        ("iProduct", c_uint32),
        ("hDev", c_void_p),
        ("szDevName", c_char * 512),
        ("szPartNum", c_char * 25),
        ("szFWFile", c_char * 65),
        ("szFullFWVer", c_char * 65),
        ("iLUID", c_uint16),
        ("iDID", c_uint16),
        ("bLUIDDirty", c_uint32),
        ("iFWVer", c_uint16),
        ("lSN", c_int64),
        ("bSepFldOK", c_uint32),
        ("bPartNumOK", c_uint32),
        ("Cfg", tsTagCfg * 11),
        ("Band", tsBand),
        ("Echo", tsEcho),
        ("pPort", c_void_p),
        ("iTagPlusState", c_uint32),
        ("iMaxConfig", c_uint16),
        ("iActConfig", c_uint8),
        ("FWVerTbl", (c_uint32 * 6) * 3),
        ("CardTypeList", c_uint16 * 1025),
        ("IPAddr", c_uint8 * 4),
        ("MACAddr", c_uint8 * 6),
        ("lLastIDTick", c_uint64),
        ("iVidPidIdx", c_int32),
        ("bTagAdv", c_uint32),
        ("lSourceEvent", c_uint64),
    ]


class tsFilterPair(Structure):
    _fields_ = [
        ("mask", c_uint64),
        ("compare", c_uint64),
    ]


class tsVidPidRow(Structure):
    _fields_ = [
        ("filter", tsFilterPair * 2),
        ("vendor", c_uint16),
        ("product", c_uint16),
        ("vendorName", c_char * 52),
    ]


class tsVidPidList(Structure):
    _fields_ = [
        ("defaults", tsFilterPair * 2),
        ("rows", tsVidPidRow * 51),
    ]


class tsQueuedID(Structure):
    _fields_ = [
        ("id", c_uint8 * 32),
        ("age", c_uint64),
        ("word40", c_int16),
        ("byte42", c_uint8),
        ("byte43", c_uint8),
    ]


class zelFileCheck(Structure):
    _fields_ = [
        ("fault", c_int),
        ("line", c_int),
        ("told", c_char * 9),
        ("computed", c_char * 9),
    ]


class zelFirmwareFile(Structure):
    _fields_ = [
        ("name", c_char * 65),
        ("micro", c_int),
        ("lines", c_int),
    ]
