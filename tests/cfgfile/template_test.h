// SPDX-License-Identifier: MIT
// Template files in a folder of their own, and streams over a text.
#pragma once

#include "cfgfile/tag_body.h"
#include "cfgfile/tag_file.h"
#include "frame/zelTagFiles.h"
#include "tests/family/tag/config_test.h"
#include "tests/support/descriptors.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace zel::test {

constexpr char kTitleLine[] = "/--- zelTag and OEM Reader Configuration Template File ---\n";

inline std::string goldenFile(const std::string& name) {
    const std::string text = textOf(ZEL_TEMPLATES + name + ".txt");
    EXPECT_FALSE(text.empty()) << name;
    return text;
}

// What an operation yields on a stream that reads a text.
template <class Operation> auto reading(std::string text, Operation operation) {
    std::FILE* const file = fmemopen(text.data(), text.size(), "r");
    const auto result = operation(file);
    std::fclose(file);
    return result;
}

// What an operation writes to a stream.
template <class Operation> std::string writtenBy(Operation operation) {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&bytes, &size);
    operation(file);
    std::fclose(file);
    std::string text(bytes, size);
    std::free(bytes);
    return text;
}

class TemplateTest : public ConfigTest {
protected:
    // A plain reader as tests/cfgfile/files/plain.txt tells it; a factory-new one knows none of it.
    static void fillPlain(sim::TagReader& reader) {
        auto& held = reader.configuration(0);
        held.block[0] = {4, 9, 0x21, 17, 34, 45, 13, 0x55};
        held.block[1] = {0, 16, 20, 40, 2, 3, 0xA4, 0};
        held.block[2] = {0x1A, 0x93, 7, 8, 0x21, 'A', 'B', 'C'};
        held.block[3] = {0, 0, 0, 0, 0, 2, 0, 0};
        held.page[0] = {0x0C, 0x11, 0, 1, 0x10, 0x18, 2, 0};
        held.page[1] = {0xAB, 0xCD, 0xEF, 1, 0x23, 0x45, 0x67, 0x89};
        held.page[11] = {9, 8, 7, 6, 5, 4, 3, 2};
    }

    // The reader of files/tagplus.txt: field data of each form, words above their first block.
    static void fillPlus(sim::TagReader& reader) {
        auto& first = reader.configuration(0);
        first.block[3] = {0, 0, 0, 0, 0, 0, 2, 1};
        first.page[0] = {0x24, 0x42, 0x21, 16, 0x11, 0x12, 0x13, 0x14};
        first.page[1] = {0x15, 0x16, 0x17, 0x18, 0x19, 0x1A, 0x1B, 0x1C};
        first.page[2] = {0x1D, 0x1E, 0x1F, 0x20, 0x21, 0x22, 0, 0};
        first.page[15] = {0, 0, 0, 0, 0, 0, 0xFE, 0xFF};
        first.cardType = 4612;
        first.cardPriority = true;
        auto& second = reader.configuration(1);
        second.block[0] = {3, 5, 0x1F, 16, 255, 255, 0x28, 1};
        second.block[3] = {5, 0, 0, 0, 0, 0, 0, 0};
        auto& third = reader.configuration(2);
        third.block[1][2] = 255;
        third.block[2] = {4, 0x10, 0, 0, 0, 0, 0, 0};
        third.page[0] = {0x20, 0, 0, 2, 0xA1, 0xA2, 0xA3, 0xA4};
        third.page[1] = {0xB1, 0xB2, 0xB3, 0xB4, 0xB5, 0xB6, 0xB7, 0xB8};
        third.cardType = 65244;
        third.cardPriority = true;
    }

    static std::shared_ptr<sim::TagReader> connectFilledPlus() {
        auto reader = connectPlus({.tagPlusConfigurations = 3, .features = 0xC0});
        fillPlus(*reader);
        EXPECT_EQ(ReadCfg(), 1);
        bus().takeTrace();
        return reader;
    }

    static std::shared_ptr<sim::TagReader> connectFilledPlain() {
        auto reader = connectRead();
        fillPlain(*reader);
        return reader;
    }

    // The commands that went out, a letter each: a select with its number, B block, P page, C
    // commit; card types, data and queries aside.
    static std::string writes(const std::string& trace) {
        std::stringstream lines(trace);
        std::string told;
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("> 89 81"))
                told += line[9];
            else if (line.find(" block ") != line.npos && line.ends_with(" data"))
                told += 'B';
            else if (line.find(" of fields data") != line.npos)
                told += 'P';
            else if (line.ends_with("  commit"))
                told += 'C';
        }
        return told;
    }

    TemporaryFolder folder_;
};

} // namespace zel::test
