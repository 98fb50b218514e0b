// SPDX-License-Identifier: MIT
// Rows of the calls on the library itself, on the table of devices and on their lines and files.
#pragma once

#include "tests/frame/family_table.h"
#include "transport/tcp_socket.h"

namespace zel::test {

// no device, zelTag, zelBand, zelEcho, another product, a simulated reader

inline constexpr Row kLibraryRows[] = {
    {ZEL_CALL(_APIinit(), 0), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(_APIfini()), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(initialize(), 0), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(GetLibVersion(nullptr, nullptr, nullptr)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(getLibraryVersion_Major()), 7, 7, 7, 7, 7, 7},
    {ZEL_CALL(getLibraryVersion_Minor()), 6, 6, 6, 6, 6, 6},
    {ZEL_CALL(getLibraryVersion_Build()), 4, 4, 4, 4, 4, 4},
    {ZEL_CALL(getLibraryVersion_Beta()), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(isLoggingEnabled()), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(SetMarkerFunction(nullptr)), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(Debug(), 0), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(_DPrintf("%d", 1), 0), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(DebugDump(), 0), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(GetLastLibErr()), kNo, kErrorWord, kErrorWord, kErrorWord, kErrorWord, kErrorWord},
    {ZEL_CALL(SetUnsupportedProductErrorCode(5)), 5, 5, 5, 5, 5, 5},
    {ZEL_CALL(GetUnsupportedProductErrorCode()), kNo, kNo, kNo, kNo, kNo, kNo},
};

inline constexpr Row kConnectRows[] = {
    {ZEL_CALL(SetConnectProduct(0)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(SetDevTypeSrch(1)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(USBConnect(nullptr)), 0, 0, 0, 0, 0, 1},
    {ZEL_CALL(usbConnect()), 0, 0, 0, 0, 0, 1},
    {ZEL_CALL(zeltag_USBDeviceConnect(0x5A3E, 0x9D23, nullptr)), -1, -1, -1, -1, -1, -1},
    {ZEL_CALL(USBDisconnect()), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(GetProduct()), 0, 1, 2, 4, 8, 1},
    {ZEL_CALL(SetActDev(0)), 0, 1, 1, 1, 1, 1},
    {ZEL_CALL(GetActDev()), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(GetDevCnt()), 0, 1, 1, 1, 1, 1},
    {ZEL_CALL(ComConnect(nullptr)), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(ComConnectPort(1, nullptr)), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(comConnect()), kNo, 0, 0, kNo, kNo, 0},
    {ZEL_CALL(comConnectPort(1)), kNo, 0, 0, kNo, kNo, 0},
    {ZEL_CALL(ComDisconnect()), kNo, 0, 0, kNo, kNo, 0},
};

inline constexpr Row kIdentityRows[] = {
    {ZEL_CALL(GetDevType()), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(nv_GetDevType()), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(GetDID()), kDid, kDid, kDid, kDid, kDid, kDid},
    {ZEL_CALL(GetLUID()), kLuid, kLuid, kLuid, kLuid, kLuid, kLuid},
    {ZEL_CALL(SetLUID(9)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(GetSN()), 65535, 65535, 65535, 65535, 65535, 65535},
    {ZEL_CALL(GetDevName(text())), kNo, 999, 999, 999, 999, 999},
    {ZEL_CALL(nv_GetDevName(text())), kNo, 999, 999, 999, 999, 999},
    {ZEL_CALL(getDevName_char(0)), no(0), 'r', 'r', 'r', 'r', 'r'},
    {ZEL_CALL(GetDevByLUID(kLuid, 0)), no(-1), 0, 0, 0, 0, 0},
    {ZEL_CALL(GetHIDGuid(nullptr)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(Ping()), no(kTick), kTick, kTick, no(kTick), no(kTick), 1},
};

inline constexpr Row kHotPlugRows[] = {
    {ZEL_CALL(ChkAddArrival("x")), kNo, no(0), no(0), no(0), kNo, no(0)},
    {ZEL_CALL(chkAddArrival_char(255, 0)), kNo, no(0), no(0), no(0), kNo, no(0)},
    {ZEL_CALL(ChkDelRemoval("x")), no(0), no(0), no(0), no(0), no(0), no(0)},
    {ZEL_CALL(chkDelRemoval_char(255, 0)), no(0), no(0), no(0), no(0), no(0), no(0)},
};

inline constexpr Row kFilterRows[] = {
    {ZEL_CALL(LoadzelTagVidPidListFile(), zelTagVidPid.rows[0].vendor), 0x7C1F, 0x7C1F, 0x7C1F,
     0x7C1F, 0x7C1F, 0x7C1F},
    {ZEL_CALL(GetVidPidVendorName()[0]), '5', '5', 0, 0, 0, '5'},
    {ZEL_CALL(getVidPidVendorName_char(0)), '5', '5', 0, 0, 0, '5'},
    {ZEL_CALL(GetVidPidFilterMask(1)), kFilter, kFilter, kFilter, kFilter, kFilter, kFilter},
    {ZEL_CALL(GetVidPidFilterCompare(1)), kFilter, kFilter, kFilter, kFilter, kFilter, kFilter},
    {ZEL_CALL(isKQ7Reader()), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(unlockKeystrokeModeOfKQ7(), DevDat[0].lLastErr), no(kErrorWord),
     ZELTAGAPI_ERR_SERVICE, kErrorWord, no(kErrorWord), no(kErrorWord), 0},
};

inline constexpr Row kLineRows[] = {
    {ZEL_CALL(SetComLinux(1, "")), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(SetComSrchRange(2, 1)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(VirtualComSearchRange(1, 2)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(zeltag_UseAsciiCommandProtocol(0)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(SetBaudRate(4800), defaultbaudrate), 4800, 4800, 4800, 4800, 4800, 4800},
    {ZEL_CALL(ReadSerialPort(bytes(), 4)), no(0), no(0), no(0), no(0), no(0), no(0)},
    {ZEL_CALL(WriteSerialPort(bytes(), 4)), no(0), no(0), no(0), no(0), no(0), no(0)},
    {ZEL_CALL(QuickReadSerialPort(bytes(), 4)), no(0), no(0), no(0), no(0), no(0), no(0)},
    {ZEL_CALL(readSerialPort_char(-1)), no(0), no(0), no(0), no(0), no(0), no(0)},
    {ZEL_CALL(quickReadSerialPort_char(-1)), no(0), no(0), no(0), no(0), no(0), no(0)},
    {ZEL_CALL(SetSerialTimeouts(1, 2, 3), 0), no(0), no(0), no(0), no(0), no(0), no(0)},
};

inline constexpr Row kNetworkRows[] = {
    {ZEL_CALL(SetIpPort(127, 0, 0, 1, 9)), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(GetMyIpAddress() == socket_GetMyIP()), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(FindXport(127, 0, 0, 2, 1)), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(socket_GetMACAddress(127, 0, 0, 1, nullptr)), 0, 0, 0, 0, 0, 0},
};

inline constexpr Row kFileRows[] = {
    {ZEL_CALL(WriteDevCfgToFile("/")), kNo, no(0), no(0), no(0), kNo, no(0)},
    {ZEL_CALL(ReadDevCfgFmFile("/")), kNo, no(0), no(0), no(0), kNo, no(0)},
    {ZEL_CALL(writeDevCfgToFile_char(255, 0)), kNo, no(0), no(0), no(0), kNo, no(0)},
    {ZEL_CALL(readDevCfgFmFile_char(255, 0)), kNo, no(0), no(0), no(0), kNo, no(0)},
    {ZEL_CALL(ReadDevTypeFromFile("/")), kNo, kNo, no(65535), no(0), kNo, kNo},
    {ZEL_CALL(WriteDevCfgToSecureFile("/dev/null")), 1, 1, 1, 1, 1, 1},
    {ZEL_CALL(ReadDevCfgFromSecureFile("/dev/null")), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(CheckTamperedFirmwareFile("/dev/null")), no(0), no(0), no(0), no(0), no(0), no(0)},
    {ZEL_CALL(GenerateSecureFirmwareFile("/")), no(0), no(0), no(0), no(0), no(0), no(0)},
};

} // namespace zel::test
