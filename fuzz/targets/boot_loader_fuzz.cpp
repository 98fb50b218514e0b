// SPDX-License-Identifier: MIT
// The boot loader of a reader that answers anything: its entry, then lines until one is refused. An
// input is the processor, what earlier flashes learned of the reader, and the answers.
#include "firmware/boot_loader.h"
#include "firmware/flash.h"
#include "fuzz/support/any_reader.h"

using namespace zel::fuzz;

namespace {

constexpr int kMostLines = 16;

int sendLine(ZelTagUsbBootload& loader, int count) {
    char line[21] = {};
    char reply = 0;
    const int result = loader.sendLine(count, line, &reply);
    require(result == 0 || result == 1);
    require(result == 0 || reply == '.' || reply == 'E');
    return FlashReader().fwflashLogs(reply, result);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t micro = input.byte();
    const std::uint8_t known = input.byte();
    ReaderIsLark = known & 1;
    fastBootloader = known >> 1 & 1;
    delayNextLine = known >> 2 & 1;
    plugAnyReader(1, input);
    ZelTagUsbBootload loader;
    int result = loader.enterBlMode(micro);
    for (int line = 0; line < kMostLines && result != 0; ++line)
        result = sendLine(loader, line * 2);
    require(result != 0 || DevDat[0].lLastErr != 0);
    return 0;
}
