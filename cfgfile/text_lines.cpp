// SPDX-License-Identifier: MIT
// Reads lines and takes them apart.
#include "cfgfile/text_lines.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace zel::cfgfile {

namespace {

char inLowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

} // namespace

char* Lines::next() {
    char* text = pieces_.next();
    while (text && *text != '\0' && static_cast<signed char>(*text) <= ' ')
        ++text;
    return text;
}

bool isComment(const char* text) { return *text == '\0' || *text == '/' || *text == ':'; }

bool isSameKey(const char* a, const char* b) {
    const std::string_view first = a;
    const std::string_view second = b;
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](char c, char d) { return inLowerCase(c) == inLowerCase(d); });
}

KeyValue keyValueIn(char* text) {
    constexpr char kBetween[] = ", =\t";
    char* rest = nullptr;
    const char* const key = strtok_r(text, kBetween, &rest);
    const char* const value = key ? strtok_r(nullptr, kBetween, &rest) : nullptr;
    unsigned short number = 0;
    if (!value || std::sscanf(value, "%hu", &number) != 1)
        return {};
    return {key, number};
}

} // namespace zel::cfgfile
