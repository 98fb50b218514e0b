// SPDX-License-Identifier: MIT
// A pseudo terminal in place of a serial line: a program opens its path, a test holds the far end.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <grp.h>
#include <iostream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace zel::test {

class PseudoLine {
public:
    PseudoLine() : far_(posix_openpt(O_RDWR | O_NOCTTY)) {
        const bool usable = far_ >= 0 && grantpt(far_) == 0 && unlockpt(far_) == 0;
        const char* const path = usable ? ptsname(far_) : nullptr;
        if (!path) {
            std::cout << "skipped: this machine has no terminals" << std::endl;
            std::exit(77);
        }
        path_ = path;
        near_ = open(path, O_RDWR | O_NOCTTY); // keeps the line up between two opens
    }
    ~PseudoLine() {
        close(near_);
        close(far_);
    }
    PseudoLine(const PseudoLine&) = delete;
    PseudoLine& operator=(const PseudoLine&) = delete;

    const std::string& path() const { return path_; }
    int far() const { return far_; }
    int near() const { return near_; }

    // The name of the node's group.
    std::string group() const {
        struct stat node = {};
        const ::group* const owners =
            stat(path_.c_str(), &node) == 0 ? getgrgid(node.st_gid) : nullptr;
        return owners ? owners->gr_name : "";
    }

private:
    int far_;
    int near_ = -1;
    std::string path_;
};

} // namespace zel::test
