// SPDX-License-Identifier: MIT
// Reads and writes the sensor's settings, and lets it return to stored ones.
#include "family/echo/blocks.h"
#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <iterator>
#include <unistd.h>

using namespace zel;
using echo::command;
using echo::Command;
using echo::Payload;

namespace {

constexpr useconds_t kResetPause = 2'000'000; // µs
constexpr int kReceivedBlock = 1;
constexpr int kOldKind = 0x400; // device IDs 0x400 to 0x40F
constexpr int kKindBits = 0xFFF0;
constexpr int kLowNibble = 0x0F;

int fail(std::int64_t bits) {
    activeRecord().lLastErr |= bits;
    return 0;
}

std::uint8_t low(unsigned value) { return static_cast<std::uint8_t>(value); }

std::uint16_t wordOf(int high, int lowByte) {
    return static_cast<std::uint16_t>(high << 8 | lowByte);
}

Payload blockCommand(int block) {
    return {low(static_cast<unsigned>(Command::Block0) + static_cast<unsigned>(block))};
}

// The sensor wants block 1 asked for by a fetch in place of the command.
bool announce(int block) {
    if (block != kReceivedBlock)
        return echo::send(blockCommand(block));
    Payload unused;
    return echo::receive(unused);
}

bool readBlock(tsEcho& settings, int block) {
    Payload bytes;
    if (!announce(block))
        return fail(ZELTAGAPI_ERR_READ) != 0;
    echo::pauseForData();
    if (!echo::receive(bytes))
        return fail(ZELTAGAPI_ERR_READ) != 0;
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
    if (!echo::query(command(Command::Ids), bytes))
        return fail(ZELTAGAPI_ERR_READ) != 0;
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

// Behind the LUID go out what bytes the block before had there.
bool sendLuid(std::uint16_t luid, Payload data) {
    data[0] = 0;
    data[1] = low(luid);
    data[2] = low(luid >> 8U);
    return echo::write(command(Command::Ids), data);
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
    if (!echo::send(command(Command::Commit, low(mask))))
        return false;
    clearDirty(record.Echo);
    if (record.bLUIDDirty == 0)
        return true;
    if (!sendLuid(record.iLUID, data))
        return false;
    record.bLUIDDirty = 0;
    return true;
}

// A command behind which the sensor holds other settings.
bool runDefaults(Command code) {
    activeRecord().lLastErr = 0;
    if (!echo::send(command(code)))
        return fail(ZELTAGAPI_ERR_RESET) != 0;
    usleep(kResetPause);
    return true;
}

int readBehind(Command code) { return runDefaults(code) ? zelecho_ReadCfg() : 0; }

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
    if (!readBehind(Command::Factory))
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
    return readBehind(Command::ResetUser);
}

int zelecho_SaveUserDflts() { return readBehind(Command::SaveUser); }
