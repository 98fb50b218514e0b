// SPDX-License-Identifier: MIT
// The trailer of a template file: a marker line, then a line with a key and the checksum of all in
// front of the marker.
#include "base/runtime.h"
#include "firmware/piece_reader.h"
#include "firmware/trailer.h"

#include <optional>

using namespace zel::firmware;

namespace {

constexpr std::size_t kLongestPiece = 127;
constexpr char kMarker[] = "/--- iEndOfHwgFile \n";
constexpr char kMarkerCrLf[] = "/--- iEndOfHwgFile \r\n";
constexpr char kMarkerText[] = "/--- iEndOfHwgFile";
constexpr char kName[] = "iEndOfHwgFile ";

// The digits of a value line: behind "=" and the one character that follows it, whichever it is, up
// to the line feed.
std::optional<std::string> digitsIn(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == line.npos || _stricmp(std::string(line.substr(0, equals)).c_str(), kName) != 0)
        return std::nullopt;
    const std::string_view value = line.substr(equals + 1);
    const std::string_view told = value.substr(0, value.find('\n'));
    if (told.empty())
        return std::nullopt;
    return std::string(told.substr(1));
}

// A marker, whatever its line end.
bool resemblesMarker(std::string piece) {
    piece.erase(piece.find_last_not_of(" \r\n") + 1);
    return _stricmp(piece.c_str(), kMarkerText) == 0;
}

// Looks through the pieces of one file.
class TemplateTrailer {
public:
    TemplateTrailer(CRC& crc, std::FILE* file) : crc_(crc), pieces_(file, kLongestPiece) {}

    zelFileCheck find() {
        while (pieces_.next())
            if (const auto digits = afterPiece(std::string(pieces_.piece())))
                return compare(*digits);
        if (pieces_.failed())
            return finding(ZELTAGAPI_FAULT_OPEN, 0);
        return finding(damaged_ ? ZELTAGAPI_FAULT_TRAILER : ZELTAGAPI_FAULT_NO_TRAILER, damaged_);
    }

private:
    // A marker hands over to the piece behind it; both are left out of the text, also when that
    // piece is no value line.
    std::optional<std::string> afterPiece(const std::string& piece) {
        decideLineEnd(piece);
        const bool isMarker = crc_.checkEndOfLineValue(*lineEnd_, piece.c_str()) == 0;
        if (resemblesMarker(piece))
            damaged_ = pieces_.line();
        if (!isMarker) {
            text_ += piece;
            return std::nullopt;
        }
        if (!pieces_.next())
            return std::nullopt;
        damaged_ = pieces_.line();
        return digitsIn(pieces_.piece());
    }

    // By the first piece of the file alone.
    void decideLineEnd(const std::string& piece) {
        if (!lineEnd_)
            lineEnd_ = piece.find("\r\n") != piece.npos;
    }

    zelFileCheck compare(const std::string& digits) {
        unsigned long checksum = 0;
        compute(crc_, text_, checksum);
        const std::string computed = digitsOf(checksum);
        return comparison(digits == computed, digits, computed, pieces_.line());
    }

    CRC& crc_;
    PieceReader pieces_;
    std::optional<int> lineEnd_;
    std::string text_;
    int damaged_ = 0; // the line of what would be a trailer in another form
};

} // namespace

zelFileCheck zel::firmware::checkTemplateTrailer(CRC& crc, const char* name) {
    const File file = openSource(name);
    return file ? TemplateTrailer(crc, file.get()).find() : finding(ZELTAGAPI_FAULT_OPEN, 0);
}

int CRC::checkEndOfLineValue(int lineEnd, const char* line) {
    return _stricmp(line, lineEnd != 0 ? kMarkerCrLf : kMarker);
}

bool CRC::pullSecureCRC(const char* name) { return holds(checkTemplateTrailer(*this, name)); }

// The line ends are LF, also in a file whose lines end in CR LF: that one doesn't verify then.
bool CRC::appendCrc(const char* name, unsigned long& checksum) const {
    const File file = openFile(name, "a");
    if (!file)
        return false;
    std::fprintf(file.get(), "%s%s= %s", kMarker, kName, digitsOf(checksum).c_str());
    return true;
}

long CRC::generateAppendCRC(const char* name) {
    unsigned long checksum = 0;
    const unsigned long status = compute(*this, getDataFromFile(name), checksum);
    appendCrc(name, checksum);
    return static_cast<long>(status);
}
