// SPDX-License-Identifier: MIT
// Rows of the calls that a proximity reader serves, some of them other products too.
#pragma once

#include "tests/frame/family_table.h"

namespace zel::test {

// no device, zelTag, zelBand, zelEcho, another product, a simulated reader

inline constexpr Row kConfigurationRows[] = {
    {ZEL_CALL(ReadCfg()), no(0), 0, 0, 0, kNo, 1},
    {ZEL_CALL(WriteCfg()), no(0), 0, 0, 0, kNo, 1},
    {ZEL_CALL(ResetFactoryDflts()), kNo, 0, 0, 0, kNo, 1},
    {ZEL_CALL(ResetUserDflts()), kNo, 0, kNo, 0, kNo, 1},
    {ZEL_CALL(SaveUserDflts()), kNo, 0, kNo, 0, kNo, 1},
    {ZEL_CALL(zelTagPlusDefaults()), kNo, 0, kNo, kNo, kNo, 1},
};

// A get needs a configuration that was read, a set doesn't.
inline constexpr Row kRecordRows[] = {
    {ZEL_CALL(GetFlags(zeros<sCfgFlags>())), kNo, 0, 1, 1, kNo, 1},
    {ZEL_CALL(SetFlags(zeros<sCfgFlags>())), kNo, 1, 1, 1, kNo, 1},
    {ZEL_CALL(GetTimeParms(zeros<sTimeParms>())), kNo, 0, 1, 0, kNo, 1},
    {ZEL_CALL(CheckUserTimeParms(zeros<sTimeParms>(), 0)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(SetTimeParms(zeros<sTimeParms>())), kNo, 1, 1, 0, kNo, 1},
    {ZEL_CALL(GetLEDCtrl(zeros<sLEDCtrl>())), kNo, 0, 1, 1, kNo, 1},
    {ZEL_CALL(SetLEDCtrl(zeros<sLEDCtrl>())), kNo, 1, 0, 1, kNo, 1},
    {ZEL_CALL(GetFlags2(zeros<sCfgFlags2>())), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetFlags2(zeros<sCfgFlags2>())), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetFlags3(zeros<sCfgFlags3>())), kNo, 0, 1, kNo, kNo, 1},
    {ZEL_CALL(SetFlags3(zeros<sCfgFlags3>())), kNo, 1, 1, kNo, kNo, 1},
    {ZEL_CALL(GetIDBitCnts(zeros<sIDBitCnts>())), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetIDBitCnts(bitCounts())), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetIDDispParms(zeros<sIDDispParms>())), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetIDDispParms(zeros<sIDDispParms>())), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetIDDispParms2(zeros<sIDDispParms2>())), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetIDDispParms2(zeros<sIDDispParms2>())), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetIDDispParms3(zeros<sIDDispParms3>())), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetIDDispParms3(zeros<sIDDispParms3>())), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetBprRlyCtrl(zeros<sBprRlyCtrl>())), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetBprRlyCtrl(zeros<sBprRlyCtrl>())), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetSepFldData(zeros<uSFD>(), 128)), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetSepFldData(zeros<uSFD>(), 128)), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetHashKeyData(zeros<sHashKeyData>())), kNo, 1, kNo, kNo, kNo, 1},
};

inline constexpr Row kCardRows[] = {
    {ZEL_CALL(GetActiveID(bytes(), 8)), kNo, 0, 8, 4, kNo, 26},
    {ZEL_CALL(GetActiveID32(bytes(), 32)), kNo, 0, 32, 4, kNo, 26},
    {ZEL_CALL(getActiveID(8)), kNo, 0, 8, 0, kNo, 26},
    {ZEL_CALL(getActiveID32(32)), kNo, 0, 32, 0, kNo, 26},
    {ZEL_CALL(getActiveID_byte(0)), kNo, kIdByte, kIdByte, 0, kNo, kIdByte},
    {ZEL_CALL(GetQueuedID(1, 0)), kNo, 0, 32, 0, kNo, 1},
    {ZEL_CALL(GetQueuedID_index(0)), kNo, kQueuedByte, '0', 0, kNo, kQueuedByte},
    {ZEL_CALL(SetRawPayload(0x8A, 0, 0, 0, 0, 0, 0, 0)), no(0), 1, 1, 1, no(0), 1},
    {ZEL_CALL(SetRawPayload_index(8, 0)), kNo, 0, 0, 0, kNo, 1},
    {ZEL_CALL(GetRawPayload_index(10)), kNoByte, 2, 2, 0, kNoByte, 2},
    {ZEL_CALL(getActiveCardData()), kNo, 0, kNo, kNo, kNo, 1},
    {ZEL_CALL(getActiveCardData_byte(0)), kNoByte, kCardByte, kNoByte, kNoByte, kNoByte, kCardByte},
    {ZEL_CALL(setSourceEvent(5)), no(0), 1, no(0), no(0), no(0), 1},
    {ZEL_CALL(DumpRawFeatureReports("/dev/null")), no(0), 0, no(0), no(0), no(0), 1},
    {ZEL_CALL(GetRawRepDataI(bytes(), 4)), no(0), no(0), no(0), no(0), no(0), no(0)},
};

