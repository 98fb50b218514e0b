// SPDX-License-Identifier: MIT
// The trailer of a firmware file: the checksum of all lines as its last eight bytes.
#include "firmware/piece_reader.h"
#include "firmware/trailer.h"

#include <cstdint>

using namespace zel::firmware;

namespace {

constexpr std::size_t kLongestPiece = 127;
constexpr std::string_view kLineEnds = "\r\n";

// The last line of a text that comes in parts, blank lines left out. A part without a line feed
// begins with more than a line end.
class LastLine {
public:
    void add(std::string_view part) {
        const std::size_t last = part.find_last_not_of(kLineEnds);
        if (last == part.npos) {
            isEnded_ = isEnded_ || !part.empty();
            return;
        }
        const std::size_t start = part.rfind('\n', last) + 1;
        if (start > 0 || isEnded_)
            line_.clear();
        isEnded_ = part.find('\n', last) != part.npos;
        if (line_.size() < kMost)
            line_ += part.substr(start, kMost);
    }

    // Digits with a line end are a line like others, and the file then has no trailer.
    bool isDigits() const {
        const std::string_view line(line_.data(), line_.find_last_not_of(kLineEnds) + 1);
        return line.size() == 8 && line.find_first_not_of("0123456789ABCDEFabcdef") == line.npos;
    }

private:
    static constexpr std::size_t kMost = kLongestPiece; // what is longer is no digits

    std::string line_;
    bool isEnded_ = false;
};

// Folds the text as it comes, so that a file of any length takes the room of a block.
class FirmwareTrailer {
public:
    FirmwareTrailer(CRC& crc, std::FILE* file) : crc_(crc), pieces_(file, kLongestPiece) {
        crc_.Init();
    }
    ~FirmwareTrailer() { crc_.Free(); }
    FirmwareTrailer(const FirmwareTrailer&) = delete;
    FirmwareTrailer& operator=(const FirmwareTrailer&) = delete;

    // The first piece that is no text holds the digits.
    zelFileCheck find() {
        for (add(pieces_.wholeLines()); pieces_.next(); add(pieces_.wholeLines())) {
            if (!isFirmwareText(pieces_.piece()))
                return compared();
            add(pieces_.piece());
        }
        if (pieces_.failed())
            return finding(ZELTAGAPI_FAULT_OPEN, 0);
        return lastLine_.isDigits() ? finding(ZELTAGAPI_FAULT_TRAILER, pieces_.line())
                                    : finding(ZELTAGAPI_FAULT_NO_TRAILER, 0);
    }

private:
    zelFileCheck compared() {
        const std::string digits = digitsOf(~value_);
        const std::string_view told = pieces_.piece();
        return comparison(told == digits, told, digits, pieces_.line());
    }

    void add(std::string_view part) {
        crc_.fold(part, value_);
        lastLine_.add(part);
    }

    CRC& crc_;
    PieceReader pieces_;
    std::uint64_t value_ = CRC::kStart;
    LastLine lastLine_;
};

} // namespace

// Begins with a comment's, a record's or a message's mark, or holds a line feed or an "m" anywhere.
bool zel::firmware::isFirmwareText(std::string_view piece) {
    if (piece.empty())
        return false;
    const bool hasMark = piece[0] == '#' || piece[0] == ':' || piece[0] == 'M';
    return hasMark || piece.find_first_of("\nm") != piece.npos;
}

zelFileCheck zel::firmware::checkFirmwareTrailer(CRC& crc, const char* name) {
    const File file = openSource(name);
    return file ? FirmwareTrailer(crc, file.get()).find() : finding(ZELTAGAPI_FAULT_OPEN, 0);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool checkBootloaderCRC(unsigned long& status, unsigned long& checksum, std::string expected) {
    return status == 0 && digitsOf(checksum) == expected;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the callers give their text away.
bool CRC::validateCRC(const char* digits, std::string text) {
    unsigned long checksum = 0;
    unsigned long status = compute(*this, text, checksum);
    return checkBootloaderCRC(status, checksum, digits);
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
