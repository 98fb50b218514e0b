// SPDX-License-Identifier: MIT
// Reads and writes the whole configuration, command by command.
#include "family/band/config.h"

#include "base/bytes.h"
#include "base/pause.h"
#include "family/band/band.h"
#include "family/band/frame.h"
#include "frame/state/state.h"
#include "frame/zelTagErrors.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <unistd.h>

using namespace zel;
using band::Bytes;
using band::Command;
using band::Frame;

namespace {

constexpr useconds_t kFlashPause = 1'100'000; // µs, behind what writes the reader's flash
constexpr std::size_t kPartNumberAt = 3;
constexpr std::size_t kHalf = 8; // of the key bytes
constexpr int kTimeUnit = 4;     // ms

// Bits of the first byte of a user field's halves and of its control bytes.
constexpr int kEnableBit = 0x80;
constexpr int kSkipBit = 0x40;
constexpr int kKeyCountBits = 0x3F;
constexpr int kIgnoreLrcBit = 0x80;
constexpr int kShowLrcBit = 0x40;
constexpr int kShowSeparatorBit = 0x20;
constexpr int kTrackBits = 3;

// Bits of the first system byte.
constexpr int kHaltBit = 0x80;
constexpr int kKeypadBit = 0x40;
constexpr int kTracksBits = 7;

constexpr int kColourBits = 3;

bool fail(std::int64_t error) {
    activeRecord().lLastErr = error;
    return false;
}

std::uint8_t flag(int byte, int bit) { return (byte & bit) != 0 ? 1 : 0; }

// The letter of a user field: "a" for the first one.
std::string_view letterOf(std::size_t field) {
    static constexpr std::string_view kLetters = "abcdefghijk";
    return kLetters.substr(field, 1);
}

Command fieldCommand(char kind, std::size_t field, char part) {
    return Command(std::string_view(&kind, 1)).add(letterOf(field)).add(std::string_view(&part, 1));
}

// The first carriage return ends the number for the reader; here it becomes a blank.
void takePartNumber(tsDevDat& record, const Frame& reply) {
    std::memset(record.szPartNum, 0, sizeof record.szPartNum);
    std::copy(reply.begin() + kPartNumberAt, reply.end(), record.szPartNum);
    if (char* const end = std::strchr(record.szPartNum, '\r'))
        *end = ' ';
}

void readVersion(tsDevDat& record) {
    Bytes bytes;
    if (!band::ask(Command("QSV"), bytes))
        return;
    record.iDID = wordOf(bytes[0], bytes[1]);
    record.iFWVer = wordOf(bytes[2], bytes[3]);
}

bool readFirstHalf(BandUserField& field, std::size_t number) {
    Bytes bytes;
    if (!band::ask(fieldCommand('G', number, '0'), bytes))
        return fail(ZELTAGAPI_ERR_FIELD);
    field.Enable = flag(bytes[0], kEnableBit);
    field.Skip = flag(bytes[0], kSkipBit);
    field.nKeys = bytes[0] & kKeyCountBits;
    std::copy_n(&bytes[1], kHalf, field.Keybyte);
    return true;
}

bool readSecondHalf(BandUserField& field, std::size_t number) {
    Bytes bytes;
    if (!band::ask(fieldCommand('G', number, '1'), bytes))
        return fail(ZELTAGAPI_ERR_FIELD);
    std::copy_n(bytes.begin(), kHalf, field.Keybyte + kHalf);
    return true;
}

// Fails without an error word.
bool readControl(BandUserField& field, std::size_t number) {
    Bytes bytes;
    if (!band::ask(fieldCommand('G', number, 'C'), bytes))
        return false;
    field.IgnoreLRC = flag(bytes[0], kIgnoreLrcBit);
    field.ShowLRC = flag(bytes[0], kShowLrcBit);
    field.ShowSepSen = flag(bytes[0], kShowSeparatorBit);
    field.Track = bytes[0] & kTrackBits;
    field.Field = bytes[1];
    field.ByteOffset = bytes[2];
    field.Length = bytes[3];
    field.Termination = bytes[4];
    return true;
}

bool readFields(tsBand& settings) {
    for (std::size_t number = 0; number < std::size(settings.UserField); ++number) {
        BandUserField& field = settings.UserField[number];
        if (!readFirstHalf(field, number) || !readSecondHalf(field, number) ||
            !readControl(field, number))
            return false;
    }
    return true;
}

// A reader without them keeps what was known.
void readSystem(tsDevDat& record) {
    Bytes bytes;
    if (!band::ask(Command("GS0"), bytes))
        return;
    tsBand& settings = record.Band;
    settings.HaltKBSend = flag(bytes[0], kHaltBit);
    settings.UseNumKP = flag(bytes[0], kKeypadBit);
    settings.TrackEnables = bytes[0] & kTracksBits;
    settings.KeyPressTime = static_cast<std::uint16_t>(bytes[1] * kTimeUnit);
    settings.KeyReleaseTime = static_cast<std::uint16_t>(bytes[2] * kTimeUnit);
    settings.iBandLUID = wordOf(bytes[4], bytes[3]);
    record.iLUID = settings.iBandLUID;
    settings.Beeper = bytes[5];
}

// The first byte has the colours of LED 1, topmost, to 4; the second one that of LED 0.
constexpr int kLedsOfByte = 4;

int colourShift(int led) { return (kLedsOfByte - led) * 2; }

bool readLeds(tsBand& settings) {
    Bytes bytes;
    if (!band::ask(Command("GL0"), bytes))
        return false;
    for (int led = 1; led <= kLedsOfByte; ++led)
        settings.LedColor[led] = bytes[0] >> colourShift(led) & kColourBits;
    settings.LedColor[0] = bytes[1] & kColourBits;
    return true;
}

// Keys from a place of the field's array on, as digits.
Command& addKeys(Command& command, const BandUserField& field, std::size_t first) {
    for (std::size_t key = first; key < first + kHalf; ++key)
        command.hex(field.Keybyte[key]);
    return command;
}

bool writeFirstHalf(const BandUserField& field, std::size_t number) {
    Frame reply;
    Command command = fieldCommand('S', number, '0');
    command.hex((field.nKeys & kKeyCountBits) | (field.Enable != 0 ? kEnableBit : 0) |
                (field.Skip != 0 ? kSkipBit : 0));
    return band::send(addKeys(command, field, 0).add("00"), reply) || fail(ZELTAGAPI_ERR_FIELD);
}

bool writeSecondHalf(const BandUserField& field, std::size_t number) {
    Frame reply;
    Command command = fieldCommand('S', number, '1');
    return band::send(addKeys(command, field, kHalf).add("0000"), reply) ||
           fail(ZELTAGAPI_ERR_FIELD);
}

// Whether the reader takes them isn't looked at.
void writeControl(const BandUserField& field, std::size_t number) {
    Frame reply;
    Command command = fieldCommand('S', number, 'C');
    command.hex((field.Track & kTrackBits) | (field.ShowSepSen != 0 ? kShowSeparatorBit : 0) |
                (field.ShowLRC != 0 ? kShowLrcBit : 0) |
                (field.IgnoreLRC != 0 ? kIgnoreLrcBit : 0));
    command.hex(field.Field).hex(field.ByteOffset).hex(field.Length).hex(field.Termination);
    band::send(command, reply);
}

bool writeFields(const tsBand& settings) {
    for (std::size_t number = 0; number < std::size(settings.UserField); ++number) {
        const BandUserField& field = settings.UserField[number];
        if (!writeFirstHalf(field, number) || !writeSecondHalf(field, number))
            return false;
        writeControl(field, number);
    }
    return true;
}

void writeSystem(const tsBand& settings) {
    Frame reply;
    Command command("SS0");
    command.hex((settings.HaltKBSend != 0 ? kHaltBit : 0) |
                (settings.UseNumKP != 0 ? kKeypadBit : 0) | (settings.TrackEnables & kTracksBits));
    command.hex(settings.KeyPressTime / kTimeUnit).hex(settings.KeyReleaseTime / kTimeUnit);
    command.hex(settings.iBandLUID).hex(settings.iBandLUID >> 8).hex(settings.Beeper);
    band::send(command, reply);
}

} // namespace

