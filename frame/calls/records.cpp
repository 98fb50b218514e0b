// SPDX-License-Identifier: MIT
// The exported calls on the records of a configuration.
#include "family/tag/records.h"
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"

using namespace zel;

namespace {

// Fills the one word that a product has; the record's others stay as they are.
template <class Record> int carry(Record* record, std::int16_t Record::*word, std::uint32_t value) {
    if (!record)
        return 0;
    record->*word = static_cast<std::int16_t>(value);
    return 1;
}

// A sensor's LED flags: one bit for each of the first three words.
constexpr int kRed = 1;
constexpr int kApplication = 2;
constexpr int kGreen = 4;

// Flags beyond those three are themselves the result, and the words stay cleared.
int getSensorLeds(sLEDCtrl* record) {
    if (!record)
        return 0;
    const int flags = zelecho_GetLEDCtrl();
    const bool known = (flags & ~(kRed | kApplication | kGreen)) == 0;
    record->iRedLEDState = known && (flags & kRed) != 0;
    record->bAppCtrlsLED = known && (flags & kApplication) != 0;
    record->iGrnLEDState = known && (flags & kGreen) != 0;
    return known ? 1 : flags;
}

int setSensorLeds(sLEDCtrl* record) {
    if (!record)
        return 0;
    const int flags = (record->iRedLEDState != 0 ? kRed : 0) |
                      (record->bAppCtrlsLED != 0 ? kApplication : 0) |
                      (record->iGrnLEDState != 0 ? kGreen : 0);
    zelecho_SetLEDCtrl(static_cast<short>(flags));
    return 1;
}

} // namespace

// Magnetic stripe readers and sensors have the flag that silences their keys, and no other.
int GetFlags(sCfgFlags* record) {
    const std::uint32_t product = activeProduct();
    if (product != kBand && product != kEcho)
        return forTag(zeltag_GetFlags, record);
    const tsDevDat& device = activeRecord();
    const std::uint32_t halt = product == kBand ? device.Band.HaltKBSend : device.Echo.bEchoHalt;
    return carry(record, &sCfgFlags::bHaltKBSnd, halt);
}

int SetFlags(sCfgFlags* record) {
    const std::uint32_t product = activeProduct();
    if (product != kBand && product != kEcho)
        return forTag(zeltag_SetFlags, record);
    if (!record)
        return 0;
    if (product == kBand)
        activeRecord().Band.HaltKBSend = record->bHaltKBSnd != 0;
    else
        activeRecord().Echo.bEchoHalt = static_cast<std::uint32_t>(record->bHaltKBSnd);
    return 1;
}

int GetFlags2(sCfgFlags2* record) { return forTag(zeltag_GetFlags2, record); }
int SetFlags2(sCfgFlags2* record) { return forTag(zeltag_SetFlags2, record); }

// A magnetic stripe reader has the flag of the numeric keypad alone.
int GetFlags3(sCfgFlags3* record) {
    if (activeProduct() != kBand)
        return forTag(zeltag_GetFlags3, record);
    return carry(record, &sCfgFlags3::bUseNumKP, activeRecord().Band.UseNumKP);
}

int SetFlags3(sCfgFlags3* record) {
    if (activeProduct() != kBand)
        return forTag(zeltag_SetFlags3, record);
    if (!record)
        return 0;
    activeRecord().Band.UseNumKP = record->bUseNumKP != 0;
    return 1;
}

int GetIDBitCnts(sIDBitCnts* record) { return forTag(zeltag_GetIDBitCnts, record); }
int SetIDBitCnts(sIDBitCnts* record) { return forTag(zeltag_SetIDBitCnts, record); }

int GetIDDispParms(sIDDispParms* record) { return forTag(zeltag_GetIDDispParms, record); }
int SetIDDispParms(sIDDispParms* record) { return forTag(zeltag_SetIDDispParms, record); }

int GetIDDispParms2(sIDDispParms2* record) { return forTag(zeltag_GetIDDispParms2, record); }
int SetIDDispParms2(sIDDispParms2* record) { return forTag(zeltag_SetIDDispParms2, record); }

int GetIDDispParms3(sIDDispParms3* record) { return forTag(zeltag_GetIDDispParms3, record); }
int SetIDDispParms3(sIDDispParms3* record) { return forTag(zeltag_SetIDDispParms3, record); }

int GetTimeParms(sTimeParms* record) {
    return forFamily(zeltag_GetTimeParms, zelband_GetTimeParms, zelecho_GetTimeParms, record);
}
int SetTimeParms(sTimeParms* record) {
    return forFamily(zeltag_SetTimeParms, zelband_SetTimeParms, zelecho_SetTimeParms, record);
}

int GetLEDCtrl(sLEDCtrl* record) {
    return forFamily(zeltag_GetLEDCtrl, zelband_GetLEDCtrl, getSensorLeds, record);
}

int SetLEDCtrl(sLEDCtrl* record) {
    return forFamily(zeltag_SetLEDCtrl, zelband_SetLEDCtrl, setSensorLeds, record);
}

int GetBprRlyCtrl(sBprRlyCtrl* record) { return forTag(zeltag_GetBprRlyCtrl, record); }
int SetBprRlyCtrl(sBprRlyCtrl* record) { return forTag(zeltag_SetBprRlyCtrl, record); }

int GetSepFldData(uSFD* buffer, short size) { return forTag(zeltag_GetSepFldData, buffer, size); }
int SetSepFldData(uSFD* buffer, short size) { return forTag(zeltag_SetSepFldData, buffer, size); }

int SetHashKeyData(sHashKeyData* record) { return forTag(zeltag_SetHashKeyData, record); }
