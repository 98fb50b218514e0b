// SPDX-License-Identifier: MIT
// USB HID on Linux: the kernel's hidraw nodes, without a library in between.
//
// A node's identity is read from sysfs before the open and asked of the open node again: the number
// N of hidrawN may have passed to another device in between.
#include "base/wipe.h"
#include "transport/hidraw_node.h"
#include "transport/usb_platform.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <linux/hidraw.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

using namespace zel;

namespace {

constexpr char kClassFolder[] = "/sys/class/hidraw";
constexpr std::size_t kAttributeSize = 4096;   // sysfs hands out one page at most
constexpr unsigned long kMaxReportSize = 4096; // bytes behind the report ID

// The snapshot of list(). A plain array: stop() also runs while static objects are destroyed.
constinit HidrawNode* nodes = nullptr;
constinit int nodeCount = 0;
constinit int nodeRoom = 0;

bool append(const HidrawNode& node) {
    if (nodeCount == nodeRoom) {
        const int room = nodeRoom == 0 ? 16 : 2 * nodeRoom;
        void* const larger =
            std::realloc(nodes, static_cast<std::size_t>(room) * sizeof(HidrawNode));
        if (!larger)
            return false;
        nodes = static_cast<HidrawNode*>(larger);
        nodeRoom = room;
    }
    nodes[nodeCount++] = node;
    return true;
}

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0)
            ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }
    int release() { return std::exchange(fd_, -1); }

private:
    int fd_;
};

// Handles are descriptors plus one, so that none is 0.
void* toHandle(int fd) { return reinterpret_cast<void*>(static_cast<std::intptr_t>(fd) + 1); }
int toDescriptor(void* handle) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(handle) - 1);
}

// A device whose attribute is absent, empty or gone meanwhile is left out.
bool readNode(const char* name, HidrawNode& node) {
    if (!takesName(name, node))
        return false;
    char path[128];
    std::snprintf(path, sizeof path, "%s/hidraw%u/device/uevent", kClassFolder, node.number);
    const Descriptor file(::open(path, O_RDONLY | O_CLOEXEC));
    if (file.get() < 0)
        return false;
    std::array<char, kAttributeSize> text;
    const ssize_t size = ::read(file.get(), text.data(), text.size());
    return size > 0 && takesIds({text.data(), static_cast<std::size_t>(size)}, node);
}

void scan() {
    DIR* const folder = opendir(kClassFolder);
    if (!folder)
        return;
    while (const dirent* entry = readdir(folder)) {
        HidrawNode node = {};
        if (readNode(entry->d_name, node) && !append(node))
            break;
    }
    closedir(folder);
    std::sort(nodes, nodes + nodeCount,
              [](const HidrawNode& a, const HidrawNode& b) { return a.number < b.number; });
}

int start() { return 1; }

void unlist() { nodeCount = 0; }

void stop() {
    std::free(std::exchange(nodes, nullptr));
    nodeCount = nodeRoom = 0;
}

int list() {
    unlist();
    scan();
    return nodeCount;
}

void ids(int index, unsigned* vendor, unsigned* product) {
    const HidrawNode& node = nodes[index];
    *vendor = node.vendor;
    *product = node.product;
}

bool isStill(const HidrawNode& node, int fd) {
    hidraw_devinfo info = {};
    return ioctl(fd, HIDIOCGRAWINFO, &info) >= 0 &&
           static_cast<std::uint16_t>(info.vendor) == node.vendor &&
           static_cast<std::uint16_t>(info.product) == node.product;
}

void* open(int index, char* name) {
    const HidrawNode& node = nodes[index];
    std::snprintf(name, 512, "/dev/hidraw%u", node.number);
    Descriptor file(::open(name, O_RDWR | O_CLOEXEC));
    if (file.get() < 0 || !isStill(node, file.get()))
        return nullptr;
    return toHandle(file.release());
}

void close(void* handle) { ::close(toDescriptor(handle)); }

bool fits(long size) { return static_cast<unsigned long>(size) <= kMaxReportSize; }

// The kernel wants the report ID in front of the data, also ID 0, and answers with it.
int setFeature(void* handle, unsigned char reportId, const unsigned char* data, long size) {
    unsigned char report[1 + kMaxReportSize];
    if (!fits(size))
        return 0;
    const bool addId = reportId == 0;
    report[0] = 0;
    std::copy_n(data, size, report + (addId ? 1 : 0));
    const auto length = static_cast<std::size_t>(size + (addId ? 1 : 0));
    const bool sent = ioctl(toDescriptor(handle), HIDIOCSFEATURE(length), report) >= 0;
    zel::wipe(report, length); // it may have carried a piece of a key
    return sent ? 1 : 0;
}

int getFeature(void* handle, unsigned char reportId, unsigned char* data, long* size) {
    unsigned char report[1 + kMaxReportSize];
    if (!fits(*size))
        return 0;
    const auto length = static_cast<std::size_t>(*size + 1);
    std::memset(report, 0, length);
    report[0] = reportId;
    const int received = ioctl(toDescriptor(handle), HIDIOCGFEATURE(length), report);
    if (received >= 0) {
        *size = std::clamp<long>(received - 1L, 0, *size);
        std::copy_n(report + 1, *size, data);
    }
    zel::wipe(report, length);
    return received >= 0 ? 1 : 0;
}

constexpr UsbBackend kBackend = {start,  stop,  list,       ids,       open,
                                 unlist, close, setFeature, getFeature};

} // namespace

const UsbBackend& zel::hidrawUsbBackend() { return kBackend; }
