// SPDX-License-Identifier: MIT
// Fetches a card's tracks and cuts fields from them.
#include "family/band/band.h"
#include "family/band/frame.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

using namespace zel;

namespace {

constexpr int kTrackSize = 257;
constexpr int kChunkSize = 10;
constexpr int kLengthBits = 127; // of the byte in front of the characters
constexpr int kLastCopied = 255;

using TrackBuffer = std::array<char, kTrackSize>;
constinit TrackBuffer track = {};     // length, then characters
constinit TrackBuffer fieldText = {}; // of the last field
constinit TrackBuffer copied = {};    // for callers that read it byte by byte

// What a track has of its own. The codes are those of the reader, not of the card's coding.
struct TrackKind {
    int highestChunk;
    std::string_view characters; // by code
    char first;                  // delimiter in front of the data
    char end;                    // end sentinel
    char separator;
};

constexpr std::string_view kSevenBit = " !\"#$%&'()*+,-./0123456789:;<=>?"
                                       "@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_";
constexpr std::string_view kFiveBit = "0123456789:;<=>?";
static_assert(kSevenBit.size() == 64 && kFiveBit.size() == 16);

constexpr TrackKind kKinds[] = {{8, kSevenBit, 0x15, 0x5F, 0x3E},
                                {4, kFiveBit, 0x0B, 0x0F, 0x0D},
                                {10, kFiveBit, 0x0B, 0x0F, 0x0D}};

const TrackKind* kindOf(unsigned number) {
    return number >= 1 && number <= std::size(kKinds) ? &kKinds[number - 1] : nullptr;
}

void convertText(const TrackKind& kind, char* text, int size) {
    const std::size_t mask = kind.characters.size() - 1;
    std::transform(text, text + size, text, [&](char code) {
        return kind.characters[static_cast<std::size_t>(code) & mask];
    });
}

int lengthOf(const TrackBuffer& data) { return data[0] & kLengthBits; }

bool fetchChunk(unsigned number, int chunk) {
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    band::Command command("G");
    command.add(kDigits.substr(number, 1)).add(kDigits.substr(static_cast<std::size_t>(chunk), 1));
    band::Bytes bytes;
    if (!band::ask(command.add("00"), bytes))
        return false;
    std::copy(bytes.begin(), bytes.end(), &track[static_cast<std::size_t>(chunk) * kChunkSize]);
    return true;
}

// The first chunk tells how many there are.
void fetch(unsigned number, const TrackKind& kind) {
    int highest = kind.highestChunk;
    for (int chunk = 0; chunk <= highest; ++chunk) {
        if (!fetchChunk(number, chunk)) {
            track.fill(0);
            return;
        }
        highest = std::min(highest, lengthOf(track) / kChunkSize);
    }
}

// The characters behind the length; a place beyond them meets a zero.
char codeAt(std::size_t place) { return 1 + place < track.size() ? track[1 + place] : '\0'; }

bool isDelimiter(const TrackKind& kind, char code) {
    return code == kind.first || code == kind.end || code == kind.separator;
}

// Where a field begins, or nothing at the end of the data. Delimiters count down from the number
// as unsigned, so 0 never comes back to 0 once one was met.
bool findField(const TrackKind& kind, std::uint32_t count, std::size_t offset, std::size_t& place) {
    for (place = 0; codeAt(place) != '\0';) {
        if (isDelimiter(kind, codeAt(place)))
            --count;
        ++place;
        if (count == 0 && codeAt(place + offset) != '\0')
            return true;
    }
    return false;
}

// Where a field stops. Of `length` only whether it is 0 counts. The terminator is compared as a
// signed byte, so 255 never fits.
bool findStop(const TrackKind& kind, int length, int terminator, std::size_t& place) {
    for (; codeAt(place) != '\0'; ++place)
        if (static_cast<signed char>(codeAt(place)) == terminator || length == 0 ||
            codeAt(place) == kind.end || codeAt(place) == kind.separator)
            return true;
    return false;
}

// As many characters as lie between the start and the stop, copied from the stop on.
void copyField(const TrackKind& kind, unsigned field, unsigned offset, int length, int terminator) {
    std::size_t place = 0;
    if (!findField(kind, field, offset, place))
        return;
    const std::size_t start = place + offset;
    std::size_t stop = start;
    if (!findStop(kind, length, terminator, stop))
        return;
    for (std::size_t i = 0; i < stop - start && i < fieldText.size(); ++i)
        fieldText[i] = codeAt(stop + i);
}

} // namespace

char* zelband_GetTrackData(unsigned short number, short convert) {
    track.fill(0);
    const TrackKind* const kind = kindOf(number);
    if (!kind)
        return track.data();
    fetch(number, *kind);
    if (convert != 0)
        convertText(*kind, &track[1], lengthOf(track));
    return track.data();
}

unsigned char zelband_GetTrackData_BYTE(unsigned short number, short convert,
                                        unsigned short index) {
    if (index == 0)
        std::copy_n(zelband_GetTrackData(number, convert), kLastCopied + 1, copied.begin());
    return index < kLastCopied ? static_cast<unsigned char>(copied[index]) : 0;
}

// The whole buffer is converted, also the zeros behind the field: the text has no end.
char* zelband_GetTrackFieldOffset(unsigned short number, unsigned short field,
                                  unsigned short offset, unsigned short length,
                                  unsigned short terminator, short convert) {
    zelband_GetTrackData(number, 0);
    fieldText.fill(0);
    const TrackKind* const kind = kindOf(number);
    if (!kind)
        return fieldText.data();
    copyField(*kind, field, offset, length, terminator);
    if (convert != 0)
        convertText(*kind, fieldText.data(), kTrackSize);
    return fieldText.data();
}
