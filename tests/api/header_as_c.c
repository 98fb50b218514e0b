/* SPDX-License-Identifier: MIT */
/* The public headers from C11: each call of the interface with no device attached to it. */
#include "expect.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <string.h>

static unsigned char data[4];

/* The calls of a connect that looks for nothing. */
static void expectNothingFound(void) {
    int64_t did = 5;
    EXPECT(SetConnectProduct(0) == 1);
    EXPECT(SetDevTypeSrch(3) == 0 && SetDevTypeSrch(-1) == 1);
    EXPECT(USBConnect(&did) == 0 && did == 5);
    EXPECT(usbConnect() == 0);
    EXPECT(GetDevByLUID(1, 0) == -1);
    LoadzelTagVidPidListFile();
    EXPECT(strcmp(GetVidPidVendorName(), "5A3E:9D23 Norvanex") == 0);
    EXPECT(getVidPidVendorName_char(0) == '5' && isKQ7Reader() == 0);
    EXPECT(GetVidPidFilterMask(0) == 0 && GetVidPidFilterMask(1) == 0x8000);
    EXPECT(GetVidPidFilterCompare(1) == 0x8000);
}

/* The calls on records and configurations; the unsupported value is -7. */
static void expectNoRecords(void) {
    EXPECT(GetFlags(NULL) == -7 && SetFlags(NULL) == -7);
    EXPECT(GetFlags2(NULL) == -7 && SetFlags2(NULL) == -7);
    EXPECT(GetFlags3(NULL) == -7 && SetFlags3(NULL) == -7);
    EXPECT(GetIDBitCnts(NULL) == -7 && SetIDBitCnts(NULL) == -7);
    EXPECT(GetIDDispParms(NULL) == -7 && SetIDDispParms(NULL) == -7);
    EXPECT(GetIDDispParms2(NULL) == -7 && SetIDDispParms2(NULL) == -7);
    EXPECT(GetIDDispParms3(NULL) == -7 && SetIDDispParms3(NULL) == -7);
    EXPECT(GetTimeParms(NULL) == -7 && SetTimeParms(NULL) == -7);
    EXPECT(GetLEDCtrl(NULL) == -7 && SetLEDCtrl(NULL) == -7);
    EXPECT(GetBprRlyCtrl(NULL) == -7 && SetBprRlyCtrl(NULL) == -7);
    EXPECT(GetSepFldData(NULL, 128) == -7 && SetSepFldData(NULL, 128) == -7);
    EXPECT(SetHashKeyData(NULL) == -7);
    EXPECT(SetAZERTYShiftLock(1) == -7 && GetAZERTYShiftLock() == -7);
    EXPECT(SetExtendedPrecisionMath(1) == -7 && GetExtendedPrecisionMath() == -7);
    EXPECT(Set64BytesInPackets(1) == 0 && Get64BytesInPackets() == 0);
    EXPECT(SetEasyReadMode(1) == 0 && GetEasyReadMode() == 0);
    EXPECT(SetPrependCSN(1) == 0 && GetPrependCSN() == 0);
    SetEnhanceSecurityFlag(1);
    EXPECT(GetEnhanceSecurityFlag() == -7);
    EXPECT(ResetFactoryDflts() == -7 && ResetUserDflts() == -7);
    EXPECT(SaveUserDflts() == -7 && zelTagPlusDefaults() == -7);
    EXPECT(GetMaxConfig() == 0 && GetActConfig() == 0 && SetActConfig(0) == 0);
    EXPECT(GetCardType() == -1 && GetCardPriority() == -1);
    EXPECT(SetCardTypePriority(1, 1) == 0);
    EXPECT(IsCardTypeInList(0) == 1 && IsCardTypeInList(1) == 0);
}

/* The services; the unsupported value is -7. */
static void expectNoServices(void) {
    EXPECT(BeepNow(1, 0) == 0);
    unlockKeystrokeModeOfKQ7();
    EXPECT(SetBeeperVolume(1) == -7 && GetBeeperVolume() == -1);
    EXPECT(SetBTLEConfiguration(1) == -7 && GetBTLEConfiguration() == -1);
    EXPECT(IsBTLEPresent() == -1);
    EXPECT(ReadBaudRate() == -1 && WriteBaudRate(1) == -7);
    SetBaudRate(19200);
    EXPECT(defaultbaudrate == 19200);
    EXPECT(GetFirmwareVersion(0, 0) == (unsigned)-7);
    EXPECT(GetFullFWVersion() == NULL && GetFWFilename() == NULL);
    EXPECT(getPartNumberString() == NULL && getPartNumberString_char(0) == 0);
    EXPECT(getESN() == NULL);
    EXPECT(WriteSEKeyRefrence(data, 4, 1) == 0 && WriteEV1FileRefrence(data, 4) == 0);
    EXPECT(GetHIDGuid(NULL) == 1);
}

int main(void) {
    unsigned char buffer[ZELTAGAPI_ID_SIZE] = {0};
    char name[ZELTAGAPI_NAME_SIZE] = "";
    short major = 0;

    EXPECT(GetLibVersion(&major, NULL, NULL) == 1 && major == ZELTAGAPI_VERSION_MAJOR);
    EXPECT(getLibraryVersion_Minor() == ZELTAGAPI_VERSION_MINOR);
    EXPECT(getLibraryVersion_Build() == ZELTAGAPI_VERSION_BUILD);
    EXPECT(strcmp(getLibraryVersion_Beta(), "") == 0);
    EXPECT(zeltag_USBDeviceConnect(0x5A3E, 0x9D2B, NULL) == -1);
    EXPECT(GetDevCnt() == 0);
    EXPECT(SetActDev(0) == 0 && GetActDev() == 0);
    EXPECT(GetProduct() == 0 && GetDevType() == 0);
    EXPECT(SetUnsupportedProductErrorCode(-7) == -7);
    EXPECT(GetUnsupportedProductErrorCode() == -7);
    EXPECT(GetDevName(name) == -7);
    EXPECT(GetLastLibErr() == -7);
    EXPECT(GetActiveID(buffer, 8) == -7 && GetActiveID32(buffer, 32) == -7);
    EXPECT(getActiveID(8) == -7 && getActiveID32(32) == -7 && getActiveID_byte(0) == -7);
    EXPECT(ReadCfg() == 0 && WriteCfg() == 0 && GetFlags2(NULL) == -7);
    EXPECT(nv_GetDevName(name) == -7 && getDevName_char(0) == 0 && nv_GetDevType() == 0);
    expectNothingFound();
    expectNoRecords();
    expectNoServices();
    EXPECT(Ping() > 65535);
    EXPECT(SetLUID(5) == 1 && GetLUID() == 5 && DevDat[0].iLUID == 5);
    EXPECT(GetDID() == 0 && GetSN() == 0);
    EXPECT(USBDisconnect() == 1);
    initialize();
    Debug();
    _DPrintf("%d", 1);
    DebugDump();
    return exitStatus();
}
