// SPDX-License-Identifier: MIT
// Reads the body of a firmware file.
#include "firmware/image.h"

#include "base/pause.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <utility>

namespace {

constexpr char kMicroMark = 'M';
constexpr char kBodyMark = ':';

// The value of an upper-case hexadecimal digit, -1 for any other character.
int digitOf(char character) {
    if (character >= '0' && character <= '9')
        return character - '0';
    return character >= 'A' && character <= 'F' ? character - 'A' + 10 : -1;
}

// A line that can't be read throws: lines that end there are no whole firmware.
std::ifstream open(const char* name) {
    std::ifstream file = name ? std::ifstream(name) : std::ifstream();
    file.exceptions(std::ios::badbit);
    return file;
}

bool begins(const std::string& line, char mark) { return !line.empty() && line.front() == mark; }

signed char processorIn(const std::string& line) {
    return static_cast<signed char>((line.size() > 1 ? line[1] : '\0') - '0');
}

} // namespace

bool Utilities::openInputFile(const char* name) {
    std::ifstream file = open(name);
    if (!file.is_open())
        return false;
    try {
        takeLines(file);
        return true;
    } catch (const std::ios_base::failure&) {
        return false;
    }
}

void Utilities::takeLines(std::istream& file) {
    bool behindMicro = false;
    for (std::string line; std::getline(file, line);) {
        if (begins(line, kMicroMark) && !std::exchange(behindMicro, true))
            micro_ = processorIn(line);
        else if (behindMicro && begins(line, kBodyMark))
            lines_.push_back(line);
    }
}

void Utilities::strToUpper(char* text) {
    for (; *text != '\0'; ++text)
        if (*text >= 'a' && *text <= 'z')
            *text = static_cast<char>(*text - 32);
}

unsigned short Utilities::validateBuffer(char* line, const unsigned char* output, char** digits) {
    if (!line || !output || line[0] != kBodyMark)
        return 0;
    strToUpper(line);
    *digits = line + 1;
    const auto length = static_cast<std::uint16_t>(std::strlen(*digits));
    return length % 2 == 0 ? static_cast<unsigned short>(length / 2) : std::uint16_t{0};
}

// Each byte lands behind the digits already read, so line and output may be one buffer.
unsigned short Utilities::encryptData(char* line, unsigned char* output) {
    char* digits = nullptr;
    const unsigned short count = validateBuffer(line, output, &digits);
    for (unsigned short i = 0; i < count; ++i) {
        const int high = digitOf(digits[std::size_t{2} * i]);
        const int low = digitOf(digits[std::size_t{2} * i + 1]);
        if (high < 0 || low < 0)
            return i;
        output[i] = static_cast<unsigned char>(high << 4 | low);
    }
    return count;
}

void Utilities::setSleep(int microseconds) { zel::pauseFor(static_cast<unsigned>(microseconds)); }

signed char Utilities::getMicro(const char* name) {
    std::ifstream file = open(name);
    return microIn(file);
}

signed char Utilities::microIn(std::istream& file) {
    for (std::string line; std::getline(file, line);)
        if (begins(line, kMicroMark))
            return processorIn(line);
    return -1;
}
