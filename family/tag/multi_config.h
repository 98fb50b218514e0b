// SPDX-License-Identifier: MIT
// Readers that hold several configurations.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

// Asks the reader what it is: settles iTagPlusState, iMaxConfig, iActConfig and, on a
// multi-configuration reader, the active configuration's card type. 1 after a complete exchange.
ZELTAGAPI_EXPORT int SendGetTagPlus(void);

// Sends the active configuration's card type and priority, then pauses 10 ms. 1 or 0.
ZELTAGAPI_EXPORT int SendSetTagPlus(void);

// Makes a configuration the active one, in the library and in the reader. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_SendSelectActConfig(int config);

// Fills the active record's list of card types from the reader. 1 when the list came to its end.
ZELTAGAPI_EXPORT int zeltag_GetCardTypeListFromDevice(void);

// Lets the reader copy a stored set of configurations over another (1 current, 2 user defaults,
// 3 factory defaults), then pauses 100 ms. 1 or 0.
ZELTAGAPI_EXPORT int PlusBlockMove(int source, int target);

ZELTAGAPI_END
