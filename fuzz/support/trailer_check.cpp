// SPDX-License-Identifier: MIT
// Facts about whatever a reader of a trailer finds.
#include "fuzz/support/trailer_check.h"

#include "firmware/piece_reader.h"
#include "firmware/trailer.h"
#include "fuzz/support/memory_file.h"

#include <cstring>

namespace zel::fuzz {

namespace {

constexpr std::size_t kRoom = 4096; // of a firmware text

bool isText(const char (&digits)[9]) { return std::memchr(digits, '\0', sizeof digits) != nullptr; }

void requireSound(const zelFileCheck& found) {
    const bool holds = found.fault == ZELTAGAPI_FAULT_NONE;
    require(found.fault >= ZELTAGAPI_FAULT_NONE && found.fault <= ZELTAGAPI_FAULT_CHECKSUM);
    require(found.line >= 0 && isText(found.told) && isText(found.computed));
    require(!holds || std::strcmp(found.told, found.computed) == 0);
}

zelFileCheck checkInput(zelFileKind kind, CRC& crc) {
    if (kind != ZELTAGAPI_FILE_FIRMWARE)
        return firmware::checkTrailer(crc, kInputFile, kind);
    const firmware::File file = firmware::openFile(kInputFile, "rb");
    return firmware::checkFirmwareTrailer(crc, file.get(), kRoom);
}

// A file that was sealed holds, unless it had a trailer before, or lines that end in CR LF.
void requireSealHolds(std::string_view text) {
    if (text.find('\r') != text.npos || text.find('\0') != text.npos ||
        text.find("ndOf") != text.npos)
        return;
    setOutput(text);
    CRC crc;
    crc.generateAppendCRC(kOutputFile);
    const bool isOwnLine = text.empty() || text.back() == '\n';
    require(!isOwnLine || crc.pullSecureCRC(kOutputFile));
}

} // namespace

int checkTrailerOf(zelFileKind kind, const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Input(data, size).text();
    CRC crc;
    setInput(text);
    requireSound(checkInput(kind, crc));
    if (kind == ZELTAGAPI_FILE_TEMPLATE && isOneOf(128, text))
        requireSealHolds(text);
    return 0;
}

} // namespace zel::fuzz
