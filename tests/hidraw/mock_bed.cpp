// SPDX-License-Identifier: MIT
// Fills umockdev's test bed and leads the nodes' requests to the mock readers.
#include "tests/hidraw/mock_bed.h"

#include <cstdio>
#include <fstream>
#include <linux/ioctl.h>
#include <stdexcept>
#include <string>

namespace zel::test {

namespace fs = std::filesystem;

namespace {

std::string nodeName(unsigned number) { return "/dev/hidraw" + std::to_string(number); }

// The HID device above a node. Its own counter goes on where the node's number is reused.
std::string hidFolder(unsigned number) {
    char text[64];
    std::snprintf(text, sizeof text, "/devices/virtual/misc/uhid/0003:5A3E:9D23.%04X", number + 1);
    return text;
}

std::string sysFolder(unsigned number) {
    return hidFolder(number) + "/hidraw/hidraw" + std::to_string(number);
}

std::string hidId(Identity identity) {
    char text[64];
    std::snprintf(text, sizeof text, "HID_ID=0003:%08X:%08X", identity.vendor, identity.product);
    return text;
}

// In umockdev's own format: path, node with its contents, properties, link.
std::string describe(unsigned number, Identity identity) {
    const std::string node = "hidraw" + std::to_string(number);
    return "P: " + sysFolder(number) + "\nN: " + node + "=00\nE: DEVNAME=/dev/" + node +
           "\nE: SUBSYSTEM=hidraw\nL: device=../../../" +
           fs::path(hidFolder(number)).filename().string() + "\n\nP: " + hidFolder(number) +
           "\nE: SUBSYSTEM=hid\nE: DRIVER=hid-generic\nE: " + hidId(identity) +
           "\nE: HID_NAME=Test Reader\nE: HID_PHYS=\nE: HID_UNIQ=\n\n";
}

void require(bool done, GError*& error) {
    if (!done)
        throw std::runtime_error(error ? error->message : "the test bed failed");
}

fs::path rootOf(UMockdevTestbed* bed) {
    gchar* const text = umockdev_testbed_get_root_dir(bed);
    fs::path root = text;
    g_free(text);
    return root;
}

} // namespace

MockBed::MockBed()
    : bed_(umockdev_testbed_new()), handler_(umockdev_ioctl_base_new()), root_(rootOf(bed_)) {
    g_signal_connect(handler_, "handle-ioctl", G_CALLBACK(serve), this);
}

MockBed::~MockBed() {
    for (const auto& [number, reader] : readers_)
        umockdev_testbed_detach_ioctl(bed_, nodeName(number).c_str(), nullptr);
    g_object_unref(handler_);
    g_object_unref(bed_);
}

MockReader& MockBed::plug(unsigned number, Identity identity) {
    const Behaviour behaviour = {.identity = identity};
    MockReader& reader = readers_.try_emplace(number, behaviour).first->second;
    plugUnserved(number, identity);
    GError* error = nullptr;
    require(umockdev_testbed_attach_ioctl(bed_, nodeName(number).c_str(), handler_, &error), error);
    return reader;
}

void MockBed::plugUnserved(unsigned number, Identity identity) {
    GError* error = nullptr;
    const std::string device = describe(number, identity);
    require(umockdev_testbed_add_from_string(bed_, device.c_str(), &error), error);
}

void MockBed::unplug(unsigned number) {
    umockdev_testbed_remove_device(bed_, ("/sys" + sysFolder(number)).c_str());
    umockdev_testbed_remove_device(bed_, ("/sys" + hidFolder(number)).c_str());
}

void MockBed::openToAllUsers() const {
    fs::permissions(root_, fs::perms{0755});
    for (const auto& entry : fs::recursive_directory_iterator(root_ / "ioctl"))
        fs::permissions(entry.path(), fs::perms::all); // the sockets that serve the nodes
}

fs::path MockBed::node(unsigned number) const { return root_ / nodeName(number).substr(1); }

fs::path MockBed::uevent(unsigned number) const {
    return root_ / ("sys" + hidFolder(number)) / "uevent";
}

gboolean MockBed::serve(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer bed) {
    const std::string node = umockdev_ioctl_client_get_devnode(client);
    const gulong request = umockdev_ioctl_client_get_request(client);
    const gulong size = _IOC_SIZE(request);
    UMockdevIoctlData* const data =
        umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, size, nullptr);
    if (!data)
        return FALSE;
    const auto number = static_cast<unsigned>(std::stoul(node.substr(nodeName(0).size() - 1)));
    MockReader& reader = static_cast<MockBed*>(bed)->reader(number);
    const int result = reader.serve(request, {data->data, size});
    umockdev_ioctl_client_complete(client, result < 0 ? -1 : result, result < 0 ? -result : 0);
    g_object_unref(data);
    return TRUE;
}

void write(const fs::path& file, std::string_view text) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << text;
}

void replaceByFolder(const fs::path& file) {
    fs::remove(file);
    fs::create_directory(file);
}

} // namespace zel::test
