// SPDX-License-Identifier: MIT
// Sends what is marked, in the order that the reader wants, and commits it.
#include "family/tag/write_config.h"

#include "base/pause.h"
#include "family/tag/ascii_protocol.h"
#include "family/tag/blocks.h"
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/field_data.h"
#include "family/tag/multi_config.h"
#include "family/tag/read_config.h"
#include "family/tag/services.h"
#include "family/tag/stream.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <span>
#include <unistd.h>

using namespace zel;
using tag::command;
using tag::Opcode;
using tag::Payload;
namespace stream = zel::tag::stream;
using stream::Frame;
using stream::Instruction;

namespace {

constexpr useconds_t kFastPause = 20'000;    // µs
constexpr useconds_t kSlowPause = 1'200'000; // µs

// Bits of the commit's mask.
constexpr std::uint8_t kLuidBit = 0x80;
constexpr std::uint8_t kFieldBit = 0x20;

bool send(const Payload& request, const Payload& data) {
    return tag::write(request, data) == tag::Written::Yes || tag::fail(ZELTAGAPI_ERR_WRITE);
}

// What a stream doesn't take is told by lLastICSWErr alone.
bool send(Frame&& frame, std::span<const std::uint8_t> data) {
    frame.setOutgoing(data);
    return stream::write(frame);
}

// In a report the number stands one byte further along than in the reply.
bool writeLuid(const tsDevDat& record) {
    const Payload data = {0, static_cast<std::uint8_t>(record.iLUID),
                          static_cast<std::uint8_t>(record.iLUID >> 8)};
    if (stream::isActive())
        return send({Instruction::SetLuid, 0, 0, 2}, std::span(data).subspan(1, 2));
    return send(command(Opcode::Luid), data);
}

bool writeBlock(tsTagCfg& config, int block) {
    const Payload data = tag::encodeBlock(config, block);
    if (stream::isActive())
        return send({Instruction::SetBlock, block, 0, tag::kPayloadSize}, data);
    return send(tag::blockCommand(block), data);
}

bool commit(std::uint8_t mask) {
    if (!stream::isActive())
        return tag::send(command(Opcode::Commit, mask)) || tag::fail(ZELTAGAPI_ERR_WRITE);
    Frame frame(Instruction::Commit, mask);
    return stream::command(frame);
}

bool reset() {
    if (!stream::isActive())
        return tag::send(command(Opcode::Factory)) || tag::fail(ZELTAGAPI_ERR_RESET);
    Frame frame(Instruction::Factory);
    return stream::command(frame);
}

// Block 3 comes last: making block 0 can mark it.
bool writeBlocks(tsTagCfg& config, std::uint8_t& mask) {
    std::uint32_t* const dirty[] = {&config.bDirtyIDFrmt1, &config.bDirtyTime,
                                    &config.bDirtyIDFrmt2, &config.bDirtyExt};
    for (int block = 0; block < tag::kBlocks; ++block) {
        if (*dirty[block] == 0)
            continue;
        if (!writeBlock(config, block))
            return false;
        mask = static_cast<std::uint8_t>(mask | 1U << block);
    }
    return true;
}

void writeStore(tsDevDat& record, tsTagCfg& config) {
    tag::writeFieldData(record, config);
    if (tag::hasFeature(config, tag::kExtendedFeatures))
        tag::writeKeys(config);
}

int writeSelected(int index) {
    SetActConfig(static_cast<short>(index));
    SendSetTagPlus();
    return zeltag_WriteCfgOneConfig();
}

} // namespace

int WrtIDFrmtParms2(tsTagCfg* config) { return writeBlock(*config, 2) ? 1 : 0; }

// A store whose header claims more than the record holds stops the write before its commit.
int zeltag_write_cfg() {
    tsDevDat& record = activeRecord();
    tsTagCfg& config = activeConfig(record);
    if (tag::usesAscii())
        return AcpWriteCfg();
    tag::clearError();
    std::uint8_t mask = 0;
    if (record.bLUIDDirty != 0) {
        if (!writeLuid(record))
            return 0;
        mask |= kLuidBit;
    }
    if (!writeBlocks(config, mask) || (record.bSepFldOK != 0 && !tag::pagesFit(config.uSFD)))
        return 0;
    if (config.bDirtySepFld != 0) {
        writeStore(record, config);
        mask |= kFieldBit;
    }
    SendSetTagPlus();
    if (!commit(mask))
        return 0;
    tag::clearDirty(record, config);
    return 1;
}

// The pause follows a failed write too.
int zeltag_WriteCfgOneConfig() {
    const int result = zeltag_write_cfg();
    pauseFor(IsFastWriteReader() ? kFastPause : kSlowPause);
    return result;
}

int zeltag_WriteCfg() {
    if (GetMaxConfig() == 0)
        return zeltag_WriteCfgOneConfig();
    const int active = activeRecord().iActConfig;
    int result = 1;
    for (int index = GetMaxConfig(); index >= 0; --index) {
        result &= zeltag_SendSelectActConfig(index);
        if (result != 0)
            result &= writeSelected(index);
    }
    zeltag_SendSelectActConfig(active);
    return result;
}

int zeltag_ResetFactoryDflts() {
    tag::clearError();
    if (tag::usesAscii())
        return tag::resetByAscii();
    if (!reset())
        return 0;
    pauseFor(kSlowPause);
    return zeltag_ReadCfg();
}
