// SPDX-License-Identifier: MIT
// Fills the records of a configuration from the reader.
#include "family/tag/read_config.h"

#include "base/bytes.h"
#include "base/text.h"
#include "family/tag/ascii_protocol.h"
#include "family/tag/blocks.h"
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/field_data.h"
#include "family/tag/multi_config.h"
#include "family/tag/services.h"
#include "family/tag/stream.h"
#include "family/tag/validators.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <span>

using namespace zel;
using tag::Payload;
namespace stream = zel::tag::stream;

namespace {

constexpr std::int64_t kNoSerialNumber = 65535; // what a proximity reader's record shows

// One reply of eight bytes by either form; a stream's frame may deliver fewer.
bool ask(const Payload& request, stream::Frame&& frame, Payload& reply) {
    if (!stream::isActive())
        return tag::query(request, reply);
    const bool answers = stream::read(frame);
    reply = frame.payload();
    return answers;
}

bool readIds(tsDevDat& record) {
    Payload reply;
    if (!ask(tag::command(tag::Opcode::Luid), {stream::Instruction::Presence, 0, 0, 4}, reply))
        return tag::fail(ZELTAGAPI_ERR_READ);
    record.iLUID = wordOf(reply[1], reply[0]);
    record.iDID = wordOf(reply[3], reply[2]);
    record.lSN = kNoSerialNumber;
    return true;
}

// A block that a stream doesn't deliver is told by lLastICSWErr alone.
bool blockFailed() { return !stream::isActive() && tag::fail(ZELTAGAPI_ERR_READ); }

bool readBlocks(tsTagCfg& config) {
    for (int block = 0; block < tag::kBlocks; ++block) {
        Payload reply;
        if (!ask(tag::blockCommand(block),
                 {stream::Instruction::Block, block, 0, tag::kPayloadSize}, reply))
            return blockFailed();
        tag::decodeBlock(config, block, reply, stream::isActive());
    }
    return true;
}

void keepText(std::span<char> kept, const char* text) { copyText(kept, text ? text : ""); }

// A reader without these texts is read all the same.
void readTexts(tsDevDat& record) {
    keepText(record.szFWFile, zeltag_GetFWFilename());
    keepText(record.szFullFWVer, zeltag_GetFullFWVersion());
    if (record.bPartNumOK == 0)
        return;
    if (const char* const part = zeltag_getPartNumberString())
        keepText(record.szPartNum, part);
    else
        record.bPartNumOK = 0;
}

// Words that the reader holds out of range are repaired in the record.
void repair(tsTagCfg& config) {
    CheckUserFlags(&config.sCfgFlags, 1);
    CheckUserIDBitCnts(&config.sIDBitCnts, 1);
    CheckUserDispParms(&config.sIDDispParms, 1);
    CheckUserTimeParms(&config.sTimeParms, 1);
    CheckUserFlags2(&config.sCfgFlags2, 1);
    CheckUserDispParms2(&config.sIDDispParms2, 1);
    CheckUserDispParms3(&config.sIDDispParms3, 1);
    CheckUserSFD(&config.uSFD, 1);
}

// One pass of zeltag_ReadCfg(). The select goes out also after a failure.
int readOne(int index, int result) {
    zeltag_SendSelectActConfig(index);
    if (result == 0)
        return 0;
    SetActConfig(static_cast<short>(index));
    SendGetTagPlus();
    return zeltag_ReadCfgOneConfig();
}

int readAll(tsDevDat& record) {
    const int active = record.iActConfig;
    int result = 1;
    for (int index = GetMaxConfig(); index >= 0; --index)
        result = readOne(index, result);
    zeltag_SendSelectActConfig(active);
    return result;
}

} // namespace

int zeltag_ReadCfgOneConfig() {
    if (tag::usesAscii())
        return AcpReadCfg();
    tsDevDat& record = activeRecord();
    tsTagCfg& config = activeConfig(record);
    tag::clearError();
    if (!readIds(record) || !readBlocks(config) || !tag::readFieldData(record, config))
        return 0;
    enhanceSecurityFlagCurrFWState = GetEnhanceSecurityFlag() != 0;
    readTexts(record);
    repair(config);
    config.bCfgValid = 1;
    tag::clearDirty(record, config);
    return 1;
}

int zeltag_ReadCfg() {
    tsDevDat& record = activeRecord();
    const int result =
        record.iTagPlusState == tag::kProbeFailed ? zeltag_ReadCfgOneConfig() : readAll(record);
    if (record.iTagPlusState == tag::kMultiConfig)
        zeltag_GetCardTypeListFromDevice();
    return result;
}
