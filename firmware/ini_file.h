// SPDX-License-Identifier: MIT
// Reads the sections of an INI file of key blobs, whose lines all end in CR LF:
//
//   [Blob1]
//   hdr=10 07 05 00
//   data=01 02 03 04 05
//
// The vectors hold key data: their owner wipes them.
#pragma once

#include <array>
#include <cstdio>
#include <vector>

namespace zel::firmware {

// A line, its end included, and a terminator. What is longer goes on as the next line.
constexpr int kIniLineSize = 128;
using IniLine = std::array<char, kIniLineSize>;

// Bytes that a header line and a data line spell at most.
constexpr std::size_t kMostIniBytes = kIniLineSize;

// Reads a line into a buffer of kIniLineSize. False at the end of the file.
bool readIniLine(std::FILE* file, char* line);

// Whether a line is "[Blob", any count of digits, "]", CR LF.
bool isBlobHead(const char* line);

// Takes a section whose head is `line`: the bytes of its "hdr" and its "data", one behind the
// other. 1, or 0 for a section of another form.
int parseBlob(std::FILE* file, char* line, std::vector<unsigned char>& bytes);

// Takes one line "key=bytes"; a second "=" ends the bytes. 1, or 0 for another key and at the end
// of the file.
int parseBlobHeaderAndData(std::FILE* file, std::vector<unsigned char>& bytes, const char* key);

// Appends the low eight bits of each hexadecimal number of a text, up to a word that is LF alone.
// A word that is no number counts as 0, that of a CR LF behind a blank too. Cuts the text up.
void parseStringToBuffer(char* text, std::vector<unsigned char>& bytes);

} // namespace zel::firmware