bool zel::band::sendLeds(const tsBand& settings) {
    int colours = 0;
    for (int led = 1; led <= kLedsOfByte; ++led)
        colours |= (settings.LedColor[led] & kColourBits) << colourShift(led);
    Frame reply;
    return send(Command("SL0").hex(colours).hex(settings.LedColor[0] & kColourBits), reply);
}

int zelband_ReadCfg() {
    tsDevDat& record = activeRecord();
    record.lLastErr = 0;
    Frame reply;
    if (!band::askPartNumber(reply))
        return fail(ZELTAGAPI_ERR_READ);
    takePartNumber(record, reply);
    readVersion(record);
    if (!readFields(record.Band))
        return 0;
    readSystem(record);
    if (!readLeds(record.Band))
        return 0;
    record.Band.bBandCfgDirty = 0;
    return 1;
}

int zelband_WriteCfg() {
    if (iActDev < 0 || iActDev > kMaxDevices)
        return 0;
    tsDevDat& record = activeRecord();
    record.lLastErr = 0;
    record.Band.iBandLUID = record.iLUID;
    Frame reply;
    if (!band::send(Command("FR"), reply) || !writeFields(record.Band))
        return 0;
    writeSystem(record.Band);
    if (!band::sendLeds(record.Band))
        return 0;
    const bool isWritten = band::send(Command("FW"), reply);
    pauseFor(kFlashPause);
    return isWritten ? 1 : 0;
}

int zelband_ResetFactoryDflts() {
    Frame reply;
    if (!band::send(Command("FD"), reply))
        return fail(ZELTAGAPI_ERR_RESET);
    pauseFor(kFlashPause);
    return zelband_ReadCfg();
}
