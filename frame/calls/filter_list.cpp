// SPDX-License-Identifier: MIT
// Reads the device filter list, from a file or from its fixed lines.
#include "frame/calls/filter_list.h"

#include "base/runtime.h"
#include "base/text.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <unistd.h>

using namespace zel;

namespace {

constexpr char kFileName[] = "zelTagVIDPID.txt";
constexpr char kAbsoluteFile[] = "/home/norvane/zelTagVidPid.txt";
constexpr int kLineSize = 257;
constexpr int kNameLimit = 45;
constexpr int kNumberLimit = 45;
constexpr int kRows = std::size(decltype(zelTagVidPid.rows){});

// A line of the fixed list, in the form of a line of the file.
#define PRODUCT(name, vendor, product, text)
#define LISTED(name, vendor, product, filter, text)                                                \
    "VID=\"" #vendor "\"    PID=\"" #product "\"    VENDORNAME=\"" #vendor ":" #product " " text   \
    "\"  FILTER1MASK=\"" #filter "\" FILTER1COMPARE=\"" #filter "\"",

constexpr const char* kFixedLines[] = {
    "DEFAULT1MASK=\"8000\"  DEFAULT1COMPARE=\"8000\"",
#include "frame/products.def"
};

#undef LISTED
#undef PRODUCT

// A value of a line as text that always has its end.
struct Value {
    std::array<char, kNameLimit + 1> text = {};

    Value(char* line, const char* key, int limit) { parseStrValue(line, key, text.data(), limit); }
};

void takeNumber(char* line, const char* key, std::uint64_t& number) {
    const Value value(line, key, kNumberLimit);
    unsigned long parsed = 0;
    if (std::sscanf(value.text.data(), "%04lX", &parsed) == 1)
        number = parsed;
}

std::uint16_t identityOf(char* line, const char* key) {
    const Value value(line, key, kNumberLimit);
    unsigned parsed = 0;
    return std::sscanf(value.text.data(), "%04X", &parsed) == 1 ? static_cast<std::uint16_t>(parsed)
                                                                : std::uint16_t{0};
}

// Told for applications; the file is open already and nothing reads this.
void tellPath() {
    std::array<char, sizeof path> folder = {};
    if (!getcwd(folder.data(), folder.size()))
        folder[0] = '\0';
    const std::size_t length = copyText(path, folder.data());
    copyText(std::span(path).subspan(length), kFileName);
}

std::FILE* openList() {
    std::FILE* file = nullptr;
    if (fopen_s(&file, kFileName, "r") == 0) {
        tellPath();
        return file;
    }
    return fopen_s(&file, kAbsoluteFile, "r") == 0 ? file : nullptr;
}

void readLines(std::FILE* file) {
    std::memset(VidPidVersion, 0, sizeof VidPidVersion);
    char line[kLineSize] = {};
    while (std::fgets(line, sizeof line, file)) {
        fillvidpidList(line);
        std::memset(line, 0, sizeof line);
    }
    std::fclose(file);
}

void takeFixedLines() {
    for (const char* fixed : kFixedLines) {
        char line[kLineSize] = {};
        copyText(line, fixed);
        fillvidpidList(line);
    }
}

} // namespace

void parseStrValue(char* line, const char* key, char* out, int size) {
    const std::ptrdiff_t room = std::max(size, 0);
    std::memset(out, 0, static_cast<std::size_t>(room));
    const char* const found = std::strstr(line, key);
    if (!found || found[std::strlen(key)] != '"')
        return;
    const char* const start = found + std::strlen(key) + 1;
    const char* const end = std::strchr(start, '"');
    if (!end)
        return;
    const std::ptrdiff_t length = std::min<std::ptrdiff_t>(end - start, room);
    std::memcpy(out, start, static_cast<std::size_t>(length));
}

// The filter pair of the row to come is stored before it is known that the line makes a row.
void fillvidpidList(char* line) {
    if (listIndex < 0 || listIndex >= kRows)
        return;
    tsVidPidRow& row = zelTagVidPid.rows[listIndex];
    takeNumber(line, "DEFAULT1MASK=", zelTagVidPid.defaults[1].mask);
    takeNumber(line, "DEFAULT1COMPARE=", zelTagVidPid.defaults[1].compare);
    const std::uint16_t vendor = identityOf(line, "VID=");
    const std::uint16_t product = identityOf(line, "PID=");
    takeNumber(line, "FILTER1MASK=", row.filter[1].mask);
    takeNumber(line, "FILTER1COMPARE=", row.filter[1].compare);
    const Value name(line, "VENDORNAME=", kNameLimit);
    if (vendor == 0 || product == 0 || name.text[0] == '\0')
        return;
    row.vendor = vendor;
    row.product = product;
    std::memcpy(row.vendorName, name.text.data(), kNameLimit);
    ++listIndex;
}

// The default pair keeps its last values over a reload.
void LoadzelTagVidPidListFile() {
    std::memset(zelTagVidPid.rows, 0, sizeof zelTagVidPid.rows);
    if (std::FILE* const file = openList())
        readLines(file);
    else
        takeFixedLines();
}
