// SPDX-License-Identifier: MIT
// Sets what one configuration of a proximity reader's file changes.
#include "cfgfile/tag_body.h"
#include "cfgfile/tag_file.h"
#include "family/tag/records.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <cstdint>
#include <cstring>

using namespace zel;

namespace {

constexpr std::uint8_t kExtendedForm = 0x24; // first byte of field data that has output formats

const tsTagCfg& live() { return activeConfig(activeRecord()); }

// A record that its call refuses stays as it was.
template <class Record> void apply(Record tsTagCfg::*member, tsTagCfg& file, int (*set)(Record*)) {
    if (std::memcmp(&(live().*member), &(file.*member), sizeof(Record)) != 0)
        set(&(file.*member));
}

void apply(std::uint32_t tsTagCfg::*option, const tsTagCfg& file, int (*set)(short)) {
    if (live().*option != file.*option)
        set(static_cast<short>(file.*option));
}

void applyFieldData(tsTagCfg& file) {
    if (std::memcmp(&live().uSFD, &file.uSFD, sizeof file.uSFD) != 0)
        zeltag_SetSepFldData(&file.uSFD, sizeof file.uSFD);
}

void applyAll(tsTagCfg& file) {
    apply(&tsTagCfg::AZERTYShiftLock, file, SetAZERTYShiftLock);
    apply(&tsTagCfg::ExtendedPrecisionMath, file, SetExtendedPrecisionMath);
    apply(&tsTagCfg::sIDBitCnts, file, SetIDBitCnts);
    apply(&tsTagCfg::sTimeParms, file, SetTimeParms);
    apply(&tsTagCfg::sCfgFlags, file, SetFlags);
    apply(&tsTagCfg::sCfgFlags2, file, SetFlags2);
    apply(&tsTagCfg::sCfgFlags3, file, SetFlags3);
    apply(&tsTagCfg::sIDDispParms, file, SetIDDispParms);
    apply(&tsTagCfg::sIDDispParms2, file, SetIDDispParms2);
    apply(&tsTagCfg::sIDDispParms3, file, SetIDDispParms3);
    apply(&tsTagCfg::sLEDCtrl, file, SetLEDCtrl);
    apply(&tsTagCfg::sBprRlyCtrl, file, SetBprRlyCtrl);
    applyFieldData(file);
}

} // namespace

// A file changes the contents of the field data, never their form.
void cfgfile::keepForm(const tsTagCfg& live, tsTagCfg& file) {
    const std::uint8_t form = live.uSFD.bytes[0];
    if (form != kExtendedForm)
        file.sIDDispParms.iExOutputFormat = 0;
    if (form == 0 || file.uSFD.bytes[0] != form)
        file.uSFD = live.uSFD;
}

int ReadFCfgBody(FILE* file) {
    if (!file)
        return 0;
    tsTagCfg config = live();
    cfgfile::parseBody(file, config);
    if (std::ferror(file) != 0) // what couldn't be read may change what was
        return 1;
    cfgfile::keepForm(live(), config);
    applyAll(config);
    return 1;
}
