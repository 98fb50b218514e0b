// SPDX-License-Identifier: MIT
// Looks through the open descriptors of all processes.
#include "cli/doctor/holders.h"

#include "cli/command/whole_number.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

// A process or a descriptor may vanish while it is looked at.
bool holds(const fs::path& process, const std::string& node) {
    std::error_code error;
    for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code gone;
        if (fs::read_symlink(entry->path(), gone) == node)
            return true;
    }
    return false;
}

std::string nameOf(const fs::path& process) {
    std::ifstream file(process / "comm");
    std::string name;
    std::getline(file, name);
    return name.empty() ? "a program" : name;
}

std::string userName(uid_t user) {
    const passwd* const entry = getpwuid(user);
    return entry ? entry->pw_name : std::to_string(user);
}

std::string groupName(gid_t id) {
    const group* const entry = getgrgid(id);
    return entry ? entry->gr_name : std::to_string(id);
}

} // namespace

std::vector<Holder> holdersOf(const std::string& node, const Machine& machine) {
    std::vector<Holder> holders;
    std::error_code error;
    for (fs::directory_iterator entry(machine.at("/proc"), error), end; !error && entry != end;
         entry.increment(error)) {
        const auto process = wholeNumber<int>(entry->path().filename().string());
        if (process && *process != getpid() && holds(entry->path(), node))
            holders.push_back({*process, nameOf(entry->path())});
    }
    return holders;
}

std::string asText(const std::vector<Holder>& holders) {
    std::string text;
    for (const Holder& holder : holders)
        text += fmt::format("{}{} ({})", text.empty() ? "" : ", ", holder.name, holder.process);
    return text;
}

std::string ownersOf(const std::string& node, const Machine& machine) {
    constexpr mode_t kPermissions = 0777;
    struct stat found = {};
    if (stat(machine.at(node).c_str(), &found) != 0)
        return "";
    return fmt::format("{}:{}, mode {:04o}", userName(found.st_uid), groupName(found.st_gid),
                       static_cast<unsigned>(found.st_mode & kPermissions));
}

} // namespace zel::cli
