// SPDX-License-Identifier: MIT
// The CRC-32 of IEEE 802.3 by which the library's text files tell that they were changed.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

// Computes the checksum, appends a file's trailer, and compares a trailer that it finds. A file
// that can't be opened, a null name among them, fails each check.
class CRC {
public:
    CRC() = default;
    CRC(const CRC&) = delete;
    CRC& operator=(const CRC&) = delete;
    virtual ~CRC();

    // The tables are there for one computation: from Init() to Free().
    void Init();
    void Free();

    // 0, or 23 without tables. The checksum is the low half of the result, whose high half is ones.
    long FileCrc32Win32(std::string text, unsigned long& result) const;
    long checksumOf(std::string_view text, unsigned long& result) const;

    // Folds in one byte; without tables the value stays.
    void CalcCrc32(unsigned char byte, unsigned long& value) const;

    // The same of a text in parts: the value begins as kStart, and its complement is the checksum.
    static constexpr std::uint64_t kStart = 0xFFFFFFFF;
    void fold(std::string_view part, std::uint64_t& value) const;

    // The text in chunks of at most 4095 bytes, each cut at its first zero byte; empty for a file
    // that can't be opened.
    std::string getDataFromFile(const char* name);

    // Kind 0, a template file. The status is that of the computation: also a file that can't be
    // opened gives 0.
    long generateAppendCRC(const char* name);
    bool appendCrc(const char* name, unsigned long& checksum) const;
    // Compares as _stricmp() does: 0 for the marker with CR LF when `lineEnd` isn't 0, else with
    // LF.
    int checkEndOfLineValue(int lineEnd, const char* line);
    bool pullSecureCRC(const char* name);

    // Kind 1, a firmware file.
    bool validateCRC(const char* digits, std::string text);
    bool pullBootloaderCRC(const char* name);
    bool appendBootloaderCRC(const char* name, unsigned long& checksum);
    bool calculateBootloaderCRC(const char* name);

    // Kind 2, an INI file. `behind` is what follows the trailer: null for nothing. The stream
    // stands behind the line [EOF].
    bool checkIniCRC(const char* stored, const char* behind, std::string text);
    bool generateAndCheckIniCRC(std::FILE* file, std::string text);
    bool pullIniCRC(const char* name);

    // By kind: 0, 1, any other an INI file.
    bool checkCRC(const char* name, int kind);

private:
    struct Tables;
    const Tables* tables_ = nullptr;
};

// Whether the computation went well and its checksum reads as expected.
bool checkBootloaderCRC(unsigned long& status, unsigned long& checksum, std::string expected);
