// SPDX-License-Identifier: MIT
// The exported calls on the records of a configuration.
#include "family/tag/records.h"
#include "frame/dispatch.h"
#include "frame/zelTagAPI.h"

using zel::forTag;

int GetFlags(sCfgFlags* record) { return forTag(zeltag_GetFlags, record); }
int SetFlags(sCfgFlags* record) { return forTag(zeltag_SetFlags, record); }

int GetFlags2(sCfgFlags2* record) { return forTag(zeltag_GetFlags2, record); }
int SetFlags2(sCfgFlags2* record) { return forTag(zeltag_SetFlags2, record); }

int GetFlags3(sCfgFlags3* record) { return forTag(zeltag_GetFlags3, record); }
int SetFlags3(sCfgFlags3* record) { return forTag(zeltag_SetFlags3, record); }

int GetIDBitCnts(sIDBitCnts* record) { return forTag(zeltag_GetIDBitCnts, record); }
int SetIDBitCnts(sIDBitCnts* record) { return forTag(zeltag_SetIDBitCnts, record); }

int GetIDDispParms(sIDDispParms* record) { return forTag(zeltag_GetIDDispParms, record); }
int SetIDDispParms(sIDDispParms* record) { return forTag(zeltag_SetIDDispParms, record); }

int GetIDDispParms2(sIDDispParms2* record) { return forTag(zeltag_GetIDDispParms2, record); }
int SetIDDispParms2(sIDDispParms2* record) { return forTag(zeltag_SetIDDispParms2, record); }

int GetIDDispParms3(sIDDispParms3* record) { return forTag(zeltag_GetIDDispParms3, record); }
int SetIDDispParms3(sIDDispParms3* record) { return forTag(zeltag_SetIDDispParms3, record); }

int GetTimeParms(sTimeParms* record) { return forTag(zeltag_GetTimeParms, record); }
int SetTimeParms(sTimeParms* record) { return forTag(zeltag_SetTimeParms, record); }

int GetLEDCtrl(sLEDCtrl* record) { return forTag(zeltag_GetLEDCtrl, record); }
int SetLEDCtrl(sLEDCtrl* record) { return forTag(zeltag_SetLEDCtrl, record); }

int GetBprRlyCtrl(sBprRlyCtrl* record) { return forTag(zeltag_GetBprRlyCtrl, record); }
int SetBprRlyCtrl(sBprRlyCtrl* record) { return forTag(zeltag_SetBprRlyCtrl, record); }

int GetSepFldData(uSFD* buffer, short size) { return forTag(zeltag_GetSepFldData, buffer, size); }
int SetSepFldData(uSFD* buffer, short size) { return forTag(zeltag_SetSepFldData, buffer, size); }

int SetHashKeyData(sHashKeyData* record) { return forTag(zeltag_SetHashKeyData, record); }
