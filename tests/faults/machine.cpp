// SPDX-License-Identifier: MIT
// Leads the paths of the node below a folder of its own, and works while the library pauses.
#include "tests/faults/machine.h"

#include "sim/tag/stream.h"
#include "sim/wire/line.h"
#include "sim/wire/usb_bus.h"
#include "tests/faults/usb_node.h"
#include "tests/support/loopback.h"
#include "tests/support/virtual_time.h"

#include <asm/ioctls.h>
#include <asm/termbits.h>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string_view>
#include <sys/syscall.h>

namespace zel::test {

namespace {

constexpr char kNode[] = "/dev/hidraw0";
constexpr char kNodes[] = "/sys/class/hidraw";
constexpr char kUevent[] = "HID_ID=0003:00005A3E:00009D23\n";
constexpr int kBridgeHost = 1;

Machine* machine = nullptr;

// The index of the path among the arguments; -1 where there is none.
int pathAt(long number) {
    switch (number) {
    case SYS_openat:
    case SYS_newfstatat:
    case SYS_statx:
    case SYS_faccessat:
    case SYS_faccessat2:
    case SYS_readlinkat:
        return 1;
#ifdef SYS_open
    case SYS_open:
    case SYS_access:
    case SYS_readlink:
        return 0;
#endif
    default:
        return -1;
    }
}

bool isOpening(long number) {
#ifdef SYS_open
    if (number == SYS_open)
        return true;
#endif
    return number == SYS_openat;
}

bool isOurs(std::string_view path) {
    return path.starts_with(kNode) || path.starts_with(kNodes) || path.starts_with("/sys/bus/usb");
}

template <class Part> void addTo(std::size_t& memory, const Part& part) {
    const std::string_view bytes(reinterpret_cast<const char*>(&part), sizeof part);
    memory = memory * 31 + std::hash<std::string_view>()(bytes);
}

std::size_t index(long descriptor) {
    const auto at = static_cast<std::size_t>(descriptor);
    return at < kWatchedDescriptors ? at : kWatchedDescriptors - 1;
}

} // namespace

Machine::Machine(std::string root, std::shared_ptr<sim::TagReader> reader, Place place)
    : root_(std::move(root)), reader_(std::move(reader)),
      stream_(std::make_shared<sim::TagStream>(reader_)) {
    if (place == Place::Line)
        sim::lines().attach(kLine, stream_);
    if (place == Place::Bridge)
        putUpBridge();
    machine = this;
    onPause([this](std::uint64_t) { work(); });
}

void Machine::putUpBridge() {
    const sim::BridgeOptions options = {.address = loopbackHost(kBridgeHost)};
    bridge_ = std::make_unique<sim::Bridge>(stream_, options);
    if (!bridge_->start())
        std::abort();
}

Machine::~Machine() {
    onPause({});
    machine = nullptr;
    sim::lines().clear();
}

void Machine::furnish(const std::string& root) {
    const std::filesystem::path device = root + kNodes + "/hidraw0/device";
    std::filesystem::create_directories(device);
    std::filesystem::create_directories(root + "/dev");
    std::ofstream(device / "uevent") << kUevent;
    std::ofstream{root + kNode};
}

std::string Machine::bridge() const {
    const auto [a, b, c, d] = loopbackHost(kBridgeHost);
    std::string text;
    for (const int part : {a, b, c, d})
        text += (text.empty() ? "" : ".") + std::to_string(part);
    return text + ":" + std::to_string(bridge_ ? bridge_->port() : 0);
}

std::size_t Machine::memory() const {
    std::size_t memory = 0;
    addTo(memory, reader_->committed().luid);
    for (const auto& configuration : reader_->committed().configuration) {
        addTo(memory, configuration.block);
        addTo(memory, configuration.page);
    }
    for (const auto& blob : reader_->blobs())
        for (const auto byte : blob.data)
            addTo(memory, byte);
    for (const auto byte : reader_->bootLoader().memory())
        addTo(memory, byte);
    return memory;
}

// No call of the devices' own is to fail.
void Machine::work() {
    const Untrapped devices;
    sim::lines().pump();
    serveBridge();
}

void Machine::serveBridge() {
    if (bridge_)
        bridge_->pump(0);
}

Kernel Machine::kernel() {
    return {[](long number, CallArguments arguments) { return machine->call(number, arguments); },
            [](long number, CallArguments arguments) { machine->fail(number, arguments); }};
}

// A close that fails has closed all the same, as Linux does it.
void Machine::fail(long number, CallArguments arguments) {
    if (number == SYS_close)
        call(number, arguments);
    if (number == SYS_ioctl && nodes_.test(index(arguments[0])))
        loseRequest(*reader_, static_cast<unsigned long>(arguments[1]),
                    reinterpret_cast<void*>(arguments[2]));
}

long Machine::call(long number, CallArguments arguments) {
    if (pathAt(number) >= 0)
        return open(number, arguments);
    if (number == SYS_ioctl)
        return control(static_cast<int>(arguments[0]), arguments);
    if (number == SYS_close) {
        nodes_.reset(index(arguments[0]));
        lines_.reset(index(arguments[0]));
    }
    if (number == SYS_connect || number == SYS_sendto)
        return answered(callKernel(number, arguments));
    return callKernel(number, arguments);
}

// The bridge takes a connection, and a datagram, at once.
long Machine::answered(long result) {
    serveBridge();
    return result;
}

long Machine::open(long number, CallArguments arguments) {
    const auto at = static_cast<std::size_t>(pathAt(number));
    const auto* const path = reinterpret_cast<const char*>(arguments[at]);
    if (isOpening(number) && std::strcmp(path, kLine) == 0) {
        const int line = sim::lines().open(path);
        lines_.set(index(line), line >= 0);
        return line >= 0 ? line : -errno;
    }
    if (!isOurs(path))
        return callKernel(number, arguments);
    const std::string below = root_ + path;
    arguments[at] = reinterpret_cast<long>(below.c_str());
    const long result = callKernel(number, arguments);
    if (isOpening(number) && result >= 0)
        nodes_.set(index(result), std::strcmp(path, kNode) == 0);
    return result;
}

// A line is a terminal, as far as it is asked about speeds and discards.
long Machine::control(int descriptor, CallArguments arguments) {
    const auto request = static_cast<unsigned long>(arguments[1]);
    auto* const argument = reinterpret_cast<void*>(arguments[2]);
    if (nodes_.test(index(descriptor)))
        return serveNode(*reader_, request, argument);
    if (!lines_.test(index(descriptor)))
        return callKernel(SYS_ioctl, arguments);
    if (request == TCGETS)
        std::memset(argument, 0, sizeof(termios));
    return 0;
}

} // namespace zel::test