// Without a product test: any active device is asked.
inline constexpr Row kServiceRows[] = {
    {ZEL_CALL(SetBeeperVolume(1)), kNo, 0, 0, 0, 0, 1},
    {ZEL_CALL(GetBeeperVolume()), no(-1), -1, -1, -1, -1, kVolume},
    {ZEL_CALL(SetBTLEConfiguration(1)), kNo, 0, 0, 0, 0, 1},
    {ZEL_CALL(GetBTLEConfiguration()), no(-1), -1, -1, -1, -1, kRadio},
    {ZEL_CALL(IsBTLEPresent()), no(-1), 0, 0, 0, 0, 1},
    {ZEL_CALL(ReadBaudRate()), no(-1), -1, -1, -1, -1, -1},
    {ZEL_CALL(WriteBaudRate(1)), kNo, 0, 0, 0, 0, 0},
    {ZEL_CALL(WriteSEKeyRefrence(bytes(), 4, 1)), no(0), 0, 0, 0, 0, 1},
    {ZEL_CALL(WriteEV1FileRefrence(bytes(), 4)), no(0), 0, 0, 0, 0, 1},
    {ZEL_CALL(GetFullFWVersion()), no(0), 1, 1, 1, 1, 1},
    {ZEL_CALL(GetFWFilename()), no(0), 1, 1, 1, 1, 1},
    {ZEL_CALL(getPartNumberString()), no(0), 1, 1, 1, 1, 1},
    {ZEL_CALL(getPartNumberString_char(0)), no(0), 'P', 'P', 'P', 'P', 'P'},
};

inline constexpr Row kModeRows[] = {
    {ZEL_CALL(BeepNow(1, 0)), no(0), 0, 0, kNo, kNo, 1},
    {ZEL_CALL(GetFirmwareVersion(0, 0)), kNo, 0, kDid, kNo, kNo, kVersion},
    {ZEL_CALL(GetFirmwareVersion(0, 1)), kNo, 0, kBandVersion, kNo, kNo, 0},
    {ZEL_CALL(GetFirmwareVersion(0, 2)), kNo, 0, kNo, kNo, kNo, 0},
    {ZEL_CALL(GetFirmwareVersion(1, 0)), kNo, 0, kNo, kNo, kNo, 0},
    {ZEL_CALL(getESN()), no(0), 0, no(0), no(0), no(0), 1},
    {ZEL_CALL(SetAZERTYShiftLock(1)), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetAZERTYShiftLock()), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(SetExtendedPrecisionMath(1)), kNo, 1, kNo, kNo, kNo, 1},
    {ZEL_CALL(GetExtendedPrecisionMath()), kNo, 2, kNo, kNo, kNo, 2},
    {ZEL_CALL(GetEnhanceSecurityFlag()), kNo, 128, kNo, kNo, kNo, 128},
    {ZEL_CALL(SetEnhanceSecurityFlag(1), DevDat[0].Cfg[0].bDirtySepFld), no(0), 1, no(0), no(0),
     no(0), 1},
    {ZEL_CALL(Set64BytesInPackets(1)), no(0), 1, no(0), no(0), no(0), 1},
    {ZEL_CALL(Get64BytesInPackets()), no(0), 3, no(0), no(0), no(0), 3},
    {ZEL_CALL(SetEasyReadMode(1)), no(0), 1, no(0), no(0), no(0), 1},
    {ZEL_CALL(GetEasyReadMode()), no(0), 4, no(0), no(0), no(0), 4},
    {ZEL_CALL(SetPrependCSN(1)), no(0), 1, no(0), no(0), no(0), 1},
    {ZEL_CALL(GetPrependCSN()), no(0), 5, no(0), no(0), no(0), 5},
    {ZEL_CALL(UseAsciiCommandProtocol(0)), kNo, 1, kNo, kNo, kNo, 1},
};

// Of no file. What CheckRulesAndBootload() says is compared elsewhere.
inline constexpr Row kFirmwareRows[] = {
    {ZEL_CALL(Bootload(nullptr)), no(0), 0, 0, 0, 0, 0},
    {ZEL_CALL(CheckRulesAndBootload(nullptr)), no(1), 1, no(1), no(1), no(1), 1},
};

// A reader whose kind isn't known has one configuration.
inline constexpr Row kMultiRows[] = {
    {ZEL_CALL(GetMaxConfig()), no(0), no(0), no(0), no(0), no(0), 1},
    {ZEL_CALL(GetActConfig()), no(0), no(0), no(0), no(0), no(0), 0},
    {ZEL_CALL(SetActConfig(1)), no(0), no(0), no(0), no(0), no(0), 1},
    {ZEL_CALL(GetCardType()), no(-1), no(-1), no(-1), no(-1), no(-1), kCardType},
    {ZEL_CALL(GetCardPriority()), no(-1), no(-1), no(-1), no(-1), no(-1), 1},
    {ZEL_CALL(SetCardTypePriority(1, 1)), no(0), no(0), no(0), no(0), no(0), 1},
    {ZEL_CALL(IsCardTypeInList(0x00F0)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(IsCardTypeInList(kCardType)), no(0), 1, no(0), no(0), no(0), 1},
};

inline unsigned char* blob() {
    static unsigned char blob[8] = {0x10, 1, 4, 0, 1, 2, 3, 4};
    return blob;
}
inline unsigned char* writtenBlob() {
    WriteSecureData(blob(), 8);
    return blob();
}

// A file is checked whatever the device, and a folder is none.
inline constexpr Row kBlobRows[] = {
    {ZEL_CALL(WriteSecureData(blob(), 8)), no(0), 0, no(0), no(0), no(0), 1},
    {ZEL_CALL(ReadSecureData(writtenBlob(), bytes())), no(0), 0, no(0), no(0), no(0), 1},
    {ZEL_CALL(LoadIniFile("/")), 0, 0, 0, 0, 0, 0},
};

} // namespace zel::test
