// SPDX-License-Identifier: MIT
// Opens /dev/uhid.
#include "sim/uhid/kernel.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace zel::sim {

namespace {

Trouble notOpened(const std::string& node, int error) {
    const std::string message = node + ": " + std::strerror(error);
    switch (error) {
    case ENOENT:
    case ENODEV:
        return {Exit::NoDevice, message,
                "load it with `modprobe uhid` as root, where the kernel has it"};
    case EACCES:
    case EPERM:
        return {Exit::NoPermission, message,
                "run as root, or let your user write " + node + " by a udev rule"};
    default:
        return {Exit::Failed, message, "leave --uhid out, and preload libzelsim.so instead"};
    }
}

} // namespace

std::variant<Descriptor, Trouble> openUhid(const char* node) {
    Descriptor kernel(open(node, O_RDWR | O_CLOEXEC));
    if (!kernel.isOpen())
        return notOpened(node, errno);
    return kernel;
}

} // namespace zel::sim
