// SPDX-License-Identifier: MIT
// Runs a target on each file of the folders named, where there is no libFuzzer.
#include "fuzz/target.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

int run(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    // A copy of its own size, so that a sanitizer sees a read behind its end.
    const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    return LLVMFuzzerTestOneInput(data.data(), data.size());
}

} // namespace

int main(int count, char** names) {
    zel::fuzz::goesEveryWay = true;
    int files = 0;
    for (int i = 1; i < count; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(names[i])) {
            run(entry.path());
            ++files;
        }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
