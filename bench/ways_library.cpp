// SPDX-License-Identifier: MIT
// Reads by the library over two backends and by a hand-written loop; scans by the library.
#include "bench/standin.h"
#include "bench/ways.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "transport/usb_driver.h"

#include <cstring>
#include <fcntl.h>
#include <linux/hidraw.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zel::bench {

namespace {

// A backend that does nothing: what is left is the library above its seam to the platform.
int itsHandle = 0;
unsigned char lastCommand = 0;

int start() { return 1; }
void stop() {}
int list() { return 1; }
void ids(int, unsigned* vendor, unsigned* product) {
    *vendor = ZELTAG_USB_VENDOR;
    *product = ZELTAG_USB_PRODUCT;
}
void* openDevice(int, char* name) {
    std::memcpy(name, "nothing", sizeof "nothing");
    return &itsHandle;
}
void unlist() {}
void closeDevice(void*) {}
int setFeature(void*, unsigned char, const unsigned char* data, long) {
    lastCommand = data[0];
    return 1;
}
int getFeature(void*, unsigned char, unsigned char* data, long*) {
    if (lastCommand == kIdCommand)
        std::memcpy(data, kCardId, sizeof kCardId);
    else
        data[0] = kCardBits;
    return 1;
}

constexpr UsbBackend kDoNothing = {start,  stop,        list,       ids,       openDevice,
                                   unlist, closeDevice, setFeature, getFeature};

// Found devices are appended at cbIndex: an application that starts afresh sets it to 0.
bool connect(const UsbBackend* backend) {
    USBDisconnect();
    cbIndex = 0;
    unsigned short did = 0;
    if (!UsbDriver_UseBackend(backend))
        return false;
    zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, &did);
    return GetDevCnt() > 0;
}

bool connectToNothing() { return connect(&kDoNothing); }
bool connectToPlatform() { return connect(nullptr); }
void disconnect() { USBDisconnect(); }

int readByLibrary() {
    unsigned char id[8];
    const int bits = GetActiveID(id, sizeof id);
    return isStandinCard(id) ? bits : 0;
}

// The same four ioctls, as a program that needs nothing else would write them.
int node = -1;

bool openNode() {
    node = open("/dev/hidraw0", O_RDWR | O_CLOEXEC);
    return node >= 0;
}

void closeNode() { close(node); }

bool query(unsigned char command, unsigned char* reply) {
    unsigned char request[kReportSize] = {0, command};
    return ioctl(node, HIDIOCSFEATURE(kReportSize), request) >= 0 &&
           ioctl(node, HIDIOCGFEATURE(kReportSize), reply) >= 0;
}

int readByLoop() {
    unsigned char id[kReportSize] = {};
    unsigned char bits[kReportSize] = {};
    const bool isRead = query(kIdCommand, id) && query(kBitCountCommand, bits);
    return isRead && isStandinCard(id + 1) ? bits[1] : 0;
}

int readers = 0;

void closeFound(char*, void* handle, int) {
    UsbDriver_Close(handle);
    ++readers;
}

bool usePlatform() { return UsbDriver_UseBackend(nullptr) != 0; }

// Lists every HID device and looks at its IDs, as hid_enumerate() does. IDs that no reader has ask
// for none, so that nothing is opened and nothing found.
int listByLibrary() {
    readers = 0;
    UsbDriver_Generator(0, 0, closeFound);
    return readers;
}

// What connecting does: also opens each reader and asks it who it is, which hid_enumerate()
// doesn't.
int scanByLibrary() {
    readers = 0;
    UsbDriver_Generator(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, closeFound);
    return readers;
}

void nothingToEnd() {}

constexpr Way kWays[] = {
    {"read-over-nothing", connectToNothing, readByLibrary, disconnect},
    {"read-by-loop", openNode, readByLoop, closeNode},
    {"read-by-library", connectToPlatform, readByLibrary, disconnect},
    {"list-by-library", usePlatform, listByLibrary, nothingToEnd},
    {"scan-by-library", usePlatform, scanByLibrary, nothingToEnd},
};

} // namespace

std::span<const Way> libraryWays() { return kWays; }

} // namespace zel::bench
