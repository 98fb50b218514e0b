// SPDX-License-Identifier: MIT
// Gets and sets records in memory; a change waits there for the next write of the configuration.
#include "family/tag/records.h"

#include "family/tag/ascii_protocol.h"
#include "family/tag/error_words.h"
#include "family/tag/validators.h"
#include "family/tag/words.h"
#include "family/tag/write_config.h"
#include "frame/state/state.h"

using namespace zel;
using tag::fail;

namespace {

tsTagCfg& config() { return activeConfig(activeRecord()); }

int succeed() {
    tag::clearError();
    return 1;
}

template <class Record> int getRecord(Record tsTagCfg::*member, Record* out) {
    activeRecord().lLastErr = ZELTAGAPI_ERR_GET;
    if (!out)
        return fail(ZELTAGAPI_ERR_NULL);
    if (config().bCfgValid == 0)
        return fail(ZELTAGAPI_ERR_NEVER_READ);
    *out = config().*member;
    return succeed();
}

// Whether a record may be set; the error word says why not.
template <class Record> bool accept(Record* record, int (*check)(Record*, int)) {
    activeRecord().lLastErr = ZELTAGAPI_ERR_SET;
    if (!record)
        return fail(ZELTAGAPI_ERR_NULL);
    return check(record, 0) != 0;
}

template <class Record>
int setRecord(Record tsTagCfg::*member, Record* in, int (*check)(Record*, int),
              std::uint32_t tsTagCfg::*dirty) {
    if (!accept(in, check))
        return 0;
    config().*member = *in;
    config().*dirty = 1;
    return succeed();
}

// A volatile record goes to the reader at once and marks nothing; whether that went well isn't
// told.
template <class Record>
int setOutputs(Record tsTagCfg::*member, Record* in, int (*check)(Record*, int)) {
    if (!accept(in, check))
        return 0;
    config().*member = *in;
    if (in->bVolatile != 0)
        WrtIDFrmtParms2(&config());
    else
        config().bDirtyIDFrmt2 = 1;
    return succeed();
}

// The byte that carries the third set of flags to the reader. bNotBootDev travels elsewhere.
std::int16_t flagByte(const tsTagCfg& configuration) {
    int byte = 0;
    for (const tag::Word& word : tag::wordsOf(tag::Record::CfgFlags3))
        if (word.place.isMirror && tag::get(configuration, word) != 0)
            byte |= 1 << word.place.bit;
    return static_cast<std::int16_t>(byte);
}

// Whether a buffer can hold the field data of a configuration that was read.
bool acceptFieldData(const void* buffer, short size) {
    if (!buffer)
        return fail(ZELTAGAPI_ERR_NULL);
    if (size < static_cast<short>(sizeof(uSFD)))
        return false;
    return config().bCfgValid != 0 || fail(ZELTAGAPI_ERR_NEVER_READ);
}

} // namespace

int zeltag_GetFlags(sCfgFlags* record) { return getRecord(&tsTagCfg::sCfgFlags, record); }

int zeltag_SetFlags(sCfgFlags* record) {
    return setRecord(&tsTagCfg::sCfgFlags, record, CheckUserFlags, &tsTagCfg::bDirtyIDFrmt1);
}

int zeltag_GetFlags2(sCfgFlags2* record) { return getRecord(&tsTagCfg::sCfgFlags2, record); }

int zeltag_SetFlags2(sCfgFlags2* record) {
    return setRecord(&tsTagCfg::sCfgFlags2, record, CheckUserFlags2, &tsTagCfg::bDirtyIDFrmt2);
}

int zeltag_GetFlags3(sCfgFlags3* record) { return getRecord(&tsTagCfg::sCfgFlags3, record); }

// Marks block 1, which carries these flags but for bNotBootDev.
int zeltag_SetFlags3(sCfgFlags3* record) {
    if (!setRecord(&tsTagCfg::sCfgFlags3, record, CheckUserFlags3, &tsTagCfg::bDirtyTime))
        return 0;
    config().sTimeParms.iTPCfgFlg3 = flagByte(config());
    return 1;
}

