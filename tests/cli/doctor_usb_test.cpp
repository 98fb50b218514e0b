// SPDX-License-Identifier: MIT
// What the doctor finds on the way of a reader through a machine, made of files.
#include "cli/doctor/usb_checks.h"
#include "tests/cli/fake_machine.h"

namespace zel::test {

namespace {

using cli::ExitCode;
namespace fs = std::filesystem;

class DoctorUsb : public FakeMachine {
protected:
    DoctorUsb() { plug(); }

    // What follows what is well in any case.
    std::string found(bool denies = false) const { return linesOf(checkUsb(machine(denies))); }

    static bool contains(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    ExitCode exit(bool denies = false) const {
        const auto outcome = cli::outcomeOf(checkUsb(machine(denies)));
        return outcome ? outcome->exit : ExitCode::Done;
    }

    void remove(const std::string& path) const { fs::remove_all(root() + path); }

    // The finding that a rule of this text in a file of this name makes.
    std::string withRule(const std::string& rule,
                         const std::string& file = "/etc/udev/rules.d/70-x.rules") const {
        remove("/etc/udev/rules.d/70-zeltag.rules");
        write(file, rule);
        return found(true);
    }
};

TEST_F(DoctorUsb, FindsNothingWrongWhereAllIsWell) {
    EXPECT_EQ(found(), "ok usb: a reader is USB device 1-2\n"
                       "ok driver: USB device 1-2 is driven by usbhid\n"
                       "ok permission: /dev/hidraw3 may be opened\n"
                       "ok rule: /etc/udev/rules.d/70-zeltag.rules:1 lets in who sits at this "
                       "machine\n");
    EXPECT_EQ(exit(), ExitCode::Done);
}

TEST_F(DoctorUsb, FindsThatNoReaderIsPlugged) {
    write("/sys/bus/usb/devices/1-2/idProduct", "0001\n");
    remove("/sys/class/hidraw");
    EXPECT_EQ(found(), "fault usb: no reader is on USB\n");
    EXPECT_EQ(exit(), ExitCode::NoDevice);
}

TEST_F(DoctorUsb, FindsThatAnotherDriverHasIt) {
    remove("/sys/bus/usb/devices/1-2:1.0/driver");
    link("/sys/bus/usb/devices/1-2:1.0/driver", "../../../drivers/usbfs");
    EXPECT_TRUE(contains(found(), "fault driver: USB device 1-2 is driven by usbfs\n"));
}

TEST_F(DoctorUsb, FindsThatNoDriverHasIt) {
    remove("/sys/bus/usb/devices/1-2:1.0");
    EXPECT_TRUE(contains(found(), "fault driver: no driver took USB device 1-2\n"));
    EXPECT_EQ(exit(), ExitCode::NoDevice);
}

TEST_F(DoctorUsb, FindsThatTheSystemMadeNoNode) {
    remove("/sys/class/hidraw");
    EXPECT_TRUE(contains(found(), "fault node: the system made no hidraw node\n"));
}

TEST_F(DoctorUsb, FindsThatTheNodeIsMissing) {
    remove("/dev/hidraw3");
    EXPECT_TRUE(contains(found(), "fault node: /dev/hidraw3 is missing\n"));
    EXPECT_EQ(exit(), ExitCode::NoDevice);
}

TEST_F(DoctorUsb, FindsThatTheUserMayNotOpenItAndThatNoSessionIsKnown) {
    EXPECT_TRUE(contains(found(true), "fault permission: /dev/hidraw3 may not be opened\n"));
    EXPECT_TRUE(contains(found(true), "warning seat: whether this user sits at the machine is "
                                      "unknown\n"));
    EXPECT_EQ(exit(true), ExitCode::NoPermission);
}

TEST_F(DoctorUsb, TellsTheSeatOfTheUser) {
    write("/run/systemd/sessions/1", "UID=7\nACTIVE=1\nSEAT=seat0\n");
    EXPECT_TRUE(contains(found(true), "warning seat: this user doesn't sit at the machine"));
    write("/run/systemd/sessions/2", "UID=1000\nACTIVE=0\nSEAT=seat0\n");
    EXPECT_TRUE(contains(found(true), "warning seat: this user's session on seat0 isn't active\n"));
    write("/run/systemd/sessions/3", "UID=1000\nACTIVE=1\nSEAT=seat1\n");
    EXPECT_TRUE(contains(found(true), "ok seat: this user's session is active on seat1\n"));
}

TEST_F(DoctorUsb, FindsThatNoRuleIsInstalled) {
    remove("/etc/udev/rules.d");
    EXPECT_TRUE(contains(found(true), "fault rule: no udev rule names the readers\n"));
    EXPECT_TRUE(contains(found(), "warning rule: no udev rule names the readers"));
}

TEST_F(DoctorUsb, FindsUdevMissing) {
    remove("/run/udev");
    EXPECT_TRUE(contains(found(), "warning udev: udev isn't running"));
}

TEST_F(DoctorUsb, JudgesARule) {
    EXPECT_TRUE(contains(withRule(kRule, "/usr/lib/udev/rules.d/60-x.rules"),
                         "ok rule: /usr/lib/udev/rules.d/60-x.rules:1 lets in"));
    remove("/usr/lib/udev/rules.d/60-x.rules");
    EXPECT_TRUE(contains(withRule("# one\n\nKERNEL==\"hidraw*\", \\\nATTRS{idVendor}==\"5a3e\", "
                                  "GROUP=\"plugdev\"\n"),
                         "ok rule: /etc/udev/rules.d/70-x.rules:3 sets who may open readers\n"));
}

TEST_F(DoctorUsb, FindsIdsInUpperCase) {
    EXPECT_TRUE(contains(withRule("SUBSYSTEM==\"hidraw\", ATTRS{idVendor}==\"5A3E\", "
                                  "TAG+=\"uaccess\"\n"),
                         "70-x.rules:1 lets nobody in: the ids must be in lower-case"));
}

TEST_F(DoctorUsb, FindsAnotherProduct) {
    EXPECT_TRUE(contains(withRule("SUBSYSTEM==\"hidraw\", ATTRS{idVendor}==\"5a3e\", "
                                  "ATTRS{idProduct}==\"1234\", TAG+=\"uaccess\"\n"),
                         "no reader is the product 1234"));
}

TEST_F(DoctorUsb, PassesOverRulesForReadersThatAreNotThere) {
    EXPECT_TRUE(contains(withRule("SUBSYSTEM==\"hidraw\", ATTRS{idVendor}==\"5a3e\", "
                                  "ATTRS{idProduct}==\"9d2b\", TAG+=\"uaccess\"\n"),
                         "fault rule: no udev rule names the readers\n"));
}

// The lines of the packaged rules that let nobody in are about other things.
TEST_F(DoctorUsb, FindsThePackagedRulesRight) {
    std::ifstream file(ZEL_UDEV_RULES);
    const std::string rules(std::istreambuf_iterator<char>(file), {});
    const std::string told = withRule(rules, "/usr/lib/udev/rules.d/70-zeltag.rules");
    EXPECT_TRUE(contains(told, "ok rule: /usr/lib/udev/rules.d/70-zeltag.rules:"));
    EXPECT_FALSE(contains(told, "lets nobody in"));
}

TEST_F(DoctorUsb, KnowsTheReadersOfTheFixedFilterList) {
    write("/sys/bus/usb/devices/1-2/idVendor", "6b2d\n");
    write("/sys/bus/usb/devices/1-2/idProduct", "9d25\n");
    write("/sys/class/hidraw/hidraw3/device/uevent", "HID_ID=0003:00006B2D:00009D25\n");
    EXPECT_TRUE(contains(found(true), "fault permission: /dev/hidraw3 may not be opened\n"));
    EXPECT_TRUE(contains(found(true), "fault rule: no udev rule names the readers\n"));
    const auto findings = checkUsb(machine(true));
    const bool names = std::any_of(findings.begin(), findings.end(), [](const auto& finding) {
        return contains(finding.fix, "ATTRS{idVendor}==\"6b2d\", ATTRS{idProduct}==\"9d25\"");
    });
    EXPECT_TRUE(names);
}

TEST_F(DoctorUsb, FindsARuleThatIsNotForNodes) {
    EXPECT_TRUE(contains(withRule("SUBSYSTEM==\"usb\", ATTRS{idVendor}==\"5a3e\", MODE=\"0666\"\n"),
                         "it isn't for hidraw nodes"));
}

TEST_F(DoctorUsb, FindsARuleThatSetsNothing) {
    EXPECT_TRUE(contains(withRule("SUBSYSTEM==\"hidraw\", ATTRS{idVendor}==\"5a3e\"\n"),
                         "it sets neither"));
}

TEST_F(DoctorUsb, FindsAFileThatComesTooLateForSeats) {
    EXPECT_TRUE(contains(withRule(kRule, "/etc/udev/rules.d/99-zeltag.rules"),
                         "fault rule: /etc/udev/rules.d/99-zeltag.rules:1 lets nobody in: uaccess "
                         "has an effect only in a file whose number is below 73\n"));
}

TEST_F(DoctorUsb, FileHidesThoseOfItsNameInTheFoldersBehind) {
    write("/etc/udev/rules.d/70-zeltag.rules", "# nothing\n");
    write("/usr/lib/udev/rules.d/70-zeltag.rules", kRule);
    EXPECT_TRUE(contains(found(true), "fault rule: no udev rule names the readers\n"));
}

TEST_F(DoctorUsb, TellsWhoHasItOpen) {
    write("/proc/412/comm", "inventory\n");
    link("/proc/412/fd/5", "/dev/hidraw3");
    write("/proc/413/comm", "other\n");
    link("/proc/413/fd/5", "/dev/hidraw30");
    EXPECT_TRUE(contains(found(), "warning held: /dev/hidraw3 is open in inventory (412)\n"));
}

} // namespace

} // namespace zel::test
