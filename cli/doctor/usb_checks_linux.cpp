// SPDX-License-Identifier: MIT
// The way of a reader through Linux: the USB device, its driver, its node, who may open that, and
// who has it open.
#include "cli/doctor/usb_checks.h"

#include "cli/device/system_readers_linux.h"
#include "cli/doctor/holders.h"
#include "cli/doctor/seat.h"
#include "cli/doctor/udev_rules.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

constexpr char kReplug[] = "unplug it and plug it in again";
constexpr char kUsbFolder[] = "/sys/bus/usb/devices";

std::string firstLine(const fs::path& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

int idIn(const fs::path& path) {
    return static_cast<int>(std::strtol(firstLine(path).c_str(), nullptr, 16));
}

bool isReader(const fs::path& device) {
    return isReaderId({idIn(device / "idVendor"), idIn(device / "idProduct")});
}

std::vector<fs::path> usbReaders(const Machine& machine) {
    std::vector<fs::path> readers;
    std::error_code error;
    for (fs::directory_iterator entry(machine.at(kUsbFolder), error), end; !error && entry != end;
         entry.increment(error))
        if (isReader(entry->path()))
            readers.push_back(entry->path());
    std::sort(readers.begin(), readers.end());
    return readers;
}

// "1-2" has its interfaces beside it: "1-2:1.0".
Finding checkDriver(const fs::path& device) {
    const std::string name = device.filename();
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(device.parent_path(), error)) {
        if (!entry.path().filename().string().starts_with(name + ":"))
            continue;
        const std::string driver = fs::read_symlink(entry.path() / "driver", error).filename();
        if (driver == "usbhid")
            return ok("driver", fmt::format("USB device {} is driven by usbhid", name));
        if (!driver.empty())
            return fault("driver", ExitCode::NoDevice,
                         fmt::format("USB device {} is driven by {}", name, driver),
                         fmt::format("end the program that took it, or `modprobe usbhid`, then {}",
                                     kReplug));
    }
    return fault("driver", ExitCode::NoDevice, fmt::format("no driver took USB device {}", name),
                 fmt::format("`modprobe usbhid`, then {}", kReplug));
}

Findings checkPlugged(const Machine& machine) {
    std::error_code error;
    if (!fs::is_directory(machine.at(kUsbFolder), error))
        return {warning("usb", "this system doesn't tell its USB devices",
                        "in a container pass /sys and the node into it")};
    const auto readers = usbReaders(machine);
    if (readers.empty())
        return {fault("usb", ExitCode::NoDevice, "no reader is on USB",
                      "plug one in; try another cable and another socket")};
    Findings findings;
    for (const fs::path& reader : readers) {
        findings.push_back(
            ok("usb", fmt::format("a reader is USB device {}", reader.filename().string())));
        findings.push_back(checkDriver(reader));
    }
    return findings;
}

Finding checkRule(const UdevRule& rule, const std::string& hint, bool isDenied) {
    if (rule.fault.empty())
        return ok("rule", rule.place + (rule.isForSeats ? " lets in who sits at this machine"
                                                        : " sets who may open readers"));
    const std::string text = rule.place + " lets nobody in: " + rule.fault;
    return isDenied ? fault("rule", ExitCode::NoPermission, text, hint)
                    : warning("rule", text, hint);
}

// The reader that may not be opened tells which rule is missing; else the first one.
Findings checkRules(const Machine& machine, const std::vector<SystemReader>& readers,
                    bool isDenied) {
    Findings findings;
    std::vector<ReaderId> ids;
    for (const SystemReader& reader : readers)
        ids.push_back(reader.id);
    const auto denied = std::find_if(readers.begin(), readers.end(), [](const auto& reader) {
        return reader.access == Access::Denied;
    });
    const std::string hint = udevHint(denied == readers.end() ? ids.front() : denied->id);
    const auto rules = rulesAboutReaders(machine, ids);
    for (const UdevRule& rule : rules)
        findings.push_back(checkRule(rule, hint, isDenied));
    if (rules.empty() && isDenied)
        findings.push_back(
            fault("rule", ExitCode::NoPermission, "no udev rule names the readers", hint));
    else if (rules.empty())
        findings.push_back(warning("rule",
                                   "no udev rule names the readers: others than this user "
                                   "may not open them",
                                   hint));
    std::error_code error;
    if (!fs::exists(machine.at("/run/udev/control"), error))
        findings.push_back(warning("udev", "udev isn't running: no rule has an effect",
                                   "in a container set the rules outside; else start udev"));
    return findings;
}

Finding checkSeat(const Machine& machine) {
    constexpr char kGroup[] =
        "in place of TAG+=\"uaccess\" use GROUP=\"plugdev\", MODE=\"0660\" and join that group";
    const auto seat = seatOf(machine);
    if (!seat)
        return warning("seat", "whether this user sits at the machine is unknown", kGroup);
    if (seat->isActive)
        return ok("seat", fmt::format("this user's session is active on {}", seat->seat));
    if (seat->seat.empty())
        return warning("seat",
                       "this user doesn't sit at the machine: uaccess lets nobody in from "
                       "afar",
                       kGroup);
    return warning("seat", fmt::format("this user's session on {} isn't active", seat->seat),
                   "switch to that session, or " + std::string(kGroup));
}

Findings checkAccess(const SystemReader& reader, const std::string& node, const Machine& machine) {
    const std::string owners = ownersOf(node, machine);
    switch (reader.access) {
    case Access::Open:
        return {ok("permission", fmt::format("{} may be opened: {}", node, owners))};
    case Access::Denied:
        return {fault("permission", ExitCode::NoPermission,
                      fmt::format("{} may not be opened: {}", node, owners),
                      "see the rule and the seat below")};
    case Access::NoNode:
        return {fault("node", ExitCode::NoDevice, node + " is missing",
                      fmt::format("{}, or pass the node into the container", kReplug))};
    default:
        return {fault("permission", ExitCode::NoDevice, node + " can't be opened", kReplug)};
    }
}

void append(Findings& all, const Findings& more) {
    all.insert(all.end(), more.begin(), more.end());
}

Findings checkNode(const SystemReader& reader, const Machine& machine) {
    const std::string node = reader.node.substr(machine.root.size());
    Findings findings = checkAccess(reader, node, machine);
    const auto holders = holdersOf(node, machine);
    if (!holders.empty())
        findings.push_back(warning("held", fmt::format("{} is open in {}", node, asText(holders)),
                                   "end that program if answers get mixed up"));
    return findings;
}

} // namespace

Findings checkUsb(const Machine& machine) {
    Findings findings = checkPlugged(machine);
    const auto readers =
        findSystemReaders({machine.at("/sys/class/hidraw"), machine.at("/dev"), machine.access});
    if (readers.empty() && !hasFault(findings))
        findings.push_back(fault("node", ExitCode::NoDevice, "the system made no hidraw node",
                                 fmt::format("`modprobe hidraw`, then {}", kReplug)));
    bool isDenied = false;
    for (const SystemReader& reader : readers) {
        append(findings, checkNode(reader, machine));
        isDenied = isDenied || reader.access == Access::Denied;
    }
    if (!readers.empty())
        append(findings, checkRules(machine, readers, isDenied));
    if (isDenied)
        findings.push_back(checkSeat(machine));
    return findings;
}

} // namespace zel::cli