int zeltag_GetIDBitCnts(sIDBitCnts* record) { return getRecord(&tsTagCfg::sIDBitCnts, record); }

int zeltag_SetIDBitCnts(sIDBitCnts* record) {
    return setRecord(&tsTagCfg::sIDBitCnts, record, CheckUserIDBitCnts, &tsTagCfg::bDirtyIDFrmt1);
}

int zeltag_GetIDDispParms(sIDDispParms* record) {
    return getRecord(&tsTagCfg::sIDDispParms, record);
}

// The record's words stand in block 0, and one in block 3.
int zeltag_SetIDDispParms(sIDDispParms* record) {
    if (!setRecord(&tsTagCfg::sIDDispParms, record, CheckUserDispParms, &tsTagCfg::bDirtyIDFrmt1))
        return 0;
    config().bDirtyExt = 1;
    return 1;
}

int zeltag_GetIDDispParms2(sIDDispParms2* record) {
    return getRecord(&tsTagCfg::sIDDispParms2, record);
}

int zeltag_SetIDDispParms2(sIDDispParms2* record) {
    return setRecord(&tsTagCfg::sIDDispParms2, record, CheckUserDispParms2,
                     &tsTagCfg::bDirtyIDFrmt2);
}

int zeltag_GetIDDispParms3(sIDDispParms3* record) {
    return getRecord(&tsTagCfg::sIDDispParms3, record);
}

int zeltag_SetIDDispParms3(sIDDispParms3* record) {
    return setRecord(&tsTagCfg::sIDDispParms3, record, CheckUserDispParms3,
                     &tsTagCfg::bDirtyIDFrmt2);
}

int zeltag_GetTimeParms(sTimeParms* record) { return getRecord(&tsTagCfg::sTimeParms, record); }

// The caller's iTPCfgFlg3 is thrown away: SetFlags3 owns that byte.
int zeltag_SetTimeParms(sTimeParms* record) {
    const std::int16_t flags = config().sTimeParms.iTPCfgFlg3;
    if (!setRecord(&tsTagCfg::sTimeParms, record, CheckUserTimeParms, &tsTagCfg::bDirtyTime))
        return 0;
    config().sTimeParms.iTPCfgFlg3 = flags;
    return 1;
}

int zeltag_GetLEDCtrl(sLEDCtrl* record) { return getRecord(&tsTagCfg::sLEDCtrl, record); }

// By the ASCII protocol a volatile record isn't stored: what goes out is what the configuration
// holds already.
int zeltag_SetLEDCtrl(sLEDCtrl* record) {
    if (tag::usesAscii() && record && record->bVolatile != 0) {
        if (!accept(record, CheckUserLEDCtrl))
            return 0;
        tag::sendLedByAscii(config());
        return succeed();
    }
    return setOutputs(&tsTagCfg::sLEDCtrl, record, CheckUserLEDCtrl);
}

int zeltag_GetBprRlyCtrl(sBprRlyCtrl* record) { return getRecord(&tsTagCfg::sBprRlyCtrl, record); }

int zeltag_SetBprRlyCtrl(sBprRlyCtrl* record) {
    return setOutputs(&tsTagCfg::sBprRlyCtrl, record, CheckUserBRCtrl);
}

int zeltag_GetSepFldData(uSFD* buffer, short size) {
    if (!acceptFieldData(buffer, size))
        return 0;
    *buffer = config().uSFD;
    return succeed();
}

int zeltag_SetSepFldData(uSFD* buffer, short size) {
    if (!acceptFieldData(buffer, size))
        return 0;
    config().uSFD = *buffer;
    config().bDirtySepFld = 1;
    return succeed();
}

int zeltag_SetHashKeyData(sHashKeyData* record) {
    if (!record) {
        activeRecord().lLastErr = ZELTAGAPI_ERR_SET;
        return fail(ZELTAGAPI_ERR_NULL);
    }
    config().sHashKeyData = *record;
    config().bDirtySepFld = 1;
    return succeed();
}
