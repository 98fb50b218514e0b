// SPDX-License-Identifier: MIT
// A proximity reader on a line that answers anything to the ASCII protocol: the listing, the
// version, the identifier. An input is the operation, then what comes.
#include "family/tag/ascii_protocol.h"
#include "fuzz/support/any_stream.h"
#include "fuzz/support/tag_reader.h"

#include <cstring>

using namespace zel::fuzz;

namespace {

constexpr unsigned char kCanary = 0x5A;
constexpr int kReadId = 0; // on a line that falls silent it waits long

int readId() {
    unsigned char id[9];
    std::memset(id, kCanary, sizeof id);
    const int bits = acp_getActiveID(id, sizeof id - 1);
    require(id[8] == kCanary && (bits != 0 || id[0] == kCanary));
    return acp_getActiveID(id, 7) | acp_getActiveID(nullptr, 8) | 1;
}

// Counts that a listing may tell are brought into their ranges.
int readListing() {
    const int result = AcpReadCfg();
    const sIDBitCnts& counts = DevDat[0].Cfg[0].sIDBitCnts;
    if (!DevDat[0].pPort)
        return result;
    require(counts.iIDBitCnt >= 1 && counts.iIDBitCnt <= 64 && counts.iTotalBitCnt >= 26);
    return result;
}

// Counts and states of all kinds go out; numbers of formats without a conversion stay behind.
int writeListing(int counts) {
    tsTagCfg& config = DevDat[0].Cfg[0];
    config.sIDDispParms2.iLeadChrCnt = static_cast<std::int16_t>(counts % 5 - 1);
    config.sLEDCtrl.bAppCtrlsLED = 1;
    config.sLEDCtrl.iRedLEDState = config.sLEDCtrl.iGrnLEDState = 1;
    SendAcpCommand("plain", 1);
    SendAcpCommand(nullptr, 1);
    return AcpWriteCfg();
}

int run(int operation, int counts) {
    switch (operation) {
    case kReadId:
        return readId();
    case 1:
        return writeListing(counts);
    case 2:
        return zel::tag::beepByAscii(0x82) & zel::tag::beepByAscii(2) & zel::tag::resetByAscii();
    default:
        return readListing();
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t way = input.byte();
    const int operation = way % 16;
    const bool isEndless = operation == kReadId || (way & 0x80) != 0;
    plugAnyLine(1, input, isEndless ? Coming::Forever : Coming::Once);
    useACPMode = 1;
    if (input.isEmpty())
        DevDat[0].pPort = nullptr;
    const int result = run(operation, way / 16 % 8);
    require(result == 0 || result == 1);
    requireSoundTag();
    return 0;
}
