// SPDX-License-Identifier: MIT
// Reads and writes the sensor's settings, and lets it return to stored ones.
#include "base/bytes.h"
#include "base/pause.h"
#include "family/echo/blocks.h"
#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <unistd.h>

using namespace zel;
using echo::command;
using echo::Opcode;
using echo::Payload;

namespace {

constexpr useconds_t kResetPause = 2'000'000; // µs
constexpr int kFetchedBlock = 1;
constexpr int kOldKind = 0x400; // device IDs 0x400 to 0x40F
constexpr int kKindBits = 0xFFF0;
constexpr int kLowNibble = 0x0F;

bool fail(std::int64_t bits) {
    activeRecord().lLastErr |= bits;
    return false;
}

Payload blockCommand(int block) { return {lowByte(static_cast<int>(Opcode::Block0) + block)}; }

// The sensor wants block 1 asked for by a fetch in place of the command.
bool announce(int block) {
    if (block != kFetchedBlock)
        return echo::send(blockCommand(block));
    Payload unused;
    return echo::fetch(unused);
}

bool readBlock(tsEcho& settings, int block) {
    Payload bytes;
    if (!announce(block))
        return fail(ZELTAGAPI_ERR_READ);
    echo::pauseForData();
    if (!echo::fetch(bytes))
        return fail(ZELTAGAPI_ERR_READ);
    echo::decodeBlock(settings, block, bytes);
    return true;
}

// The words as they came, before any repair.
void keepRaw(const tsEcho& settings, int block) {
    switch (block) {
    case 0:
        gsSonarParms2 = settings.sSonarParms;
        break;
    case 2:
        gsWalkAwayParms2 = settings.sWalkAwayParms;
        break;
    case 4:
        gsWalkUpParms2 = settings.sWalkUpParms;
        break;
    case 5:
        gsIdleParms2 = settings.sIdleParms;
        break;
    default:
        break;
    }
}

bool readBlocks(tsEcho& settings) {
    for (int block = 0; block < echo::kBlocks; ++block) {
        if (!readBlock(settings, block))
            return false;
        keepRaw(settings, block);
    }
    return true;
}

void clearDirty(tsEcho& settings) {
    settings.bDirtySonar = settings.bDirtyWalkAway = 0;
    settings.bDirtyWalkUp = settings.bDirtyIdle = 0;
}

// Words that the sensor holds out of range are repaired in the records.
void settle(tsEcho& settings) {
    CheckSonarParms(&settings.sSonarParms, 1);
    CheckWalkAwayParms(&settings.sWalkAwayParms, 1);
    CheckWalkUpParms(&settings.sWalkUpParms, 1);
    CheckIdleParms(&settings.sIdleParms, 1);
    settings.bEchoCfgValid = 1;
    clearDirty(settings);
}

bool readIds(tsDevDat& record) {
    Payload bytes;
    if (!echo::query(command(Opcode::Ids), bytes))
        return fail(ZELTAGAPI_ERR_READ);
    record.iLUID = wordOf(bytes[1], bytes[0]);
    record.iDID = wordOf(bytes[3], bytes[2]);
    record.iFWVer = 0;
    for (std::size_t nibble = 4; nibble < bytes.size(); ++nibble)
        record.iFWVer =
            static_cast<std::uint16_t>(record.iFWVer << 4 | (bytes[nibble] & kLowNibble));
    record.bLUIDDirty = 0;
    return true;
}

bool isDirty(const tsEcho& settings, int block) {
    const std::uint32_t marks[echo::kBlocks] = {settings.bDirtySonar,    settings.bDirtyWalkAway,
                                                settings.bDirtyWalkAway, settings.bDirtyWalkUp,
                                                settings.bDirtyWalkUp,   settings.bDirtyIdle};
    return marks[block] != 0;
}

// Behind the LUID stand the bytes of the block that went out last.
bool sendLuid(std::uint16_t luid, Payload data) {
    data[0] = 0;
    data[1] = lowByte(luid);
    data[2] = lowByte(luid >> 8U);
    return echo::write(command(Opcode::Ids), data);
}

// Whether all went out.
bool writeAll(tsDevDat& record) {
    Payload data = {};
    unsigned mask = 0;
    for (int block = 0; block < echo::kBlocks; ++block) {
        if (!isDirty(record.Echo, block))
            continue;
        data = echo::encodeBlock(record.Echo, block);
        if (!echo::write(blockCommand(block), data))
            return false;
        mask |= 1U << block;
    }
    if (!echo::send(command(Opcode::Commit, lowByte(mask))))
        return false;
    clearDirty(record.Echo);
    if (record.bLUIDDirty == 0)
        return true;
    if (!sendLuid(record.iLUID, data))
        return false;
    record.bLUIDDirty = 0;
    return true;
}

// Runs a command behind which the sensor holds other settings, and reads those.
int runAndRead(Opcode opcode) {
    activeRecord().lLastErr = 0;
    if (!echo::send(command(opcode)))
        return fail(ZELTAGAPI_ERR_RESET);
    pauseFor(kResetPause);
    return zelecho_ReadCfg();
}

} // namespace

int zelecho_ReadCfg() {
    tsDevDat& record = activeRecord();
    record.lLastErr = 0;
    if (!readBlocks(record.Echo))
        return 0;
    settle(record.Echo);
    return readIds(record) ? 1 : 0;
}

// The commit goes out even when nothing was written.
int zelecho_WriteCfg() {
    tsDevDat& record = activeRecord();
    record.lLastErr = 0;
    return writeAll(record) ? 1 : fail(ZELTAGAPI_ERR_WRITE);
}

// The older kind comes out of the reset with flags of its own, which are cleared.
int zelecho_ResetFactoryDflts() {
    tsDevDat& record = activeRecord();
    record.Echo.bEchoHalt = 1;
    if (!runAndRead(Opcode::Factory))
        return 0;
    if ((GetDID() & kKindBits) != kOldKind)
        return 1;
    record.Echo.sIdleParms.FlagsI = 0;
    record.Echo.bDirtyIdle = 1;
    WriteCfg();
    return zelecho_ReadCfg();
}

int zelecho_ResetUserDflts() {
    activeRecord().Echo.bEchoHalt = 1;
    return runAndRead(Opcode::ResetUser);
}

int zelecho_SaveUserDflts() { return runAndRead(Opcode::SaveUser); }
