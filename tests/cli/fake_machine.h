// SPDX-License-Identifier: MIT
// A folder laid out like a Linux machine, for the doctor to look at.
#pragma once

#include "cli/doctor/finding.h"
#include "cli/doctor/machine.h"
#include "tests/support/temporary_folder.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

namespace zel::test {

class FakeMachine : public ::testing::Test {
protected:
    static constexpr char kRule[] =
        "SUBSYSTEM==\"hidraw\", ATTRS{idVendor}==\"5a3e\", ATTRS{idProduct}==\"9d23\", "
        "TAG+=\"uaccess\"\n";

    void write(const std::string& path, const std::string& text) const {
        const std::string place = root() + path;
        std::filesystem::create_directories(std::filesystem::path(place).parent_path());
        std::ofstream(place) << text;
    }

    void link(const std::string& path, const std::string& target) const {
        const std::string place = root() + path;
        std::filesystem::create_directories(std::filesystem::path(place).parent_path());
        std::filesystem::create_symlink(target, place);
    }

    // A reader that may be opened, with a rule for it.
    void plug() const {
        write("/sys/bus/usb/devices/1-2/idVendor", "5a3e\n");
        write("/sys/bus/usb/devices/1-2/idProduct", "9d23\n");
        link("/sys/bus/usb/devices/1-2:1.0/driver", "../../../drivers/usbhid");
        write("/sys/class/hidraw/hidraw3/device/uevent", "HID_ID=0003:00005A3E:00009D23\n");
        write("/dev/hidraw3", "");
        write("/etc/udev/rules.d/70-zeltag.rules", kRule);
        write("/run/udev/control", "");
    }

    std::string root() const { return folder_.path(); }

    cli::Machine machine(bool denies = false) const {
        return {root(), 1000, denies ? deny : ::access};
    }

    // "VERDICT CHECK TEXT" a line; with the owners of nodes, which differ, left out.
    static std::string linesOf(const cli::Findings& findings) {
        std::string lines;
        for (const cli::Finding& finding : findings) {
            constexpr const char* kVerdicts[] = {"ok", "warning", "fault"};
            lines += std::string(kVerdicts[static_cast<int>(finding.verdict)]) + ' ' +
                     finding.check + ": " + finding.text.substr(0, finding.text.find(": root")) +
                     '\n';
        }
        return lines;
    }

private:
    static int deny(const char*, int) {
        errno = EACCES;
        return -1;
    }

    TemporaryFolder folder_;
};

} // namespace zel::test
