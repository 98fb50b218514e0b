// SPDX-License-Identifier: MIT
// Looks at the node of a line from outside: its kind, its owner, its permissions.
#include "cli/device/serial_line.h"

#include "cli/command/line_words.h"
#include "frame/zelTagAPI.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>
#if __has_include(<sys/sysmacros.h>)
#include <sys/sysmacros.h>
#endif

namespace zel::cli {

namespace {

constexpr unsigned short kLine = 1; // any number: it is the only one
constexpr short kSerial = 1;        // of SetDevTypeSrch()

// What the system calls a character device; empty where it doesn't tell, as of pseudo terminals.
std::string subsystemOf(const struct stat& node) {
    std::error_code error;
    const auto link = std::filesystem::read_symlink(
        fmt::format("/sys/dev/char/{}:{}/subsystem", major(node.st_rdev), minor(node.st_rdev)),
        error);
    return link.filename();
}

bool mayBeTerminal(const struct stat& node) {
    const std::string subsystem = S_ISCHR(node.st_mode) ? subsystemOf(node) : "none";
    return subsystem.empty() || subsystem == "tty";
}

Failure missing(const std::string& path) {
    return {ExitCode::NoDevice, "there is no " + path,
            "plug the adapter in; `ls /dev/serial/by-id` shows those that are there", ""};
}

Failure noTerminal(const std::string& path) {
    return {ExitCode::NoDevice, path + " is no serial line",
            "`ls /dev/serial/by-id` shows the adapters that are there", ""};
}

// Whom the node lets in: its group, where the group may read and write.
std::string permissionHint(const struct stat& node) {
    constexpr mode_t kBoth = S_IRGRP | S_IWGRP;
    const group* const owners = getgrgid(node.st_gid);
    if (!owners || (node.st_mode & kBoth) != kBoth)
        return "ask who runs this machine to let you read and write it";
    return fmt::format(
        "it is open to the group {0}: `sudo usermod -aG {0} $USER`, then log in anew",
        owners->gr_name);
}

Failure denied(const std::string& path, const struct stat& node) {
    return {ExitCode::NoPermission, "no permission to open " + path, permissionHint(node), ""};
}

Failure silent(const Options& options) {
    return {ExitCode::NoDevice, "no reader answers on " + lineText(options),
            "check its cable and power, and that no other program has the line open; a reader set "
            "to another speed needs --baud",
            ""};
}

} // namespace

Outcome useLine(const Options& options) {
    struct stat node = {};
    if (stat(options.port.c_str(), &node) == 0 && !mayBeTerminal(node))
        return noTerminal(options.port);
    SetComLinux(kLine, options.port.c_str());
    SetComSrchRange(kLine, kLine);
    SetBaudRate(static_cast<unsigned>(options.baud.value_or(kDefaultSpeed)));
    SetDevTypeSrch(kSerial);
    return {};
}

Failure explainNoLine(const Options& options) {
    const std::string& path = options.port;
    struct stat node = {};
    if (stat(path.c_str(), &node) != 0)
        return errno == EACCES ? denied(path, node) : missing(path);
    if (faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) != 0)
        return denied(path, node);
    return silent(options);
}

std::string lineText(const Options& options) {
    return fmt::format("{} at {} baud", options.port, options.baud.value_or(kDefaultSpeed));
}

} // namespace zel::cli
