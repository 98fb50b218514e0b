// SPDX-License-Identifier: MIT
// Looks at a line's node, its owners, those who have it open, and its lock file.
#include "cli/doctor/line_checks.h"

#include "cli/doctor/holders.h"

#include <cerrno>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <grp.h>
#include <sys/stat.h>
#if __has_include(<sys/sysmacros.h>)
#include <sys/sysmacros.h>
#endif

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

constexpr char kThoseThatAre[] = "`ls /dev/serial/by-id` shows the adapters that are there";

// What the system calls a character device; pseudo terminals have no such name.
std::string subsystemOf(const struct stat& node, const Machine& machine) {
    std::error_code error;
    return fs::read_symlink(machine.at(fmt::format("/sys/dev/char/{}:{}/subsystem",
                                                   major(node.st_rdev), minor(node.st_rdev))),
                            error)
        .filename();
}

bool isTerminal(const struct stat& node, const Machine& machine) {
    const std::string subsystem = S_ISCHR(node.st_mode) ? subsystemOf(node, machine) : "none";
    return subsystem.empty() || subsystem == "tty";
}

// A link such as those of /dev/serial/by-id leads to the node that programs have open.
std::string behindLinks(const std::string& path, const Machine& machine) {
    std::error_code error;
    const fs::path target = fs::read_symlink(machine.at(path), error);
    if (error || target.is_absolute())
        return path;
    return (fs::path(path).parent_path() / target).lexically_normal();
}

Finding checkPermission(const std::string& path, const struct stat& node, const Machine& machine) {
    const std::string owners = ownersOf(path, machine);
    if (machine.access(machine.at(path).c_str(), R_OK | W_OK) == 0)
        return ok("permission", fmt::format("{} may be opened: {}", path, owners));
    constexpr mode_t kBoth = S_IRGRP | S_IWGRP;
    const group* const group = getgrgid(node.st_gid);
    const bool hasGroup = group && (node.st_mode & kBoth) == kBoth;
    return fault(
        "permission", ExitCode::NoPermission, fmt::format("{} may not be opened: {}", path, owners),
        hasGroup ? fmt::format("`sudo usermod -aG {} $USER`, then log in anew", group->gr_name)
                 : "ask who runs this machine to let you read and write it");
}

// The old way to say that a line is in use; the file holds the number of a process.
Findings checkLock(const std::string& node, const Machine& machine) {
    const std::string name = "/LCK.." + fs::path(node).filename().string();
    for (const char* const folder : {"/run/lock", "/var/lock"}) {
        std::ifstream file(machine.at(folder + name));
        int process = 0;
        if (!(file >> process))
            continue;
        std::error_code error;
        if (fs::exists(machine.at("/proc/" + std::to_string(process)), error))
            return {warning("lock", fmt::format("process {} keeps {} locked", process, node),
                            "end it, or wait until it is done")};
        return {warning("lock",
                        fmt::format("{}{} is left of a process that has ended", folder, name),
                        "remove the file")};
    }
    return {};
}

} // namespace

Findings checkLine(const std::string& path, const Machine& machine) {
    struct stat node = {};
    if (stat(machine.at(path).c_str(), &node) != 0) {
        if (errno == EACCES)
            return {fault("line", ExitCode::NoPermission, "no permission to look at " + path,
                          "ask who runs this machine to let you read and write it")};
        return {fault("line", ExitCode::NoDevice, "there is no " + path,
                      std::string("plug the adapter in; ") + kThoseThatAre)};
    }
    if (!isTerminal(node, machine))
        return {fault("line", ExitCode::NoDevice, path + " is no serial line", kThoseThatAre)};
    Findings findings = {ok("line", path + " is a serial line"),
                         checkPermission(path, node, machine)};
    const std::string target = behindLinks(path, machine);
    const auto holders = holdersOf(target, machine);
    if (!holders.empty())
        findings.push_back(fault("held", ExitCode::Failed,
                                 fmt::format("{} is open in {}", target, asText(holders)),
                                 "end that program: what it reads is lost here"));
    for (Finding& finding : checkLock(target, machine))
        findings.push_back(std::move(finding));
    return findings;
}

} // namespace zel::cli
