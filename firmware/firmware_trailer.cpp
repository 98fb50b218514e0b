// SPDX-License-Identifier: MIT
// The trailer of a firmware file: the checksum of all lines as its last eight bytes.
#include "firmware/piece_reader.h"
#include "firmware/trailer.h"

using namespace zel::firmware;

namespace {

constexpr std::size_t kLongestPiece = 127;

// A firmware text's usual room, at once: growing there by steps takes longer than the checksum.
// Memory that stays unused is never touched.
constexpr std::size_t kUsualText = std::size_t{1} << 21;

zelFileCheck compare(CRC& crc, std::string_view text, const std::string& digits, int line) {
    unsigned long checksum = 0;
    unsigned long status = compute(crc, text, checksum);
    const bool isEqual = checkBootloaderCRC(status, checksum, digits);
    return comparison(isEqual, digits, digitsOf(checksum), line);
}

// Digits with a line end are a line like others, and the file then has no trailer.
bool endsInDigits(std::string_view text) {
    text = text.substr(0, text.find_last_not_of("\r\n") + 1);
    text = text.substr(text.rfind('\n') + 1);
    return text.size() == 8 && text.find_first_not_of("0123456789ABCDEFabcdef") == text.npos;
}

} // namespace

// Begins with a comment's, a record's or a message's mark, or holds a line feed or an "m" anywhere.
bool zel::firmware::isFirmwareText(std::string_view piece) {
    if (piece.empty())
        return false;
    const bool hasMark = piece[0] == '#' || piece[0] == ':' || piece[0] == 'M';
    return hasMark || piece.find_first_of("\nm") != piece.npos;
}

// The first piece that is no text holds the digits.
zelFileCheck zel::firmware::checkFirmwareTrailer(CRC& crc, std::FILE* file, std::size_t room) {
    PieceReader pieces(file, kLongestPiece);
    std::string text;
    text.reserve(room);
    for (text = pieces.wholeLines(); pieces.next(); text += pieces.wholeLines()) {
        const std::string_view piece = pieces.piece();
        if (!isFirmwareText(piece))
            return compare(crc, text, std::string(piece), pieces.line());
        text += piece;
    }
    if (pieces.failed())
        return finding(ZELTAGAPI_FAULT_OPEN, 0);
    return endsInDigits(text) ? finding(ZELTAGAPI_FAULT_TRAILER, pieces.line())
                              : finding(ZELTAGAPI_FAULT_NO_TRAILER, 0);
}

zelFileCheck zel::firmware::checkFirmwareTrailer(CRC& crc, const char* name) {
    const File file = openSource(name);
    return file ? checkFirmwareTrailer(crc, file.get(), kUsualText)
                : finding(ZELTAGAPI_FAULT_OPEN, 0);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool checkBootloaderCRC(unsigned long& status, unsigned long& checksum, std::string expected) {
    return status == 0 && digitsOf(checksum) == expected;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the callers give their text away.
bool CRC::validateCRC(const char* digits, std::string text) {
    return holds(compare(*this, text, digits, 0));
}

bool CRC::pullBootloaderCRC(const char* name) { return holds(checkFirmwareTrailer(*this, name)); }

bool CRC::appendBootloaderCRC(const char* name, unsigned long& checksum) {
    const File file = openFile(name, "a");
    if (!file)
        return false;
    std::fputs(digitsOf(checksum).c_str(), file.get());
    return true;
}

bool CRC::calculateBootloaderCRC(const char* name) {
    unsigned long checksum = 0;
    const unsigned long status = compute(*this, getDataFromFile(name), checksum);
    return status == 0 && appendBootloaderCRC(name, checksum);
}
