// SPDX-License-Identifier: MIT
// A firmware file's body: which processor it is for, and its lines as bytes.
#pragma once

#include <istream>
#include <string>
#include <vector>

// The body lines of one firmware file.
class Utilities {
public:
    // Gathers the lines that begin with ':' behind the first one that begins with 'M'. Whether the
    // file could be opened and read to its end.
    bool openInputFile(const char* name);

    // The same of a stream, and the digit alone.
    void takeLines(std::istream& file);
    static signed char microIn(std::istream& file);

    // Upper case for the letters a to z.
    void strToUpper(char* text);

    // Tells where a body line's digits stand and how many bytes they make: 0 for a line of another
    // form, or of an odd count of digits.
    unsigned short validateBuffer(char* line, const unsigned char* output, char** digits);

    // Turns a body line's digits into bytes; nothing is encrypted. Ends at the first character that
    // is no digit. `output` may be the line itself.
    unsigned short encryptData(char* line, unsigned char* output);

    // Pauses for a while, in microseconds.
    void setSleep(int microseconds);

    // The digit of the first line that begins with 'M', -1 when there is none or no file. Throws
    // where the file can't be read on.
    signed char getMicro(const char* name);

    const std::vector<std::string>& lines() const { return lines_; }

    // What getMicro() tells, of the file that the lines are of.
    signed char micro() const { return micro_; }

private:
    std::vector<std::string> lines_;
    signed char micro_ = -1;
};
