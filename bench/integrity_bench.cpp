// SPDX-License-Identifier: MIT
// Times the check of a firmware file beside reading the same file and zlib's checksum of it. Leaves
// the file in the working directory.
#include "frame/zelTagAPI.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>
#include <zlib.h>

namespace {

constexpr char kFile[] = "firmware.txt";
constexpr std::size_t kSize = std::size_t{1} << 20;

uLong checksumOf(const void* bytes, std::size_t size) {
    return crc32(0, static_cast<const Bytef*>(bytes), static_cast<uInt>(size));
}

// Records of the usual length, and the trailer.
bool writeFirmware() {
    std::string text;
    char line[64];
    for (unsigned address = 0; text.size() < kSize; address += 16) {
        std::snprintf(line, sizeof line, ":10%04X00%032X%02X\r\n", address & 0xFFFF,
                      address * 2654435761U, address * 7 & 0xFF);
        text += line;
    }
    std::snprintf(line, sizeof line, "%08lX", checksumOf(text.data(), text.size()));
    text += line;
    std::FILE* const file = std::fopen(kFile, "wb");
    if (!file)
        return false;
    const bool isWhole = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    return std::fclose(file) == 0 && isWhole;
}

void readAndChecksum(benchmark::State& state) {
    for (auto step : state) {
        static_cast<void>(step);
        std::vector<char> text(kSize + 64);
        std::FILE* const file = std::fopen(kFile, "rb");
        if (!file) {
            state.SkipWithError("no file");
            break;
        }
        const std::size_t size = std::fread(text.data(), 1, text.size(), file);
        std::fclose(file);
        benchmark::DoNotOptimize(checksumOf(text.data(), size));
    }
}

void check(benchmark::State& state) {
    for (auto step : state) {
        static_cast<void>(step);
        if (CheckTamperedFirmwareFile(kFile) != 1) {
            state.SkipWithError("the file doesn't hold");
            break;
        }
    }
}

BENCHMARK(readAndChecksum)->Name("read-and-crc32");
BENCHMARK(check);

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (count != 1 || !writeFirmware())
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
