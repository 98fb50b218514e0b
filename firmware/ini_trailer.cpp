// SPDX-License-Identifier: MIT
// The trailer of an INI file: the line [EOF], then a last line with a key and the checksum of all
// in front of it, both with CR LF.
#include "base/wipe.h"
#include "firmware/piece_reader.h"
#include "firmware/trailer.h"

#include <optional>
#include <utility>

using namespace zel::firmware;

namespace {

constexpr std::size_t kLongestPiece = 4095;
constexpr std::string_view kEnd = "[EOF]\r\n";
constexpr std::string_view kEndText = "[EOF]";
constexpr std::string_view kName = "iEndOfIniFile";

// What a value line tells, up to its first CR or LF.
std::optional<std::string> valueIn(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (!endsInCrLf(line) || equals == line.npos || line.substr(0, equals) != kName)
        return std::nullopt;
    const std::string_view value = line.substr(equals + 1);
    return std::string(value.substr(0, value.find_first_of("\r\n")));
}

// Lines that hold keys: wiped at the end and wherever they move to larger room.
class SecretText {
public:
    SecretText() = default;
    ~SecretText() { clear(); }
    SecretText(const SecretText&) = delete;
    SecretText& operator=(const SecretText&) = delete;

    void add(std::string_view piece) {
        if (text_.capacity() - text_.size() < piece.size())
            grow(2 * (text_.size() + piece.size()));
        text_ += piece;
    }
    std::string_view get() const { return text_; }

private:
    void grow(std::size_t room) {
        std::string larger;
        larger.reserve(room);
        larger += text_;
        clear();
        text_ = std::move(larger);
    }
    void clear() { zel::wipe(text_.data(), text_.size()); }

    std::string text_;
};

// A checksum of zero is one digit long.
std::string iniDigits(CRC& crc, std::string_view text) {
    unsigned long checksum = 0;
    compute(crc, text, checksum);
    return (checksum & 0xFFFFFFFF) != 0 ? digitsOf(checksum) : "0";
}

// The trailer's second line, of pieces that stand behind the first one.
zelFileCheck compare(CRC& crc, PieceReader& pieces, std::string_view text) {
    const auto told = pieces.next() ? valueIn(pieces.piece()) : std::nullopt;
    const int line = pieces.line();
    if (!told)
        return finding(ZELTAGAPI_FAULT_TRAILER, line);
    const bool isLast = !pieces.next();
    const std::string computed = iniDigits(crc, text);
    zelFileCheck check = comparison(*told == computed, *told, computed, line);
    if (!isLast && holds(check)) {
        check.fault = ZELTAGAPI_FAULT_BEHIND;
        check.line = pieces.line();
    }
    return check;
}

// The line [EOF] with another line end, or without one.
bool resemblesEnd(std::string_view piece) {
    return piece.substr(0, piece.find_last_not_of("\r\n") + 1) == kEndText;
}

zelFileCheck find(CRC& crc, std::FILE* file) {
    PieceReader pieces(file, kLongestPiece);
    SecretText text;
    int damaged = 0;
    while (pieces.next()) {
        if (pieces.piece() == kEnd)
            return compare(crc, pieces, text.get());
        if (resemblesEnd(pieces.piece()))
            damaged = pieces.line();
        text.add(pieces.piece());
    }
    if (pieces.failed())
        return finding(ZELTAGAPI_FAULT_OPEN, 0);
    return finding(damaged ? ZELTAGAPI_FAULT_TRAILER : ZELTAGAPI_FAULT_NO_TRAILER, damaged);
}

} // namespace

bool zel::firmware::endsInCrLf(std::string_view piece) { return piece.ends_with("\r\n"); }

zelFileCheck zel::firmware::checkIniTrailer(CRC& crc, const char* name) {
    const File file = openSource(name);
    return file ? find(crc, file.get()) : finding(ZELTAGAPI_FAULT_OPEN, 0);
}

// NOLINTBEGIN(performance-unnecessary-value-param): the callers give their text away.
bool CRC::checkIniCRC(const char* stored, const char* behind, std::string text) {
    return iniDigits(*this, text) == stored && !behind;
}

bool CRC::generateAndCheckIniCRC(std::FILE* file, std::string text) {
    PieceReader pieces(file, kLongestPiece);
    return holds(compare(*this, pieces, text));
}

// NOLINTEND(performance-unnecessary-value-param)

bool CRC::pullIniCRC(const char* name) { return holds(checkIniTrailer(*this, name)); }
