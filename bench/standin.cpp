// SPDX-License-Identifier: MIT
// The stand-in's functions, with the names of those that they replace.
#include "bench/standin.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/hidraw.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace zel::bench;

namespace {

constexpr std::string_view kNodes = "/dev/hidraw";
constexpr int kDescriptorSize = 21;

IoctlCount count = {};
unsigned char lastCommand = 0;

using Open = int (*)(const char*, int, ...);

Open findNext(const char* name) { return reinterpret_cast<Open>(dlsym(RTLD_NEXT, name)); }

bool isNode(const char* path) { return std::string_view(path).starts_with(kNodes); }

// Past every other stand-in of the process.
int openNode() {
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, "/dev/null", O_RDWR | O_CLOEXEC));
}

int setFeature(const unsigned char* report, int size) {
    ++count.sends;
    lastCommand = report[1];
    return size;
}

int getFeature(unsigned char* report, int size) {
    ++count.gets;
    if (size != kReportSize) {
        errno = EINVAL;
        return -1;
    }
    report[0] = 0;
    if (lastCommand == kIdCommand)
        std::memcpy(report + 1, kCardId, sizeof kCardId);
    else
        report[1] = lastCommand == kBitCountCommand ? kCardBits : 0;
    return size;
}

int tellInfo(hidraw_devinfo* info) {
    ++count.others;
    *info = {3, 0x5A3E, static_cast<__s16>(0x9D23)};
    return 0;
}

int tellDescriptorSize(int* size) {
    ++count.others;
    *size = kDescriptorSize;
    return 0;
}

int refuse() {
    ++count.others;
    errno = ENOTTY;
    return -1;
}

} // namespace

IoctlCount zel::bench::ioctlCount() { return count; }

extern "C" int ioctl(int, unsigned long request, ...) noexcept {
    std::va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    const int size = static_cast<int>(_IOC_SIZE(request));
    if (_IOC_TYPE(request) != 'H')
        return refuse();
    switch (_IOC_NR(request)) {
    case _IOC_NR(HIDIOCSFEATURE(0)):
        return setFeature(static_cast<unsigned char*>(argument), size);
    case _IOC_NR(HIDIOCGFEATURE(0)):
        return getFeature(static_cast<unsigned char*>(argument), size);
    case _IOC_NR(HIDIOCGRAWINFO):
        return tellInfo(static_cast<hidraw_devinfo*>(argument));
    case _IOC_NR(HIDIOCGRDESCSIZE):
        return tellDescriptorSize(static_cast<int*>(argument));
    }
    return refuse();
}

extern "C" int open(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    static const Open next = findNext("open");
    return isNode(path) ? openNode() : next(path, flags, mode);
}

extern "C" int open64(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    static const Open next = findNext("open64");
    return isNode(path) ? openNode() : next(path, flags, mode);
}

// A pause costs nothing.
extern "C" int usleep(useconds_t) { return 0; }
