// SPDX-License-Identifier: MIT
// What a reader on USB says of its one interface, as FunctionFS wants it.
#pragma once

#include <array>
#include <cstdint>
#include <endian.h>
#include <linux/usb/ch9.h>
#include <linux/usb/functionfs.h>

namespace zel::test {

// A vendor's own collection with a feature report of eight bytes, and an input report, since the
// system's driver takes no interface without an endpoint for one.
inline constexpr std::array<std::uint8_t, 29> kReportDescriptor = {
    0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01, 0x09, 0x01, 0x15, 0x00, 0x26, 0xFF, 0x00, 0x75,
    0x08, 0x95, 0x08, 0xB1, 0x02, 0x09, 0x02, 0x75, 0x08, 0x95, 0x08, 0x81, 0x02, 0xC0};

inline constexpr std::uint8_t kHidDescriptor = 0x21;
inline constexpr std::uint8_t kHidReportDescriptor = 0x22;

struct [[gnu::packed]] HidDescriptor {
    std::uint8_t length = sizeof(HidDescriptor);
    std::uint8_t type = kHidDescriptor;
    std::uint16_t version = htole16(0x0111);
    std::uint8_t country = 0;
    std::uint8_t count = 1;
    std::uint8_t reportType = kHidReportDescriptor;
    std::uint16_t reportLength = htole16(kReportDescriptor.size());
};

struct [[gnu::packed]] Interface {
    usb_interface_descriptor interface = {};
    HidDescriptor hid;
    usb_endpoint_descriptor_no_audio endpoint = {};
};

// At one of the two speeds, which give the interval another meaning.
inline Interface makeInterface(std::uint8_t interval) {
    Interface made;
    made.interface.bLength = sizeof made.interface;
    made.interface.bDescriptorType = USB_DT_INTERFACE;
    made.interface.bNumEndpoints = 1;
    made.interface.bInterfaceClass = USB_CLASS_HID;
    made.interface.iInterface = 1;
    made.endpoint.bLength = sizeof made.endpoint;
    made.endpoint.bDescriptorType = USB_DT_ENDPOINT;
    made.endpoint.bEndpointAddress = USB_DIR_IN | 1;
    made.endpoint.bmAttributes = USB_ENDPOINT_XFER_INT;
    made.endpoint.wMaxPacketSize = htole16(8);
    made.endpoint.bInterval = interval;
    return made;
}

struct [[gnu::packed]] Descriptors {
    usb_functionfs_descs_head_v2 head = {htole32(FUNCTIONFS_DESCRIPTORS_MAGIC_V2),
                                         htole32(sizeof(Descriptors)),
                                         htole32(FUNCTIONFS_HAS_FS_DESC | FUNCTIONFS_HAS_HS_DESC)};
    std::uint32_t fullSpeedCount = htole32(3);
    std::uint32_t highSpeedCount = htole32(3);
    Interface fullSpeed = makeInterface(10);
    Interface highSpeed = makeInterface(4);
};

struct [[gnu::packed]] Strings {
    usb_functionfs_strings_head head = {htole32(FUNCTIONFS_STRINGS_MAGIC), htole32(sizeof(Strings)),
                                        htole32(1), htole32(1)};
    std::uint16_t language = htole16(0x0409);
    char name[7] = "reader";
};

} // namespace zel::test
