// SPDX-License-Identifier: MIT
// An application in a locale of its own: letters have other capitals, numbers other marks.
#include "tests/support/files.h"
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace zel::test {

namespace {

constexpr char kTitle[] = "/--- zelTag and OEM Reader Configuration Template File ---\n";

// Makes a locale of the system's sources and enters it.
void enter(const std::string& language, const std::string& characters) {
    const std::string name = language + "." + characters;
    const std::string folder = std::filesystem::current_path();
    const std::string make =
        "localedef -i " + language + " -f " + characters + " " + folder + "/" + name + " 2>&1";
    setenv("LOCPATH", folder.c_str(), 1);
    if (std::system(make.c_str()) == 0 && std::setlocale(LC_ALL, name.c_str()))
        return;
    std::cout << "skipped: no locale " << name << " here (Debian: locales)" << std::endl;
    std::exit(77);
}

class Locale : public LibraryTest {
protected:
    ~Locale() override {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
    }

    static short holdTime() {
        sTimeParms times = {};
        EXPECT_EQ(GetTimeParms(&times), 1);
        return times.iIDHoldTO;
    }

private:
    TemporaryFolder folder_;
};

} // namespace

TEST_F(Locale, LeavesTheKeysOfAFileInAnyCase) {
    connectReader();
    EXPECT_EQ(ReadCfg(), 1);
    for (const std::string characters : {"UTF-8", "ISO-8859-9"}) {
        enter("tr_TR", characters);
        for (const std::string key : {"iIDHoldTO", "IIDHOLDTO", "iidholdto"}) {
            SCOPED_TRACE(key + " in " + characters);
            writeText("a.txt", kTitle + std::string("iIDHoldTO = 1000\n"));
            EXPECT_EQ(ReadDevCfgFmFile("a.txt"), 1);
            writeText("a.txt", kTitle + key + " = 2000\n");
            EXPECT_EQ(ReadDevCfgFmFile("a.txt"), 1);
            EXPECT_EQ(holdTime(), 2000);
        }
    }
}

TEST_F(Locale, LeavesTheTextOfAFile) {
    connectReader();
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(WriteDevCfgToSecureFile("c.txt"), 1);
    for (const std::string language : {"de_DE", "tr_TR"}) {
        enter(language, "UTF-8");
        EXPECT_EQ(WriteDevCfgToSecureFile("a.txt"), 1);
        EXPECT_EQ(textOf("a.txt"), textOf("c.txt"));
        EXPECT_EQ(ReadDevCfgFromSecureFile("c.txt"), 1);
    }
}

} // namespace zel::test
