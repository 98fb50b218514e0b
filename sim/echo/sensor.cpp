// SPDX-License-Identifier: MIT
// The simulated presence sensor's commands.
#include "sim/echo/sensor.h"

#include <algorithm>
#include <cmath>

namespace zel::sim {

namespace {

constexpr std::uint8_t kBlock0 = 0x80;
constexpr std::uint8_t kAnnounced = 0x81;
constexpr std::uint8_t kIds = 0x8A;
constexpr std::uint8_t kRange = 0x8F;
constexpr std::uint8_t kCommit = 0x90;
constexpr std::uint8_t kFactory = 0xA0;
constexpr std::uint8_t kGo = 0xB0;
constexpr std::uint8_t kHalt = 0xB1;
constexpr std::uint8_t kResetUser = 0xD0;
constexpr std::uint8_t kSaveUser = 0xE0;

// Microseconds.
constexpr std::uint64_t kDataPause = 250'000;
constexpr std::uint64_t kResetWork = 2'000'000;
constexpr std::uint64_t kMillisecond = 1'000;

constexpr double kUnitsPerInch = 3.472222;
constexpr std::size_t kCycles = 2; // byte of block 0 that can't be written
constexpr std::size_t kNearest = 3;
constexpr std::size_t kFarthest = 4;

bool isBlock(std::uint8_t code) { return code >= kBlock0 && code <= 0x85; }
bool isWritable(std::uint8_t code) { return isBlock(code) || code == kIds; }
bool hasReply(std::uint8_t code) { return isWritable(code) || code == kRange; }

std::uint8_t byteOf(unsigned value) { return static_cast<std::uint8_t>(value); }

std::uint8_t unitsOf(int inches) {
    return static_cast<std::uint8_t>(std::min(std::floor(inches * kUnitsPerInch + 0.5), 255.0));
}

// A digit of the version; the upper half of its byte says nothing.
std::uint8_t digitOf(unsigned version, unsigned place) {
    return byteOf('0' | (version >> 4 * place & 0x0F));
}

constexpr std::pair<std::uint8_t, const char*> kNames[] = {
    {kIds, "identity"},
    {kRange, "range"},
    {kCommit, "commit"},
    {kFactory, "factory defaults"},
    {kGo, "send keys"},
    {kHalt, "send no keys"},
    {kResetUser, "user defaults"},
    {kSaveUser, "save user defaults"},
};

std::string nameOfCommand(std::uint8_t code) {
    if (isBlock(code))
        return "block " + std::to_string(code - kBlock0);
    for (const auto& [known, name] : kNames)
        if (known == code)
            return name;
    return {};
}

} // namespace

EchoSensor::EchoSensor(Options options)
    : options_(options), current_(options_.factory), stored_(current_), user_(current_),
      luid_(options_.luid) {}

void EchoSensor::follow(std::vector<EchoPlace> script) {
    script_ = std::move(script);
    scriptBegan_ = microseconds();
}

void EchoSensor::powerUp() {
    current_ = stored_;
    isHalted_ = false;
    awaitsFetch_ = false;
    awaitedData_.expect(false);
    transfer_ = {};
    reset_ = {};
}

std::string EchoSensor::nameOf(std::span<const std::uint8_t> payload) const {
    if (awaitedData_.isIn(payload))
        return nameOfCommand(command_[0]) + " data";
    return payload.empty() ? std::string() : nameOfCommand(payload[0]);
}

bool EchoSensor::take(std::uint8_t reportId, std::span<const std::uint8_t> payload) {
    if (reportId != 0 || payload.size() != command_.size())
        return false;
    Block report;
    std::copy(payload.begin(), payload.end(), report.begin());
    const bool takesData = awaitedData_.isIn(payload);
    awaitedData_.expect(!takesData && isWritable(report[0]));
    if (takesData) {
        writeData(report);
        return true;
    }
    violations_.check(nameOfCommand(report[0]), reset_.remaining());
    begin(report);
    runCommand();
    return true;
}

void EchoSensor::begin(const Block& command) {
    command_ = command;
    awaitsFetch_ = hasReply(command[0]);
    transfer_ = {};
    if (awaitsFetch_)
        transfer_.hold(kDataPause);
}

// A fetch that no command stands before isn't answered by data: it announces that of block 1.
bool EchoSensor::answer(std::uint8_t reportId, std::span<std::uint8_t> out) {
    awaitedData_.expect(false);
    if (reportId != 0)
        return false;
    Block bytes = {kAnnounced};
    if (awaitsFetch_) {
        violations_.check(nameOfCommand(command_[0]) + " reply", transfer_.remaining());
        bytes = reply();
        awaitsFetch_ = false;
    } else {
        violations_.check("announcement", reset_.remaining());
        begin(bytes);
    }
    std::copy_n(bytes.begin(), std::min(bytes.size(), out.size()), out.begin());
    return true;
}

void EchoSensor::runCommand() {
    switch (command_[0]) {
    case kCommit:
        return commit(command_[1]);
    case kGo:
    case kHalt:
        isHalted_ = command_[0] == kHalt;
        return;
    case kFactory:
        return makeCurrent(options_.factory);
    case kResetUser:
        return makeCurrent(user_);
    case kSaveUser:
        user_ = current_;
        return reset_.hold(kResetWork);
    default:
        return;
    }
}

// The mask names the blocks that are kept, block 0 in bit 0.
void EchoSensor::commit(std::uint8_t mask) {
    for (std::size_t block = 0; block < stored_.size(); ++block)
        if ((mask >> block & 1) != 0)
            stored_[block] = current_[block];
}

void EchoSensor::makeCurrent(const EchoSettings& settings) {
    current_ = stored_ = settings;
    reset_.hold(kResetWork);
}

// The LUID stands one byte further along than in the reply, and is kept at once.
void EchoSensor::writeData(const Block& data) {
    violations_.check(nameOfCommand(command_[0]) + " data", transfer_.remaining());
    awaitsFetch_ = false;
    if (command_[0] == kIds) {
        luid_ = static_cast<std::uint16_t>(data[1] | data[2] << 8);
        return;
    }
    const std::uint8_t cycles = current_[0][kCycles];
    current_[command_[0] - kBlock0] = data;
    current_[0][kCycles] = cycles;
}

EchoSensor::Block EchoSensor::reply() const {
    if (const Block* const fixed = fixedReplies_.find(command_))
        return *fixed;
    if (isBlock(command_[0]))
        return current_[command_[0] - kBlock0];
    return command_[0] == kIds ? ids() : range();
}

EchoSensor::Block EchoSensor::ids() const {
    const unsigned version = options_.firmwareVersion;
    return {byteOf(luid_),
            byteOf(luid_ >> 8U),
            byteOf(options_.deviceId),
            byteOf(options_.deviceId >> 8U),
            digitOf(version, 3),
            digitOf(version, 2),
            digitOf(version, 1),
            digitOf(version, 0)};
}

EchoSensor::Block EchoSensor::range() const {
    const std::uint8_t distance = unitsOf(inches());
    const bool isWithin =
        distance != 0 && distance >= current_[0][kNearest] && distance <= current_[0][kFarthest];
    return {byteOf((status_ & ~1U) | (isWithin ? 1U : 0U)), distance};
}

int EchoSensor::inches() const {
    const std::uint64_t now = (microseconds() - scriptBegan_) / kMillisecond;
    int inches = 0;
    for (const EchoPlace& place : script_)
        if (place.fromMilliseconds <= now)
            inches = place.inches;
    return inches;
}

} // namespace zel::sim
