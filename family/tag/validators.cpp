// SPDX-License-Identifier: MIT
// The ranges of the words.
#include "family/tag/validators.h"

#include "family/tag/blocks.h"
#include "family/tag/error_words.h"
#include "frame/state/state.h"

#include <cstdint>
#include <initializer_list>

using namespace zel;

namespace {

constexpr int kNoLeast = INT16_MIN;

struct Rule {
    std::int16_t& word;
    int least;
    int most;
    int repair; // what a word above `most` becomes; one below `least` becomes that
    std::int64_t error;
};

bool isInside(const Rule& rule) { return rule.word >= rule.least && rule.word <= rule.most; }

int check(int fix, std::initializer_list<Rule> rules) {
    for (const Rule& rule : rules) {
        if (isInside(rule))
            continue;
        if (fix == 0)
            return tag::fail(rule.error);
        rule.word = static_cast<std::int16_t>(rule.word < rule.least ? rule.least : rule.repair);
    }
    return 1;
}

int longestParity() {
    return tag::hasFeature(activeConfig(activeRecord()), tag::kLongParity) ? 142 : 15;
}

// A reader with more characters than it has places for shows none.
int checkCount(int fix, std::int16_t& count) {
    return check(fix, {{count, kNoLeast, 3, 0, 0x1050}});
}

} // namespace

int CheckUserFlags(sCfgFlags*, int) { return 1; }
int CheckUserFlags2(sCfgFlags2*, int) { return 1; }
int CheckUserFlags3(sCfgFlags3*, int) { return 1; }
int CheckUserLEDCtrl(sLEDCtrl*, int) { return 1; }
int CheckUserBRCtrl(sBprRlyCtrl*, int) { return 1; }
int CheckUserSFD(uSFD*, int) { return 1; }

// A count of identifier bits from 65 to 255 stands; only one above 255 is repaired, to 64.
int CheckUserIDBitCnts(sIDBitCnts* record, int fix) {
    if (useACPMode != 0)
        return 1;
    const int limit = longestParity();
    return check(fix, {{record->iLeadParityBitCnt, kNoLeast, limit, limit, 0x1010},
                       {record->iTrailParityBitCnt, kNoLeast, limit, limit, 0x1011},
                       {record->iIDBitCnt, 1, 255, 64, 0x1012},
                       {record->iTotalBitCnt, 26, 255, 255, 0x1013}});
}

int CheckUserDispParms(sIDDispParms* record, int fix) {
    return check(fix, {{record->iFACIDDelim, kNoLeast, 255, 0, 0x1020},
                       {record->iELDelim, kNoLeast, 255, 0, 0x1021},
                       {record->iIDDispLen, kNoLeast, 25, 25, 0x1022},
                       {record->iFACDispLen, kNoLeast, 25, 25, 0x1023}});
}

// One byte of the reader's units: 255 times 4 ms, 255 times 50 ms.
int CheckUserTimeParms(sTimeParms* record, int fix) {
    return check(fix, {{record->iBitStrmTO, kNoLeast, 1020, 1020, 0x1030},
                       {record->iIDHoldTO, kNoLeast, 12750, 12750, 0x1031},
                       {record->iIDLockOutTm, kNoLeast, 12750, 12750, 0x1032},
                       {record->iUSBKeyPrsTm, kNoLeast, 1020, 1020, 0x1033},
                       {record->iUSBKeyRlsTm, kNoLeast, 1020, 1020, 0x1034}});
}

int CheckUserDispParms2(sIDDispParms2* record, int fix) {
    return checkCount(fix, record->iLeadChrCnt);
}

int CheckUserDispParms3(sIDDispParms3* record, int fix) {
    return checkCount(fix, record->iTrailChrCnt);
}
