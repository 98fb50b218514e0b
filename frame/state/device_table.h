/* SPDX-License-Identifier: MIT */
/* What a record of the device table holds before anything was connected. */
#ifndef ZELTAGAPI_DEVICE_TABLE_H
#define ZELTAGAPI_DEVICE_TABLE_H

#include "frame/zelTagState.h"

#ifdef __cplusplus
extern "C" {
#endif

extern const tsDevDat zelStartingRecord;

#ifdef __cplusplus
}
#endif

#endif
