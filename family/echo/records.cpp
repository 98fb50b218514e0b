// SPDX-License-Identifier: MIT
// Gets and sets the sensor's records in memory, and checks them.
#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "frame/zelTagErrors.h"

#include <algorithm>

using namespace zel;

namespace {

// The limits that are enforced; the descriptions of the words tell narrower ones.
constexpr int kLeastPing = 200; // ms
constexpr int kMostPing = 1020;
constexpr int kLeastMinimum = 1; // inches
constexpr int kMostMinimum = 59;
constexpr int kLeastMaximum = 15;
constexpr int kMostMaximum = 72;
constexpr int kMostKeys = 6;
constexpr int kLeastKeyTime = 64; // ms
constexpr int kMostKeyTime = 16320;

bool refuse(std::int64_t code) {
    activeRecord().lLastErr |= code;
    return false;
}

// Whether a word lies in its range. With `fix` it is brought there.
bool check(std::int16_t& word, int least, int most, std::int64_t code, int fix) {
    if (word >= least && word <= most)
        return true;
    if (fix == 0)
        return refuse(code);
    word = static_cast<std::int16_t>(std::clamp<int>(word, least, most));
    return true;
}

// A count below 0 passes; one that is too high is repaired to none.
bool checkKeys(std::int16_t& count, std::int64_t code, int fix) {
    if (count <= kMostKeys)
        return true;
    if (fix == 0)
        return refuse(code);
    count = 0;
    return true;
}

tsEcho& settings() { return activeRecord().Echo; }

int succeed() {
    activeRecord().lLastErr = 0;
    return 1;
}

template <class Record> int getRecord(Record tsEcho::*member, Record* out) {
    activeRecord().lLastErr = ZELTAGAPI_ERR_GET;
    if (!out)
        return refuse(ZELTAGAPI_ERR_NULL);
    if (settings().bEchoCfgValid == 0)
        return refuse(ZELTAGAPI_ERR_NEVER_READ);
    *out = settings().*member;
    return succeed();
}

template <class Record>
int setRecord(Record tsEcho::*member, Record* in, int (*checkRecord)(Record*, int),
              std::uint32_t tsEcho::*dirty) {
    activeRecord().lLastErr = ZELTAGAPI_ERR_SET;
    if (!in)
        return refuse(ZELTAGAPI_ERR_NULL);
    if (!checkRecord(in, 0))
        return 0;
    settings().*member = *in;
    settings().*dirty = 1;
    return succeed();
}

} // namespace

int CheckSonarParms(sSonarParms* record, int fix) {
    return check(record->PingRateS, kLeastPing, kMostPing, 0x1000, fix) &&
                   check(record->MinDistS, kLeastMinimum, kMostMinimum, 0x1001, fix) &&
                   check(record->MaxDistS, kLeastMaximum, kMostMaximum, 0x1002, fix)
               ? 1
               : 0;
}

int CheckWalkAwayParms(sWalkAwayParms* record, int fix) {
    return checkKeys(record->KeyCountWA, 0x1010, fix) &&
                   check(record->InterKeyDelayWA, kLeastKeyTime, kMostKeyTime, 0x1011, fix)
               ? 1
               : 0;
}

int CheckWalkUpParms(sWalkUpParms* record, int fix) {
    return checkKeys(record->KeyCountWU, 0x1020, fix) &&
                   check(record->InterKeyDelayWU, kLeastKeyTime, kMostKeyTime, 0x1021, fix)
               ? 1
               : 0;
}

int CheckIdleParms(sIdleParms*, int) { return 1; }

int zelecho_GetSonarParms(sSonarParms* record) { return getRecord(&tsEcho::sSonarParms, record); }

int zelecho_SetSonarParms(sSonarParms* record) {
    return setRecord(&tsEcho::sSonarParms, record, CheckSonarParms, &tsEcho::bDirtySonar);
}

int zelecho_GetWalkAwayParms(sWalkAwayParms* record) {
    return getRecord(&tsEcho::sWalkAwayParms, record);
}

int zelecho_SetWalkAwayParms(sWalkAwayParms* record) {
    return setRecord(&tsEcho::sWalkAwayParms, record, CheckWalkAwayParms, &tsEcho::bDirtyWalkAway);
}

int zelecho_GetWalkUpParms(sWalkUpParms* record) {
    return getRecord(&tsEcho::sWalkUpParms, record);
}

int zelecho_SetWalkUpParms(sWalkUpParms* record) {
    return setRecord(&tsEcho::sWalkUpParms, record, CheckWalkUpParms, &tsEcho::bDirtyWalkUp);
}

int zelecho_GetIdleParms(sIdleParms* record) { return getRecord(&tsEcho::sIdleParms, record); }

int zelecho_SetIdleParms(sIdleParms* record) {
    return setRecord(&tsEcho::sIdleParms, record, CheckIdleParms, &tsEcho::bDirtyIdle);
}
