// SPDX-License-Identifier: MIT
// The check of a firmware file of 10 MB, beside reading the same file and zlib's checksum of it.
#include "bench/ways.h"
#include "frame/zelTagAPI.h"

#include <cstdio>
#include <memory>
#include <string>
#include <zlib.h>

namespace zel::bench {

namespace {

constexpr char kFile[] = "firmware.txt";
constexpr std::size_t kSize = 10'000'000;
constexpr std::size_t kBlock = 65536;

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

uLong fold(uLong checksum, const char* bytes, std::size_t size) {
    return crc32(checksum, reinterpret_cast<const Bytef*>(bytes), static_cast<uInt>(size));
}

// Records of the usual length, and the trailer.
std::string firmware() {
    std::string text;
    char line[64];
    for (unsigned address = 0; text.size() < kSize; address += 16) {
        std::snprintf(line, sizeof line, ":10%04X00%032X%02X\r\n", address & 0xFFFF,
                      address * 2654435761U, address * 7 & 0xFF);
        text += line;
    }
    std::snprintf(line, sizeof line, "%08lX", fold(0, text.data(), text.size()));
    return text + line;
}

bool writeFirmware() {
    const std::string text = firmware();
    const File file(std::fopen(kFile, "wb"));
    return file && std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
}

// By blocks that stay in the processor's cache, and of the trailer too: the least that could do it.
int readAndChecksum() {
    const File file(std::fopen(kFile, "rb"));
    if (!file)
        return 0;
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    const std::unique_ptr<char[]> block(new char[kBlock]);
    uLong checksum = 0;
    while (const std::size_t size = std::fread(block.get(), 1, kBlock, file.get()))
        checksum = fold(checksum, block.get(), size);
    return checksum != 0;
}

void removeFirmware() { std::remove(kFile); }

constexpr Way kWays[] = {
    {"trailer-check", writeFirmware,
     [] { return static_cast<int>(CheckTamperedFirmwareFile(kFile)); }, removeFirmware},
    {"trailer-by-crc32", writeFirmware, readAndChecksum, removeFirmware},
};

} // namespace

std::span<const Way> firmwareWays() { return kWays; }

} // namespace zel::bench
