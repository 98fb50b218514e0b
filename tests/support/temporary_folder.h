// SPDX-License-Identifier: MIT
// A folder of its own as the working directory, for a scope.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <string>

namespace zel::test {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "zelXXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        std::filesystem::current_path(name);
        path_ = std::filesystem::current_path();
    }
    ~TemporaryFolder() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path before_ = std::filesystem::current_path();
    std::filesystem::path path_;
};

} // namespace zel::test
