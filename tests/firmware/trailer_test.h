// SPDX-License-Identifier: MIT
// Files of a test's own, and findings as text.
#pragma once

#include "firmware/crc.h"
#include "firmware/trailer.h"
#include "tests/support/crc32.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <string>

// Findings compare and print as one text: fault, line, told, computed.
inline std::string asText(const zelFileCheck& check) {
    const char* const faults[] = {"holds", "open", "no trailer", "trailer", "behind", "checksum"};
    std::string text = faults[check.fault];
    if (check.line != 0)
        text += " at " + std::to_string(check.line);
    if (check.told[0] != '\0' || check.computed[0] != '\0')
        text += ": " + std::string(check.told) + "/" + check.computed;
    return text;
}

namespace zel::test {

class TrailerTest : public ::testing::Test {
protected:
    static constexpr char kFile[] = "file.txt";

    static void write(const std::string& text) { writeText(kFile, text); }
    static std::string read() { return textOf(kFile); }

    // What the reader of a kind finds in a file with that text.
    static std::string find(int kind, const std::string& text) {
        write(text);
        CRC crc;
        return asText(firmware::checkTrailer(crc, kFile, kind));
    }

    // Texts of a few characters that matter, with lengths around that of a piece.
    static std::string randomText(std::mt19937& random, const std::string& characters,
                                  std::size_t longest) {
        std::string text(random() % (longest + 1), '\0');
        for (char& character : text)
            character = characters[random() % characters.size()];
        return text;
    }

private:
    TemporaryFolder folder_;
};

} // namespace zel::test
