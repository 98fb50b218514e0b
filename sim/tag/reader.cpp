// SPDX-License-Identifier: MIT
// The reports of the simulated proximity reader: when they may come, which ones are a write's data,
// and which ones are its boot loader's.
#include "sim/tag/reader.h"

#include "sim/tag/commands.h"

#include <algorithm>

namespace zel::sim {

namespace {

// A host asks for the volume right behind a commit, to learn how long it must wait.
bool isAllowedWhileBusy(const TagBlock& command) {
    return command[0] == opcode::kService && command[1] == service::kVolume;
}

void copyTo(std::span<std::uint8_t> out, const TagBlock& bytes) {
    std::copy_n(bytes.begin(), std::min(bytes.size(), out.size()), out.begin());
}

} // namespace

void TagReader::powerUp() {
    model_.powerUp();
    boot_.powerUp();
    awaitedData_.expect(false);
}

std::string TagReader::nameOf(std::span<const std::uint8_t> payload) const {
    if (std::string frame = boot_.nameOf(payload); !frame.empty())
        return frame;
    if (awaitedData_.isIn(payload))
        return tagCommandName(model_.command()) + " data";
    const std::string blob = blobStore().nameOf(payload);
    return blob.empty() ? tagCommandName(payload) : blob;
}

// A block write is its command, then its data with no fetch in between.
bool TagReader::take(std::uint8_t reportId, std::span<const std::uint8_t> payload) {
    Block report;
    if (reportId != 0 || payload.size() != report.size() || !boot_.hasPower())
        return false;
    std::copy(payload.begin(), payload.end(), report.begin());
    if (boot_.isRunning())
        return takeInBootLoader(report);
    const bool takesData = awaitedData_.isIn(payload);
    if (!takesData && blobStore().faultOf(payload) == BlobFault::Refused)
        return false;
    awaitedData_.expect(!takesData && opcode::isWritable(report[0]));
    if (takesData) {
        model_.write(model_.command(), report);
        return true;
    }
    if (!isAllowedWhileBusy(report))
        violations_.check(tagCommandName(report), model_.remainingWork());
    carryOut(report);
    return true;
}

void TagReader::carryOut(const Block& command) {
    model_.run(command);
    if (command[0] == opcode::kEnterBootLoader)
        boot_.enter(command[1]);
}

// All but the frames of a line and a new start means nothing to a boot loader.
bool TagReader::takeInBootLoader(const Block& report) {
    violations_.check(nameOf(report), boot_.tooEarly());
    if (report[0] == opcode::kEnterBootLoader)
        boot_.enter(report[1]);
    else
        boot_.take(report);
    return true;
}

bool TagReader::answer(std::uint8_t reportId, std::span<std::uint8_t> out) {
    awaitedData_.expect(false);
    if (reportId != 0 || !boot_.hasPower())
        return false;
    if (boot_.isRunning())
        return answerFromBootLoader(out);
    const BlobFault fault = blobStore().faultOf(model_.command());
    if (fault == BlobFault::NoAnswer)
        return false;
    Block bytes = reply();
    if (fault == BlobFault::WrongEcho)
        bytes[3] ^= 0x01;
    copyTo(out, bytes);
    return true;
}

bool TagReader::answerFromBootLoader(std::span<std::uint8_t> out) {
    violations_.check("poll", boot_.tooEarly());
    Block bytes = {};
    if (!boot_.answer(bytes))
        return false;
    copyTo(out, bytes);
    return true;
}

TagReader::Block TagReader::reply() {
    const Block* const fixed = fixedReplies_.find(model_.command());
    return fixed ? *fixed : model_.reply();
}

TagReader::Block TagReader::run(const Block& command) {
    carryOut(command);
    return reply();
}

} // namespace zel::sim
