// SPDX-License-Identifier: MIT
// Settings files on a disk that fails: from some byte on nothing can be read. This program takes
// the place of fopen() for them.
#include "tests/cfgfile/band_file_test.h"
#include "tests/cfgfile/echo_file_test.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>

namespace zel::test {

namespace {

constexpr char kName[] = "in";
constexpr long kAll = -1;

long readable = kAll; // bytes of the file

struct FailingDisk {
    explicit FailingDisk(std::size_t bytes) { readable = static_cast<long>(bytes); }
    ~FailingDisk() { readable = kAll; }
};

ssize_t read(void* cookie, char* buffer, std::size_t size) {
    auto* const file = static_cast<std::FILE*>(cookie);
    const long left = readable - std::ftell(file);
    if (left > 0)
        return static_cast<ssize_t>(
            std::fread(buffer, 1, std::min(size, static_cast<std::size_t>(left)), file));
    errno = EIO;
    return -1;
}

int seek(void* cookie, off64_t* offset, int whence) {
    auto* const file = static_cast<std::FILE*>(cookie);
    const int result = std::fseek(file, *offset, whence);
    *offset = std::ftell(file);
    return result;
}

int close(void* cookie) { return std::fclose(static_cast<std::FILE*>(cookie)); }

// Lets the file be cut at each byte up to `last`, in long ones at some.
template <class Expect>
void cutEverywhere(const std::string& text, std::size_t last, Expect expect) {
    writeText(kName, text);
    const std::size_t step = 1 + last / 1000;
    for (std::size_t bytes = 0; bytes < last; bytes += step) {
        SCOPED_TRACE(bytes);
        const FailingDisk disk(bytes);
        expect();
    }
}

using UnreadableBandFile = BandFileTest;

TEST_F(UnreadableBandFile, ChangesNothing) {
    const std::string text = goldenFile("band");
    const std::string before = image();
    cutEverywhere(text, text.size(), [&] {
        EXPECT_EQ(ReadDevCfgFmFile(kName), 0);
        EXPECT_EQ(image(), before);
    });
    EXPECT_EQ(ReadDevCfgFmFile(kName), 1);
    EXPECT_NE(image(), before);
}

using UnreadableEchoFile = EchoFileTest;

TEST_F(UnreadableEchoFile, ChangesNothing) {
    const std::string text = goldenFile("echo");
    const tsEcho before = echo();
    cutEverywhere(text, text.size(), [&] {
        EXPECT_EQ(ReadDevCfgFmFile(kName), 0);
        EXPECT_EQ(std::memcmp(&echo(), &before, sizeof before), 0);
    });
    EXPECT_EQ(ReadDevCfgFmFile(kName), 1);
    EXPECT_NE(std::memcmp(&echo(), &before, sizeof before), 0);
}

class UnreadableTagFile : public TemplateTest {
protected:
    // Those of the record, in bytes.
    static std::string settings() {
        const auto& all = record().Cfg;
        return {reinterpret_cast<const char*>(&all), sizeof all};
    }

    static std::size_t endOf(const std::string& text) { return text.rfind("END sFldSepData"); }
};

TEST_F(UnreadableTagFile, ChangesNothingInAPlainReaderOrItsRecord) {
    connectRead();
    const std::string text = goldenFile("plain");
    const std::string before = settings();
    cutEverywhere(text, endOf(text), [&] {
        EXPECT_EQ(ReadDevCfgFmFile(kName), 0);
        EXPECT_EQ(bus().takeTrace(), "");
        EXPECT_TRUE(settings() == before);
    });
    EXPECT_EQ(ReadDevCfgFmFile(kName), 1);
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_FALSE(settings() == before);
}

TEST_F(UnreadableTagFile, IsTakenForNoReaderInPart) {
    const std::string text = goldenFile("tagplus");
    tsTagCfg whole[3] = {};
    writeText(kName, text);
    ASSERT_EQ(zelTagAPI_readTemplate(kName, whole, 3, 0), 3);
    cutEverywhere(text, endOf(text), [&] {
        tsTagCfg configs[3] = {};
        EXPECT_EQ(zelTagAPI_readTemplate(kName, configs, 3, 0), 0);
    });
}

// Of three configurations those in front of the place are written already.
TEST_F(UnreadableTagFile, LeavesTheConfigurationsBehindThePlaceAsTheyWere) {
    connectPlus({.tagPlusConfigurations = 3});
    EXPECT_EQ(ReadCfg(), 1);
    const std::string text = goldenFile("tagplus");
    const sTimeParms before = config(2).sTimeParms;
    const auto isUntouched = [&] {
        EXPECT_EQ(ReadCfg(), 1);
        return std::memcmp(&config(2).sTimeParms, &before, sizeof before) == 0;
    };
    writeText(kName, text);
    {
        const FailingDisk disk(text.find("##NEXTCONFIG##") + 20);
        EXPECT_EQ(ReadDevCfgFmFile(kName), 0);
    }
    EXPECT_TRUE(isUntouched());
    EXPECT_EQ(ReadDevCfgFmFile(kName), 1);
    EXPECT_FALSE(isUntouched());
}

} // namespace

} // namespace zel::test

using zel::test::readable;

// Files that can be read are the system's own.
extern "C" __attribute__((visibility("default"))) std::FILE* fopen(const char* name,
                                                                   const char* mode) {
    static const auto next =
        reinterpret_cast<std::FILE* (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "fopen"));
    std::FILE* const file = next(name, mode);
    if (!file || readable == zel::test::kAll || std::strcmp(name, zel::test::kName) != 0)
        return file;
    return fopencookie(file, mode, {zel::test::read, nullptr, zel::test::seek, zel::test::close});
}
