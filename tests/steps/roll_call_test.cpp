// SPDX-License-Identifier: MIT
// Each exported function is told of: by a row, as a call without device traffic, or as one whose
// traffic fails in a test of its own.
#include "tests/steps/operation.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

using namespace zel::test::steps;

namespace {

// A get or a set of a word or a record in the table.
constexpr char kWords[] =
    "(zeltag_|zelband_|zelecho_)?[gs]et(CfgFlags[23]?|IDBitCnts|IDDispParms[23]?|TimeParms)_\\w+|"
    "(zeltag_)?get(LEDCtrl|BprRlyCtrl)_\\w+|"
    "zelecho_GetFlags|(zeltag_|zelband_)?[GS]etFlags[23]?|"
    "(zeltag_|zelband_|zelecho_)?[GS]et(IDBitCnts|IDDispParms[23]?|TimeParms|"
    "SonarParms|WalkAwayParms|WalkUpParms|IdleParms|SepFldData|HashKeyData|EnhanceSecurityFlag|"
    "AZERTYShiftLock|ExtendedPrecisionMath|64BytesInPackets|EasyReadMode|PrependCSN)|"
    "(zeltag_|zelband_|zelecho_)?Get(LEDCtrl|BprRlyCtrl)|zelecho_SetLEDCtrl|"
    "zel(Band|band_)[GS]et(Field\\w+|TrackEnables|Beeper)|zel(Band|band_)(GetLED|SetActiveID)";

// Kept in the library: what a read or a connect brought, what a search is to try, and helpers.
constexpr char kTable[] =
    "(zeltag_|zelband_|zelecho_)?(getActiveID_byte|getActiveCardData_byte|GetRawPayload_index|"
    "getDevName_char|GetFirmwareVersion|GetActDev|SetActDev|GetDevCnt|SetDevTypeSrch|"
    "setSourceEvent|UseAsciiCommandProtocol|ZeroCardTypeListFromDevice|SetSerialPort|FoundDevice|"
    "Init|Exit)|"
    "(zeltag|zelecho)_GetQueuedID_index|zelband_GetQueuedID_index|(nv_)?GetDev(Name|Type)|"
    "GetDevByLUID|GetProduct|GetDID|GetLUID|SetLUID|GetSN|GetHIDGuid|GetRawRepDataI|"
    "(Get|Set)ActConfig|GetMaxConfig|GetCardType|GetCardPriority|SetCardTypePriority|"
    "IsCardTypeInList|GetFWFilename|GetFullFWVersion|getPartNumberString(_char)?|isKQ7Reader|"
    "[Gg]etVidPid\\w+|ResetDevLst|LoadzelTagVidPidListFile|fillvidpidList|SetBaudRate|"
    "SetConnectProduct|"
    "SetComLinux|SetComSrchRange|VirtualComSearchRange|BuildVirtualComMap|CheckVirtualMap|"
    "IsComPortInUse|SetIpPort|GetMyIpAddress|SetSerialTimeouts|(Get|Set)"
    "UnsupportedProductErrorCode|"
    "GetLastLibErr|GetLibVersion|getLibraryVersion_\\w+|SetMarkerFunction|initialize|_API(init|"
    "fini)|"
    "InitLocalParms|InitSerialParms|InitUSBParms|_?D(Printf|ebug|ebugDump)|isLoggingEnabled|"
    "_str(n)?icmp|fopen_s|GetTickCount|HexToBytes|AcpGetValue|parseStrValue|CPort_(Init|UseOpener)|"
    "Check(Idle|Sonar|User|Walk)\\w+|ProcessFCfgTokenVal|ProcessSonarTokenVal|ReadFCfgBody|"
    "WriteFCfgBody|(zelband_)?ReadDevTypeFromFile|CheckTamperedFirmwareFile|"
    "GenerateSecureFirmwareFile|zelTagAPI_\\w+|UsbDriver_(Init|Exit|CreateFile|"
    "tagAdv_CreateFile|IsDevOurs|UseBackend|WaitForData)";

// These open or close a device and exchange nothing with it; nor does a sensor where it has no such
// call. A search that goes on to lines does so by the scans that have rows.
constexpr char kNoExchange[] =
    "USBDisconnect|(zeltag_|zelband_)?ComDisconnect|UsbDriver_(Generator|Close)|"
    "(zeltag_|zelband_|zelecho_)(USBDeviceConnect)|(zeltag|zelband|zelecho)_USBConnect|"
    "zelecho_usbConnect|zelecho_(getActiveID(32)?|SetRawPayload_index|GetQueuedID)|"
    "(zeltag_|zelband_|zelecho_)?Chk(AddArrival|DelRemoval)|chk(AddArrival|DelRemoval)_char|"
    "zelEchoChkDelRemoval";

// The transports themselves, below any exchange; the network; a line's raw bytes; connects that are
// a scan and a read; files whose calls read and write the configuration; the rules ahead of a load.
constexpr char kElsewhere[] =
    "UsbDriver_(SendFR|RecvFR)|"                                           // usb_driver_test.cpp
    "socket_\\w+|FindXport|zeltag_IPConnect(_Serial|_USBFR)?|"             // network_*_test.cpp
    "(Quick)?ReadSerialPort|(quickR|r)eadSerialPort_char|WriteSerialPort|" // serial_line_test.cpp
    "[cC]omConnect(Port)?|"                                             // serial_connect_test.cpp
    "(zeltag_|zelband_|zelecho_)?(ReadDevCfgFmFile|WriteDevCfgToFile)|" // failing_exchange_test.cpp
    "readDevCfgFmFile_char|writeDevCfgToFile_char|ReadDevCfgFromSecureFile|"
    "WriteDevCfgToSecureFile|CheckRulesAndBootload"; // firmware_test.cpp

std::set<std::string> exportedFunctions() {
    std::ifstream file(ZEL_FRAME "exports.txt");
    std::set<std::string> names;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string kind;
        std::string name;
        if (words >> kind >> name && kind == "T")
            names.insert(name);
    }
    return names;
}

std::set<std::string> namesOfRows() {
    std::set<std::string> names;
    for (const Operation& operation : allOperations())
        for (const Call& call : operation.calls)
            names.insert(call.name);
    return names;
}

std::set<std::string> matches(const std::set<std::string>& names, const char* pattern) {
    const std::regex expression(pattern);
    std::set<std::string> found;
    std::copy_if(names.begin(), names.end(), std::inserter(found, found.end()),
                 [&](const std::string& name) { return std::regex_match(name, expression); });
    return found;
}

} // namespace

TEST(RollCall, HasEachExportedFunction) {
    const std::set<std::string> rows = namesOfRows();
    std::set<std::string> missing = exportedFunctions();
    for (const std::string& name : rows)
        missing.erase(name);
    for (const char* pattern : {kWords, kTable, kNoExchange, kElsewhere})
        for (const std::string& name : matches(missing, pattern))
            missing.erase(name);
    for (const std::string& name : missing)
        ADD_FAILURE() << name << " is in no row";
}

TEST(RollCall, TellsOfNoFunctionTwice) {
    const std::set<std::string> rows = namesOfRows();
    for (const char* pattern : {kWords, kTable, kNoExchange, kElsewhere})
        for (const std::string& name : matches(rows, pattern))
            ADD_FAILURE() << name << " has a row";
}

TEST(RollCall, HasNoOtherFunctions) {
    const std::set<std::string> exported = exportedFunctions();
    EXPECT_GT(exported.size(), 800U);
    for (const std::string& name : namesOfRows())
        EXPECT_TRUE(exported.contains(name)) << name;
}
