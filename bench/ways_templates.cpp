// SPDX-License-Identifier: MIT
// A plain reader's template file, written and read by the library and by bare stdio.
#include "bench/plain_readers.h"
#include "bench/ways.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagTemplates.h"

#include <cstdio>
#include <memory>
#include <string>

namespace zel::bench {

namespace {

constexpr char kFile[] = "settings.txt";
constexpr char kCopy[] = "copy.txt";

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

std::string text;

int readLines() {
    const File file(std::fopen(kFile, "r"));
    text.clear();
    char line[128];
    while (file && std::fgets(line, sizeof line, file.get()))
        text += line;
    return !text.empty();
}

int writeBytes() {
    const File file(std::fopen(kCopy, "w"));
    return file && std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
}

bool begin() { return connectPlainReaders(1) && WriteDevCfgToFile(kFile) == 1 && readLines() == 1; }

void end() {
    USBDisconnect();
    std::remove(kFile);
    std::remove(kCopy);
}

constexpr Way kWays[] = {
    {"template-write", begin, [] { return WriteDevCfgToFile(kFile); }, end},
    {"template-write-by-fwrite", begin, writeBytes, end},
    {"template-read", begin, [] { return ReadDevCfgFmFile(kFile); }, end},
    {"template-read-by-fgets", begin, readLines, end},
};

} // namespace

std::span<const Way> templateWays() { return kWays; }

} // namespace zel::bench
