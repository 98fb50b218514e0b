// SPDX-License-Identifier: MIT
// The card types that a multi-configuration reader knows.
#include "family/tag/tag.h"
#include "frame/state.h"

#include <cstring>

void zeltag_ZeroCardTypeListFromDevice() {
    tsDevDat& record = zel::activeRecord();
    std::memset(record.CardTypeList, 0, sizeof record.CardTypeList);
}
