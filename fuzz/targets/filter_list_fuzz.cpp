// SPDX-License-Identifier: MIT
// Lines of the device filter list, up to each line end.
#include "frame/calls/filter_list.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/target.h"

#include <array>
#include <cstring>

using namespace zel::fuzz;

namespace {

constexpr int kRows = std::size(decltype(zelTagVidPid.rows){});
constexpr char kCanary = 0x5A;

// A row is whole, and the name has its end.
void requireRow(const tsVidPidRow& row) {
    require(row.vendor != 0 && row.product != 0 && row.vendorName[0] != '\0');
    require(std::memchr(row.vendorName, '\0', sizeof row.vendorName) != nullptr);
}

void requireValue(char* line, int size) {
    std::array<char, 48> out;
    out.fill(kCanary);
    parseStrValue(line, "VID=", out.data(), size);
    require(out[static_cast<std::size_t>(size)] == kCanary);
}

// The whole file, and the fixed lines where there is none.
void load(std::string_view text) {
    listIndex = 0;
    setInput(text, "zelTagVIDPID.txt");
    LoadzelTagVidPidListFile();
    require(listIndex >= 0 && listIndex <= kRows && VidPidVersion[0] == '\0');
    listIndex = 0;
    setInput({});
    LoadzelTagVidPidListFile();
    require(listIndex > 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tsVidPidList before = zelTagVidPid;
    Input input(data, size);
    if (isOneOf(4096, input.text()))
        load(input.text());
    std::memcpy(&zelTagVidPid, &before, sizeof before);
    listIndex = input.byte() % (kRows + 2) - 1;
    const int first = listIndex;
    while (!input.isEmpty()) {
        std::array<char, 257> line = {};
        input.textUpTo('\n').copy(line.data(), line.size() - 1);
        fillvidpidList(line.data());
        requireValue(line.data(), static_cast<int>(input.bytes().size() % 46));
    }
    require(listIndex >= first && listIndex <= kRows);
    for (int row = std::max(first, 0); row < listIndex; ++row)
        requireRow(zelTagVidPid.rows[row]);
    return 0;
}
