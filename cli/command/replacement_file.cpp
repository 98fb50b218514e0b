// SPDX-License-Identifier: MIT
// Names, modes and removal of the temporary file.
#include "cli/command/replacement_file.h"

#include "cli/command/interrupt.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zel::cli {

namespace {

constexpr mode_t kEverybody = 0666;
constexpr mode_t kPermissions = 0777;

// What fopen() gives a new file.
mode_t modeOfNewFiles() {
    const mode_t mask = umask(0);
    umask(mask);
    return kEverybody & ~mask;
}

// A link stays a link: what it leads to is replaced.
std::string behindLinks(const std::string& path) {
    std::error_code missing;
    const auto target = std::filesystem::canonical(path, missing);
    return missing ? path : target.string();
}

} // namespace

ReplacementFile::ReplacementFile(std::string path)
    : path_(std::move(path)), target_(behindLinks(path_)), mode_(modeOfNewFiles()) {
    failure_ = check();
    if (!failure_)
        failure_ = make();
}

ReplacementFile::~ReplacementFile() {
    if (temporary_.empty())
        return;
    unlink(temporary_.c_str());
    removeAtSecondInterrupt(nullptr);
}

// A device or a pipe must not give way to a file, nor a file that its owner made read-only.
Outcome ReplacementFile::check() {
    struct stat found = {};
    if (!std::filesystem::path(target_).has_filename())
        return cannotWrite("that names no file");
    if (stat(target_.c_str(), &found) != 0)
        return {};
    if (S_ISDIR(found.st_mode))
        return cannotWrite("it is a folder");
    if (!S_ISREG(found.st_mode))
        return cannotWrite("it is no regular file");
    if (faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0)
        return cannotWrite(std::strerror(errno));
    mode_ = found.st_mode & kPermissions;
    return {};
}

Outcome ReplacementFile::make() {
    std::string name = std::filesystem::path(target_).parent_path() / ".zeltag-XXXXXX";
    const int fd = mkstemp(name.data());
    if (fd < 0)
        return cannotWrite(std::strerror(errno));
    close(fd);
    temporary_ = std::move(name);
    removeAtSecondInterrupt(temporary_.c_str());
    return {};
}

Outcome ReplacementFile::keep() {
    if (chmod(temporary_.c_str(), mode_) != 0 ||
        std::rename(temporary_.c_str(), target_.c_str()) != 0)
        return cannotWrite(std::strerror(errno));
    removeAtSecondInterrupt(nullptr);
    temporary_.clear();
    return {};
}

Outcome ReplacementFile::tryToFill(std::size_t size) const {
    std::FILE* const file = std::fopen(temporary_.c_str(), "w");
    if (!file)
        return cannotWrite(std::strerror(errno));
    const std::string filling(size, '#');
    errno = 0;
    std::fwrite(filling.data(), 1, filling.size(), file);
    int error = errno;
    if (std::fclose(file) != 0 && error == 0)
        error = errno;
    return error == 0 ? Outcome() : cannotWrite(std::strerror(error));
}

Failure ReplacementFile::cannotWrite(const std::string& reason) const {
    return {ExitCode::CannotWrite, fmt::format("{} can't be written: {}", path_, reason),
            "choose another file or folder", ""};
}

} // namespace zel::cli
