// SPDX-License-Identifier: MIT
// The kernel's side of a hidraw node, as far as feature reports need it.
#include "tests/hidraw/mock_reader.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <linux/hidraw.h>
#include <linux/ioctl.h>

namespace zel::test {

namespace {

constexpr std::uint8_t kJunk = 0xEE; // behind a short answer

std::string line(const char* name, std::span<const std::uint8_t> bytes) {
    std::string text = name;
    for (const std::uint8_t byte : bytes) {
        char hex[4];
        std::snprintf(hex, sizeof hex, " %02X", byte);
        text += hex;
    }
    return text + '\n';
}

} // namespace

MockReader::MockReader(const Behaviour& behaviour) : behaviour_(behaviour) {
    model_.present(sim::cardOf(0x8877665544332211, 64));
}

void MockReader::behave(const Behaviour& behaviour) {
    const std::lock_guard lock(mutex_);
    behaviour_ = behaviour;
}

std::string MockReader::trace() const {
    const std::lock_guard lock(mutex_);
    return trace_;
}

int MockReader::serve(unsigned long request, std::span<std::uint8_t> data) {
    const std::lock_guard lock(mutex_);
    if (_IOC_TYPE(request) != 'H')
        return -ENOTTY;
    switch (_IOC_NR(request)) {
    case _IOC_NR(HIDIOCGRAWINFO):
        return tellIdentity(data);
    case _IOC_NR(HIDIOCSFEATURE(0)):
        return set(data);
    case _IOC_NR(HIDIOCGFEATURE(0)):
        return get(data);
    default:
        return -ENOTTY;
    }
}

int MockReader::tellIdentity(std::span<std::uint8_t> data) {
    trace_ += "info\n";
    if (behaviour_.infoError != 0)
        return -behaviour_.infoError;
    hidraw_devinfo info = {};
    info.bustype = 3; // USB
    info.vendor = static_cast<std::int16_t>(behaviour_.identity.vendor);
    info.product = static_cast<std::int16_t>(behaviour_.identity.product);
    std::memcpy(data.data(), &info, std::min(data.size(), sizeof info));
    return 0;
}

int MockReader::set(std::span<const std::uint8_t> report) {
    trace_ += line("set", report);
    if (isGone())
        return -ENODEV;
    if (behaviour_.setError != 0)
        return -behaviour_.setError;
    return model_.take(report[0], report.subspan(1)) ? static_cast<int>(report.size()) : -EPIPE;
}

int MockReader::get(std::span<std::uint8_t> report) {
    trace_ += line("get", report);
    if (isGone())
        return -ENODEV;
    if (behaviour_.getError != 0)
        return -behaviour_.getError;
    if (!model_.answer(report[0], report.subspan(1)))
        return -EPIPE;
    const std::size_t size = std::min(behaviour_.answerSize, report.size());
    std::fill(report.begin() + static_cast<std::ptrdiff_t>(size), report.end(), kJunk);
    return static_cast<int>(size);
}

bool MockReader::isGone() { return behaviour_.reportsUntilGone-- <= 0; }

} // namespace zel::test
