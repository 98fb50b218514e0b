// SPDX-License-Identifier: MIT
// Facts about whatever a reader of a trailer finds.
#include "fuzz/support/trailer_check.h"

#include "firmware/piece_reader.h"
#include "firmware/trailer.h"
#include "fuzz/support/memory_file.h"

#include <cstring>

using namespace std::string_view_literals;

namespace zel::fuzz {

namespace {

constexpr unsigned kFew = 256; // one input of so many goes a long way

bool isText(const char (&digits)[9]) { return std::memchr(digits, '\0', sizeof digits) != nullptr; }

void requireSound(const zelFileCheck& found) {
    const bool holds = found.fault == ZELTAGAPI_FAULT_NONE;
    require(found.fault >= ZELTAGAPI_FAULT_NONE && found.fault <= ZELTAGAPI_FAULT_CHECKSUM);
    require(found.line >= 0 && isText(found.told) && isText(found.computed));
    require(!holds || std::strcmp(found.told, found.computed) == 0);
}

// A file that was sealed holds, unless it had a trailer before, or lines that end in CR LF.
void requireSealHolds(std::string_view text) {
    setOutput(text);
    CRC crc;
    crc.generateAppendCRC(kOutputFile);
    const bool isOwnLine = text.empty() || text.back() == '\n';
    const bool isPlain = text.find('\r') == text.npos && text.find('\0') == text.npos &&
                         text.find("ndOf") == text.npos;
    require(!isOwnLine || !isPlain || crc.pullSecureCRC(kOutputFile));
}

// The other calls on firmware files; a seal behind one line of firmware holds.
void sealFirmware(std::string_view text, bool holds) {
    CRC crc;
    require(crc.pullBootloaderCRC(kInputFile) == holds);
    crc.validateCRC("00000000", std::string(text));
    setOutput(text);
    require(crc.calculateBootloaderCRC(kOutputFile));
    const bool isOneLine = text.starts_with(':') && text.ends_with('\n') &&
                           text.find_first_of("\n\0"sv) == text.size() - 1;
    require(!isOneLine || text.size() > 100 || crc.pullBootloaderCRC(kOutputFile));
}

// The other calls on INI files say the same as the whole check.
void checkIni(std::string_view text, bool holds) {
    CRC crc;
    require(crc.pullIniCRC(kInputFile) == holds && crc.checkCRC(kInputFile, 2) == holds);
    require(!crc.checkIniCRC("0", "behind", std::string(text)));
    const firmware::File file = firmware::openFile(kInputFile, "rb");
    crc.generateAndCheckIniCRC(file.get(), std::string(text));
}

void goLongWay(zelFileKind kind, std::string_view text, bool holds) {
    require(zelTagAPI_checkFile(nullptr, kind, nullptr) == 0);
    require(zelTagAPI_checkFile(kInputFile, kind, nullptr) == holds);
    if (kind == ZELTAGAPI_FILE_TEMPLATE)
        requireSealHolds(text);
    else if (kind == ZELTAGAPI_FILE_FIRMWARE)
        sealFirmware(text, holds);
    else
        checkIni(text, holds);
}

} // namespace

int checkTrailerOf(zelFileKind kind, const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Input(data, size).text();
    CRC crc;
    setInput(text);
    const zelFileCheck found = firmware::checkTrailer(crc, kInputFile, kind);
    requireSound(found);
    if (isOneOf(kFew, text))
        goLongWay(kind, text, found.fault == ZELTAGAPI_FAULT_NONE);
    return 0;
}

} // namespace zel::fuzz
