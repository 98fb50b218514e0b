// SPDX-License-Identifier: MIT
// The family's get and set operations on the records of the active configuration. The exported
// calls of the same names without the prefix tell what each does.
#pragma once

#include "frame/zelTagState.h"

ZELTAGAPI_BEGIN

ZELTAGAPI_EXPORT int zeltag_GetFlags(struct sCfgFlags* record);
ZELTAGAPI_EXPORT int zeltag_SetFlags(struct sCfgFlags* record);
ZELTAGAPI_EXPORT int zeltag_GetFlags2(struct sCfgFlags2* record);
ZELTAGAPI_EXPORT int zeltag_SetFlags2(struct sCfgFlags2* record);
ZELTAGAPI_EXPORT int zeltag_GetFlags3(struct sCfgFlags3* record);
ZELTAGAPI_EXPORT int zeltag_SetFlags3(struct sCfgFlags3* record);
ZELTAGAPI_EXPORT int zeltag_GetIDBitCnts(struct sIDBitCnts* record);
ZELTAGAPI_EXPORT int zeltag_SetIDBitCnts(struct sIDBitCnts* record);
ZELTAGAPI_EXPORT int zeltag_GetIDDispParms(struct sIDDispParms* record);
ZELTAGAPI_EXPORT int zeltag_SetIDDispParms(struct sIDDispParms* record);
ZELTAGAPI_EXPORT int zeltag_GetIDDispParms2(struct sIDDispParms2* record);
ZELTAGAPI_EXPORT int zeltag_SetIDDispParms2(struct sIDDispParms2* record);
ZELTAGAPI_EXPORT int zeltag_GetIDDispParms3(struct sIDDispParms3* record);
ZELTAGAPI_EXPORT int zeltag_SetIDDispParms3(struct sIDDispParms3* record);
ZELTAGAPI_EXPORT int zeltag_GetTimeParms(struct sTimeParms* record);
ZELTAGAPI_EXPORT int zeltag_SetTimeParms(struct sTimeParms* record);
ZELTAGAPI_EXPORT int zeltag_GetLEDCtrl(struct sLEDCtrl* record);
ZELTAGAPI_EXPORT int zeltag_SetLEDCtrl(struct sLEDCtrl* record);
ZELTAGAPI_EXPORT int zeltag_GetBprRlyCtrl(struct sBprRlyCtrl* record);
ZELTAGAPI_EXPORT int zeltag_SetBprRlyCtrl(struct sBprRlyCtrl* record);
ZELTAGAPI_EXPORT int zeltag_GetSepFldData(struct uSFD* buffer, short size);
ZELTAGAPI_EXPORT int zeltag_SetSepFldData(struct uSFD* buffer, short size);
ZELTAGAPI_EXPORT int zeltag_SetHashKeyData(struct sHashKeyData* record);

ZELTAGAPI_END
