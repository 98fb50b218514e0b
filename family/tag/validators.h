// SPDX-License-Identifier: MIT
// Checks of what an application or a reader puts into the records.
//
// With fix 0 the first word out of range ORs its code into the active device's error word; the
// result is 0 and the record unchanged. With another fix such words are repaired and the result
// is 1. CheckUserTimeParms() stands in a public header, since another family has these times too.
#pragma once

#include "frame/zelTagSettings.h"
#include "frame/zelTagState.h"

ZELTAGAPI_BEGIN

ZELTAGAPI_EXPORT int CheckUserFlags(struct sCfgFlags* record, int fix);
ZELTAGAPI_EXPORT int CheckUserFlags2(struct sCfgFlags2* record, int fix);
ZELTAGAPI_EXPORT int CheckUserFlags3(struct sCfgFlags3* record, int fix);
ZELTAGAPI_EXPORT int CheckUserIDBitCnts(struct sIDBitCnts* record, int fix);
ZELTAGAPI_EXPORT int CheckUserDispParms(struct sIDDispParms* record, int fix);
ZELTAGAPI_EXPORT int CheckUserDispParms2(struct sIDDispParms2* record, int fix);
ZELTAGAPI_EXPORT int CheckUserDispParms3(struct sIDDispParms3* record, int fix);
ZELTAGAPI_EXPORT int CheckUserLEDCtrl(struct sLEDCtrl* record, int fix);
ZELTAGAPI_EXPORT int CheckUserBRCtrl(struct sBprRlyCtrl* record, int fix);
ZELTAGAPI_EXPORT int CheckUserSFD(struct uSFD* record, int fix);

ZELTAGAPI_END
