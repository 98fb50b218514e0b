// SPDX-License-Identifier: MIT
// Numbers and values in the answers of the ASCII protocol.
#include "family/tag/ascii_answer.h"

#include "family/tag/ascii_protocol.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace zel::tag {

namespace {

constexpr int kDecimal = 10;
constexpr int kHexadecimal = 16;
using Line = std::array<char, 81>;

// The line from a key to its carriage return, cut at 80 characters; empty where either is missing.
Line lineFrom(const char* text, const char* key) {
    Line line = {};
    const std::string_view all(text);
    const std::size_t begin = all.find(key);
    const std::size_t end = begin == all.npos ? all.npos : all.find('\r', begin);
    if (end != all.npos)
        all.substr(begin, end - begin).copy(line.data(), line.size() - 1);
    return line;
}

int numberIn(const char* digits, int base) {
    return static_cast<int>(base == kHexadecimal
                                ? static_cast<long>(std::strtoul(digits, nullptr, base))
                                : std::strtol(digits, nullptr, base));
}

// A character stands for itself, or follows as "\x" and hexadecimal digits.
int quotedValue(const char* text) {
    if (*text != '\\')
        return static_cast<unsigned char>(*text);
    return text[1] == '\0' ? 0 : numberIn(text + 2, kHexadecimal);
}

int plainValue(std::string_view text) {
    if (text.starts_with("False"))
        return 0;
    if (text.starts_with("True"))
        return 1;
    return numberIn(text.data(), text.find("0x") == text.npos ? kDecimal : kHexadecimal);
}

} // namespace

AnswerScan::AnswerScan(const char* text, const char* mark) : at_(std::strstr(text, mark)) {
    if (at_)
        at_ += std::strlen(mark);
}

AnswerScan& AnswerScan::number(long long& value, int base) {
    if (!at_)
        return *this;
    char* end = nullptr;
    value = base == kHexadecimal ? static_cast<long long>(std::strtoull(at_, &end, base))
                                 : std::strtoll(at_, &end, base);
    at_ = end == at_ ? nullptr : end;
    return *this;
}

AnswerScan& AnswerScan::skip(char character) {
    if (at_)
        at_ = *at_ == character ? at_ + 1 : nullptr;
    return *this;
}

} // namespace zel::tag

using namespace zel::tag;

int AcpGetValue(const char* text, const char* key) {
    if (!text || !key)
        return 0;
    const Line line = lineFrom(text, key);
    if (const char* const quoted = std::strstr(line.data(), "='"))
        return quotedValue(quoted + 2);
    const char* const plain = std::strchr(line.data(), '=');
    return plain ? plainValue(plain + 1) : 0;
}
